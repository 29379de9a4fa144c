#pragma once

#include "kortavin/base/types.h"

namespace kortavin {

// ODBC's own names for handles and codes, declared here the same way as in the driver manager's headers, so
// that the library's headers need none of those.
using HDBC = void*;
using HSTMT = void*;
using RETCODE = signed short;
using SWORD = signed short;

namespace odbc {

// SQL type codes of character columns, as ODBC 2 numbers them.
inline constexpr SWORD kChar = 1;
inline constexpr SWORD kVarChar = 12;
inline constexpr SWORD kLongVarChar = -1;

}  // namespace odbc

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using HDBC = kortavin::HDBC;
using HSTMT = kortavin::HSTMT;
using RETCODE = kortavin::RETCODE;
using SWORD = kortavin::SWORD;
#endif
