#include "framework/odbc/textrow.h"

#include <algorithm>
#include <cstring>

#include "framework/odbc/database.h"
#include "framework/odbc/diagnostics.h"

namespace kortavin::odbc {
namespace {

// Buffers fit the values: some drivers fill them up to the end at each fetch.
constexpr SQLLEN kUsualText = 256;
constexpr SQLLEN kLongestBoundText = 16 * 1024;
constexpr std::size_t kFirstPiece = 4096;
constexpr std::size_t kLargestPiece = 1024 * 1024;

// Bytes for a value of the column as text, its zero byte included.
SQLLEN TextSize(const CODBCFieldInfo& column) {
    const auto precision = static_cast<SQLLEN>(std::min<DWORD>(column.m_nPrecision, kLongestBoundText));
    switch (column.m_nSQLType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
            return 16;
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
            return std::clamp<SQLLEN>(precision + 4, 16, kUsualText);
        case SQL_CHAR:
        case SQL_VARCHAR:  // sizes may count characters, of up to four bytes
            return std::clamp<SQLLEN>(precision * 4 + 1, 16, kUsualText);
        default:
            return kUsualText;
    }
}

SQLLEN SizeFor(const auto& column) {
    if (column.wanted > kLongestBoundText)
        return column.size;
    SQLLEN size = column.size;
    while (size < column.wanted)
        size *= 2;
    return size;
}

// Whether an error is a value's own: data exceptions and conversions that do not exist.
bool BlamesValue(const CDBException& error) {
    const CString state = error.GetState();
    return state.Left(2) == "22" || state.Left(2) == "07";
}

bool IsOutOfRange(const CDBException& error) {
    return error.m_strStateNativeOrigin.Find("State:22003") >= 0;
}

}  // namespace

RETCODE GetData(const CDatabase* database, HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType,
                SQLPOINTER buffer, SQLLEN size, SQLLEN& length) {
    length = SQL_NULL_DATA;
    const SQLRETURN code =
        WhileExecuting([&] { return SQLGetData(statement, column, targetType, buffer, size, &length); });
    if (Succeeded(code))
        return code;
    const CDBException error = MakeError(code, database, statement);
    if (code == SQL_NO_DATA || !IsOutOfRange(error))
        throw error;
    return code;
}

TextRow::TextRow(const CDatabase& database, HSTMT statement, std::span<const CODBCFieldInfo> columns)
    : m_database(database), m_statement(statement), m_columns(columns.size()), m_lengths(columns.size()) {
    std::ranges::transform(columns, m_columns.begin(), [](const CODBCFieldInfo& info) {
        return Column{nullptr, TextSize(info), 0};
    });
}

bool TextRow::CanReadBoundColumns() const {
    static constexpr SQLUINTEGER kNeeded = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND;
    SQLUINTEGER extensions = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN code = SQLGetInfo(m_database.m_hdbc, SQL_GETDATA_EXTENSIONS, &extensions,
                                      static_cast<SQLSMALLINT>(sizeof extensions), &length);
    return Succeeded(code) && (extensions & kNeeded) == kNeeded;
}

void TextRow::BindAll() {
    m_binding = Binding::Done;
    if (!CanReadBoundColumns())
        return;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        Bind(static_cast<short>(i), SizeFor(m_columns[i]));
}

// A column that cannot be bound is read by SQLGetData.
void TextRow::Bind(short index, SQLLEN size) {
    Column& column = m_columns[static_cast<std::size_t>(index)];
    auto buffer = std::make_unique<char[]>(static_cast<std::size_t>(size));
    const SQLRETURN code = SQLBindCol(m_statement, static_cast<SQLUSMALLINT>(index + 1), SQL_C_CHAR,
                                      buffer.get(), size, &m_lengths[static_cast<std::size_t>(index)]);
    if (!Succeeded(code))
        return;  // an earlier, smaller buffer stays bound
    column.buffer = std::move(buffer);
    column.size = size;
}

void TextRow::BindLargerWhereCut() {
    m_anyCut = false;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (const SQLLEN size = SizeFor(m_columns[i]); size > m_columns[i].size)
            Bind(static_cast<short>(i), size);
}

RETCODE TextRow::Fetch() {
    m_boundRowFailed = false;
    m_first.reset();
    m_longColumn = -1;
    if (m_binding == Binding::AfterFirstRow)
        BindAll();
    else if (m_anyCut)
        BindLargerWhereCut();
    const SQLRETURN code = WhileExecuting([&] { return SQLFetch(m_statement); });
    if (m_binding == Binding::BeforeFirstRow)
        m_binding = Binding::AfterFirstRow;
    if (Succeeded(code) || code == SQL_NO_DATA)
        return code;

    const CDBException error = MakeError(code, &m_database, m_statement);
    if (!WasBound() || !BlamesValue(error))
        throw error;
    m_boundRowFailed = true;
    ReadFirstAhead(error);
    return SQL_SUCCESS;
}

bool TextRow::WasBound() const {
    return std::ranges::any_of(m_columns, [](const Column& column) { return column.buffer != nullptr; });
}

// A driver that failed in one value is on the row; one that failed to fetch is not, and then refuses every
// value for a reason of another kind.
void TextRow::ReadFirstAhead(const CDBException& fetchError) {
    ReadAhead first;
    try {
        if (const auto value = ReadByGetData(0))
            first.value.emplace(*value);
    } catch (const CDBException& error) {
        if (!BlamesValue(error))
            throw fetchError;
        first.error = error;
    }
    m_first = std::move(first);
}

std::optional<std::string_view> TextRow::Read(short index) {
    if (m_boundRowFailed) {
        if (index != 0)
            return ReadByGetData(index);
        if (m_first->error)
            throw *m_first->error;
        return m_first->value;
    }
    Column& column = m_columns[static_cast<std::size_t>(index)];
    if (column.buffer != nullptr) {
        const SQLLEN length = m_lengths[static_cast<std::size_t>(index)];
        if (length == SQL_NULL_DATA)
            return std::nullopt;
        if (length >= 0 && length < column.size)
            return std::string_view(column.buffer.get(), static_cast<std::size_t>(length));
        m_anyCut = true;
    }
    const auto value = ReadByGetData(index);
    if (value)
        column.wanted = std::max(column.wanted, static_cast<SQLLEN>(value->size()) + 1);
    return value;
}

// The statement's last call warned of a value that was cut.
bool TextRow::WasTruncated() const {
    return MakeError(SQL_SUCCESS_WITH_INFO, &m_database, m_statement).GetState() == "01004";
}

// Reads a value piece by piece. What counts as received is what the driver reported, never more than the
// buffer held, and less where a driver ended a piece early so as not to split a character.
std::optional<std::string_view> TextRow::ReadByGetData(short index) {
    if (index == m_longColumn)
        return std::string_view(m_long.data(), m_longLength);
    m_longColumn = -1;
    const auto column = static_cast<SQLUSMALLINT>(index + 1);
    std::size_t received = 0;
    std::size_t piece = kFirstPiece;
    for (bool more = true; more; piece = std::min(piece * 2, kLargestPiece)) {
        if (m_long.size() < received + piece)
            m_long.resize(received + piece);
        char* const buffer = m_long.data() + received;
        const auto size = static_cast<SQLLEN>(m_long.size() - received);
        buffer[size - 1] = '.';  // a full piece ends with a zero byte here
        buffer[0] = '\0';
        SQLLEN length = SQL_NULL_DATA;
        RETCODE code = SQL_SUCCESS;
        try {
            code = GetData(&m_database, m_statement, column, SQL_C_CHAR, buffer, size, length);
        } catch (const CDBException& error) {
            // The end of a value whose last piece was a full one.
            if (error.m_nRetCode == SQL_NO_DATA && received > 0)
                break;
            throw;
        }
        if (length == SQL_NULL_DATA && received == 0)
            return std::nullopt;
        bool cut = length == SQL_NO_TOTAL || length >= size;
        SQLLEN got = cut ? size - 1 : std::max<SQLLEN>(length, 0);
        if (cut && buffer[size - 1] != '\0') {
            got = static_cast<SQLLEN>(strnlen(buffer, static_cast<std::size_t>(got)));
        } else if (!cut && code == SQL_SUCCESS_WITH_INFO && WasTruncated()) {
            got = static_cast<SQLLEN>(strnlen(buffer, static_cast<std::size_t>(got)));
            cut = got < length;
        }
        received += static_cast<std::size_t>(got);
        more = cut && got > 0 && Succeeded(code);
    }
    m_longLength = received;
    m_longColumn = index;
    return std::string_view(m_long.data(), received);
}

}  // namespace kortavin::odbc
