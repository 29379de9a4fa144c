#pragma once

#include <string>

#include "kortavin/odbc/odbctypes.h"

namespace kortavin::odbc {

// The IANA name of the character set in which an open connection's driver speaks narrow text; empty when
// only the process's locale can tell.
std::string DetectCharset(HDBC connection);

}  // namespace kortavin::odbc
