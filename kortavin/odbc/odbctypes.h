#pragma once

#include "framework/base/types.h"

// ODBC's own names for handles and codes, declared here the same way as in the driver manager's headers, so
// that the library's headers need none of those.
using HDBC = void*;
using HSTMT = void*;
using RETCODE = signed short;
using SWORD = signed short;

namespace kortavin::odbc {

// SQL type codes of character columns, as ODBC 2 numbers them.
inline constexpr SWORD kChar = 1;
inline constexpr SWORD kVarChar = 12;
inline constexpr SWORD kLongVarChar = -1;

}  // namespace kortavin::odbc
