#pragma once

#include "framework/base/types.h"
