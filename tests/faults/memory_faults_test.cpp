#include "tests/faults/faultfixture.h"
