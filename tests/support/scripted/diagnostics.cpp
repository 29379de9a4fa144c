#include <algorithm>
#include <cstring>

#include "handles.h"

namespace kortavin::testing {

SQLRETURN CopyText(std::string_view text, SQLPOINTER buffer, SQLLEN size, SQLSMALLINT* length) {
    if (length)
        *length = static_cast<SQLSMALLINT>(text.size());
    if (buffer == nullptr || size <= 0)
        return SQL_SUCCESS_WITH_INFO;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, text.data(), count);
    static_cast<char*>(buffer)[count] = '\0';
    return count == text.size() ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetDiagRec(SQLSMALLINT, SQLHANDLE raw, SQLSMALLINT number,
                                                SQLCHAR* state, SQLINTEGER* native, SQLCHAR* text,
                                                SQLSMALLINT size, SQLSMALLINT* length) {
    const auto& records = static_cast<Handle*>(raw)->records;
    if (number < 1 || static_cast<std::size_t>(number) > records.size())
        return SQL_NO_DATA;
    const Diagnostic& record = records[static_cast<std::size_t>(number - 1)];
    CopyText(record.state, state, SQL_SQLSTATE_SIZE + 1, nullptr);
    *native = record.native;
    return CopyText(record.message, text, size, length);
}

// Without this function the manager would not ask for records at all; it does without the fields.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetDiagField(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT,
                                                  SQLPOINTER, SQLSMALLINT, SQLSMALLINT*) {
    return SQL_ERROR;
}

}  // namespace kortavin::testing
