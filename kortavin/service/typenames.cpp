#include <array>

#include "kortavin/service/statement.h"

namespace kortavin::service {
namespace {

constexpr int kWidth = 18;
constexpr int kLowestType = -7;
constexpr const char* kUnknown = "<unknown type>";

// By ODBC 2 type code, from -7 on.
constexpr std::array<const char*, 20> kNames = {
    "SQL_BIT",     "SQL_TINYINT",     "SQL_BIGINT",   "SQL_LONGVARBINARY", "SQL_VARBINARY",
    "SQL_BINARY",  "SQL_LONGVARCHAR", kUnknown,       "SQL_CHAR",          "SQL_NUMERIC",
    "SQL_DECIMAL", "SQL_INTEGER",     "SQL_SMALLINT", "SQL_FLOAT",         "SQL_REAL",
    "SQL_DOUBLE",  "SQL_DATE",        "SQL_TIME",     "SQL_TIMESTAMP",     "SQL_VARCHAR",
};

}  // namespace

CString FieldTypeName(SWORD sqlType) {
    const int index = sqlType - kLowestType;
    const bool known = index >= 0 && index < static_cast<int>(kNames.size());
    CString name;
    name.Format("%-*s", kWidth, known ? kNames[static_cast<std::size_t>(index)] : kUnknown);
    return name;
}

}  // namespace kortavin::service
