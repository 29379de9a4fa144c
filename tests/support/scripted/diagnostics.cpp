#include <algorithm>
#include <cstring>

#include "handles.h"

namespace kortavin::testing {

SQLRETURN Handle::Fail(std::string state, std::string message) {
    records.push_back({{std::move(state), std::move(message), 0}});
    return SQL_ERROR;
}

SQLRETURN Handle::Obey(const Fault& fault) {
    for (const Diagnostic& diagnostic : fault.diagnostics)
        records.push_back({diagnostic});
    return static_cast<SQLRETURN>(fault.code);
}

bool CopyText(std::string_view text, SQLPOINTER buffer, SQLLEN size, SQLSMALLINT* length) {
    if (length)
        *length = static_cast<SQLSMALLINT>(text.size());
    if (buffer == nullptr || size <= 0)
        return buffer == nullptr;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, text.data(), count);
    static_cast<char*>(buffer)[count] = '\0';
    return count == text.size();
}

namespace {

SQLRETURN TextField(const std::string& text, SQLPOINTER buffer, SQLSMALLINT size, SQLSMALLINT* length) {
    return CopyText(text, buffer, size, length) ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

template <class Number>
SQLRETURN NumberField(Number number, SQLPOINTER buffer) {
    std::memcpy(buffer, &number, sizeof number);
    return SQL_SUCCESS;
}

const Record* Find(const Handle& handle, SQLSMALLINT number) {
    const auto index = static_cast<std::size_t>(number - 1);
    return number > 0 && index < handle.records.size() ? &handle.records[index] : nullptr;
}

SQLRETURN RecordField(const Record& record, SQLSMALLINT field, SQLPOINTER buffer, SQLSMALLINT size,
                      SQLSMALLINT* length) {
    switch (field) {
        case SQL_DIAG_SQLSTATE:
            return TextField(record.diagnostic.state, buffer, size, length);
        case SQL_DIAG_MESSAGE_TEXT:
            return TextField(record.diagnostic.message, buffer, size, length);
        case SQL_DIAG_NATIVE:
            return NumberField<SQLINTEGER>(record.diagnostic.native, buffer);
        case SQL_DIAG_COLUMN_NUMBER:
            return NumberField<SQLINTEGER>(record.column, buffer);
        case SQL_DIAG_ROW_NUMBER:
            return NumberField<SQLLEN>(SQL_ROW_NUMBER_UNKNOWN, buffer);
        case SQL_DIAG_CLASS_ORIGIN:
        case SQL_DIAG_SUBCLASS_ORIGIN:
            return TextField("ODBC 3.0", buffer, size, length);
        case SQL_DIAG_CONNECTION_NAME:
        case SQL_DIAG_SERVER_NAME:
            return TextField("", buffer, size, length);
        default:
            return SQL_ERROR;
    }
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetDiagRec(SQLSMALLINT, SQLHANDLE raw, SQLSMALLINT number,
                                                SQLCHAR* state, SQLINTEGER* native, SQLCHAR* text,
                                                SQLSMALLINT size, SQLSMALLINT* length) {
    const Record* record = Find(*static_cast<Handle*>(raw), number);
    if (record == nullptr)
        return SQL_NO_DATA;
    CopyText(record->diagnostic.state, state, SQL_SQLSTATE_SIZE + 1, nullptr);
    if (native)
        *native = record->diagnostic.native;
    return TextField(record->diagnostic.message, text, size, length);
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetDiagField(SQLSMALLINT, SQLHANDLE raw, SQLSMALLINT number,
                                                  SQLSMALLINT field, SQLPOINTER buffer, SQLSMALLINT size,
                                                  SQLSMALLINT* length) {
    const Handle& handle = *static_cast<Handle*>(raw);
    switch (field) {
        case SQL_DIAG_NUMBER:
            return NumberField<SQLINTEGER>(static_cast<SQLINTEGER>(handle.records.size()), buffer);
        case SQL_DIAG_RETURNCODE:
            return NumberField<SQLRETURN>(handle.code, buffer);
        default:
            break;
    }
    const Record* record = Find(handle, number);
    return record ? RecordField(*record, field, buffer, size, length) : SQL_NO_DATA;
}

}  // namespace kortavin::testing
