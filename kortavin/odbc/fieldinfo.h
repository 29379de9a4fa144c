#pragma once

#include "kortavin/base/cstring.h"
#include "kortavin/odbc/odbctypes.h"

namespace kortavin {

// One result column, as the driver describes it.
struct CODBCFieldInfo {
    CString m_strName;         // at most 256 bytes
    SWORD m_nSQLType = 0;      // ODBC 2 type code
    DWORD m_nPrecision = 0;    // digits, or a text's size in the driver's own units; at most 2^32 - 1
    SWORD m_nScale = 0;        // digits behind the decimal point
    SWORD m_nNullability = 0;  // 0 no NULLs, 1 NULLs, 2 not known
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CODBCFieldInfo;
#endif
