#include "kortavin/odbc/fieldexchange.h"

#include <algorithm>
#include <utility>

#include "kortavin/base/codepage.h"
#include "kortavin/odbc/database.h"
#include "kortavin/odbc/diagnostics.h"
#include "kortavin/odbc/handles.h"

namespace kortavin {

using odbc::Succeeded;

void CFieldExchange::BeginBinding() {
    m_binding = true;
    m_type = noFieldType;
    m_fields.clear();
}

void CFieldExchange::BeginLoading() {
    m_binding = false;
    m_type = noFieldType;
    m_next = 0;
}

void CFieldExchange::ForgetLengths() {
    for (Field& field : m_fields)
        field.length = SQL_NULL_DATA;
}

CFieldExchange::Field* CFieldExchange::NextField() {
    if (m_type != outputColumn)
        return nullptr;
    if (m_binding)
        return &m_fields.emplace_back();
    return m_next < m_fields.size() ? &m_fields[m_next++] : nullptr;
}

void CFieldExchange::Bind(Field& field, SWORD type, void* buffer, std::ptrdiff_t size) {
    const auto column = static_cast<SQLUSMALLINT>(m_fields.size());
    const SQLRETURN code = SQLBindCol(m_statement, column, type, buffer, size, &field.length);
    if (!Succeeded(code))
        throw odbc::MakeError(code, &m_database, m_statement);
}

void CFieldExchange::ExchangeNumber(LONG& value) {
    Field* field = NextField();
    if (field == nullptr)
        return;
    if (m_binding)
        Bind(*field, SQL_C_LONG, &field->number, sizeof field->number);
    else
        value = field->length == SQL_NULL_DATA ? 0 : field->number;
}

void RFX_Text(CFieldExchange* exchange, const char* label, CString& value, int maxLength,
              SWORD /*columnType*/, short /*scale*/) {
    CFieldExchange::Field* field = exchange->NextField();
    if (field == nullptr)
        return;
    if (exchange->m_binding) {
        // A GBK byte stands for at most four bytes on the driver's side.
        field->text.resize(static_cast<std::size_t>(maxLength) * 4 + 1);
        const auto size = static_cast<std::ptrdiff_t>(field->text.size());
        exchange->Bind(*field, SQL_C_CHAR, field->text.data(), size);
        return;
    }
    std::string_view narrow;
    const auto room = static_cast<std::ptrdiff_t>(field->text.size()) - 1;
    const bool cut = field->length == SQL_NO_TOTAL || field->length > room;
    if (cut || field->length > 0)
        narrow = {field->text.data(), static_cast<std::size_t>(cut ? room : field->length)};

    if (narrow.empty()) {
        value.Empty();
        return;
    }
    auto text = exchange->m_database.FromNarrow(narrow, cut);
    if (!text)
        throw odbc::MakeConversionError(CString("The value of ") + label, exchange->m_database);
    if (text->GetLength() > maxLength)
        text = CString(base::CutAtCharacter(text->View(), static_cast<std::size_t>(maxLength)));
    value = *std::move(text);
}

void RFX_Int(CFieldExchange* exchange, const char* /*label*/, int& value) {
    exchange->ExchangeNumber(value);
}

void RFX_Long(CFieldExchange* exchange, const char* /*label*/, LONG& value) {
    exchange->ExchangeNumber(value);
}

}  // namespace kortavin
