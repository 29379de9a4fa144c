#include "kortavin/odbc/textrow.h"

#include <algorithm>
#include <cstring>

#include "kortavin/odbc/database.h"
#include "kortavin/odbc/diagnostics.h"

namespace kortavin::odbc {
namespace {

// Buffers fit the values: some drivers fill them up to the end at each fetch.
constexpr SQLLEN kUsualText = 256;
constexpr SQLLEN kLongestBoundText = 16 * 1024;

// Bytes for a value of the column as text, its zero byte included.
SQLLEN TextSize(const CODBCFieldInfo& column) {
    const auto precision = static_cast<SQLLEN>(std::min<DWORD>(column.m_nPrecision, kLongestBoundText));
    switch (column.m_nSQLType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
            return 24;
        case SQL_BIGINT:
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
        case SQL_DATE:
        case SQL_TIME:
        case SQL_TIMESTAMP:
            return 40;
        case SQL_NUMERIC:
        case SQL_DECIMAL:
            return std::clamp<SQLLEN>(precision + 4, 40, kUsualText);
        case SQL_CHAR:
        case SQL_VARCHAR:  // sizes may count characters, of up to four bytes
            return std::clamp<SQLLEN>(precision * 4 + 1, 16, kUsualText);
        default:
            return kUsualText;
    }
}

SQLLEN Grown(SQLLEN size, SQLLEN wanted) {
    if (wanted > kLongestBoundText)
        return size;
    while (size < wanted)
        size *= 2;
    return size;
}

// Whether an error is a value's own: data exceptions, and conversions that do not exist.
bool BlamesValue(const CDBException& error) {
    const std::string state(error.GetState().View());
    return state.starts_with("22") || state.starts_with("07");
}

}  // namespace

TextRow::TextRow(const CDatabase& database, HSTMT statement, std::span<const CODBCFieldInfo> columns)
    : m_database(database),
      m_statement(statement),
      m_columns(columns.size()),
      m_lengths(columns.size()),
      m_reader(database, statement) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        m_columns[i].size = TextSize(columns[i]);
}

bool TextRow::CanReadBoundColumns() const {
    static constexpr SQLUINTEGER kNeeded = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND;
    SQLUINTEGER extensions = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN code = SQLGetInfo(m_database.m_hdbc, SQL_GETDATA_EXTENSIONS, &extensions,
                                      static_cast<SQLSMALLINT>(sizeof extensions), &length);
    return Succeeded(code) && (extensions & kNeeded) == kNeeded;
}

void TextRow::PrepareBinding() {
    if (m_binding == Binding::BeforeFirstRow)
        m_binding = Binding::OnFirstRow;
    else if (m_binding == Binding::OnFirstRow)
        BindAll();
    else if (m_anyCut)
        BindLargerWhereCut();
}

void TextRow::BindAll() {
    m_binding = Binding::Done;
    if (!CanReadBoundColumns())
        return;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        Bind(i, Grown(m_columns[i].size, m_columns[i].wanted));
}

// A column that cannot be bound is read by SQLGetData.
void TextRow::Bind(std::size_t index, SQLLEN size) {
    auto buffer = std::make_unique<char[]>(static_cast<std::size_t>(size));
    const SQLRETURN code = SQLBindCol(m_statement, static_cast<SQLUSMALLINT>(index + 1), SQL_C_CHAR,
                                      buffer.get(), size, &m_lengths[index]);
    if (!Succeeded(code))
        return;  // an earlier, smaller buffer stays bound
    m_columns[index].buffer = std::move(buffer);
    m_columns[index].size = size;
}

void TextRow::BindLargerWhereCut() {
    m_anyCut = false;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        const SQLLEN size = Grown(column.size, column.wanted);
        if (column.buffer != nullptr && size > column.size)
            Bind(i, size);
    }
}

bool TextRow::IsBound() const {
    return std::ranges::any_of(m_columns, [](const Column& column) { return column.buffer != nullptr; });
}

bool TextRow::Fetch() {
    m_outcomes.clear();
    m_readColumn = -1;
    PrepareBinding();
    // A length that the driver does not write means that the value has to be asked for.
    std::ranges::fill(m_lengths, SQLLEN{SQL_NO_TOTAL});
    const SQLRETURN code = WhileExecuting([&] { return SQLFetch(m_statement); });
    m_fetchWarned = code == SQL_SUCCESS_WITH_INFO;
    if (Succeeded(code) || code == SQL_NO_DATA)
        return code != SQL_NO_DATA;

    const CDBException error = MakeError(code, &m_database, m_statement);
    if (!IsBound())
        throw error;
    ReadAhead(error);
    return true;
}

// Reads the values one by one to learn whether the fetch failed for one of them or for the row.
void TextRow::ReadAhead(const CDBException& fetchError) {
    std::vector<Outcome> outcomes;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        outcomes.push_back(ReadOneAhead(static_cast<short>(i)));
    m_readColumn = -1;
    if (!IsOnRow(outcomes))
        throw fetchError;
    m_outcomes = std::move(outcomes);
}

TextRow::Outcome TextRow::ReadOneAhead(short index) {
    Outcome outcome;
    try {
        if (const auto value = ReadByGetData(index))
            outcome.value.emplace(*value);
        outcome.outOfRange = m_reader.WasOutOfRange();
    } catch (const CDBException& error) {
        outcome.error = error;
    }
    return outcome;
}

// The row is there when a value is at fault and either another one is not, or the fault is such as only
// values have. Where no value is at fault the row is a former one; where all are, there is none.
bool TextRow::IsOnRow(std::span<const Outcome> outcomes) {
    const auto isBlamed = [](const Outcome& o) { return o.outOfRange || (o.error && BlamesValue(*o.error)); };
    const auto isAtFault = [](const Outcome& o) {
        return o.outOfRange || (o.error && o.error->m_nRetCode != SQL_NO_DATA);
    };
    const auto isFine = [](const Outcome& o) { return !o.outOfRange && !o.error; };
    return std::ranges::any_of(outcomes, isBlamed) ||
           (std::ranges::any_of(outcomes, isAtFault) && std::ranges::any_of(outcomes, isFine));
}

// Where the fetch warned of anything, a driver may have cut a value short of the buffer, so as not to split a
// character, and reported its whole length.
bool TextRow::CameWhole(const Column& column, SQLLEN length) const {
    if (length < 0 || length >= column.size)
        return false;
    return !m_fetchWarned ||
           std::memchr(column.buffer.get(), '\0', static_cast<std::size_t>(length)) == nullptr;
}

std::optional<std::string_view> TextRow::Read(short index) {
    if (!m_outcomes.empty()) {
        const Outcome& outcome = m_outcomes[static_cast<std::size_t>(index)];
        if (outcome.error)
            throw *outcome.error;
        return outcome.value;
    }
    Column& column = m_columns[static_cast<std::size_t>(index)];
    if (column.buffer != nullptr) {
        const SQLLEN length = m_lengths[static_cast<std::size_t>(index)];
        if (length == SQL_NULL_DATA)
            return std::nullopt;
        if (CameWhole(column, length))
            return std::string_view(column.buffer.get(), static_cast<std::size_t>(length));
        m_anyCut = true;
    }
    const auto value = ReadByGetData(index);
    if (value)
        column.wanted = std::max(column.wanted, static_cast<SQLLEN>(value->size()) + 1);
    return value;
}

std::optional<std::string_view> TextRow::ReadByGetData(short index) {
    if (index == m_readColumn)
        return m_read;
    m_readColumn = -1;
    m_read = m_reader.Read(static_cast<SQLUSMALLINT>(index + 1));
    m_readColumn = index;
    return m_read;
}

}  // namespace kortavin::odbc
