#include "kortavin/odbc/piecereader.h"

#include <algorithm>
#include <cstring>

#include "kortavin/odbc/database.h"
#include "kortavin/odbc/diagnostics.h"

namespace kortavin::odbc {
namespace {

// Pieces begin small, since some drivers fill a buffer up to its end however short the value is. They grow
// with the value, since some measure what is left of it for each piece.
constexpr std::size_t kFirstPiece = 4 * 1024;
constexpr std::size_t kKept = 1024 * 1024;

RETCODE CallGetData(HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType, SQLPOINTER buffer,
                    SQLLEN size, SQLLEN& length) {
    length = SQL_NULL_DATA;
    return WhileExecuting([&] { return SQLGetData(statement, column, targetType, buffer, size, &length); });
}

void RequireInRange(RETCODE code, const CDatabase* database, HSTMT statement) {
    if (Succeeded(code))
        return;
    const CDBException error = MakeError(code, database, statement);
    if (code == SQL_NO_DATA || error.m_strStateNativeOrigin.Find("State:22003") < 0)
        throw error;
}

}  // namespace

RETCODE GetData(const CDatabase* database, HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType,
                SQLPOINTER buffer, SQLLEN size, SQLLEN& length) {
    const RETCODE code = CallGetData(statement, column, targetType, buffer, size, length);
    RequireInRange(code, database, statement);
    return code;
}

std::optional<std::string_view> PieceReader::Read(SQLUSMALLINT column) {
    // What one long value needed is not kept for the short ones that follow.
    if (m_text.size() > kKept)
        m_text = std::string();
    m_received = 0;
    m_outOfRange = false;
    std::size_t room = kFirstPiece;
    Piece piece = ReadPiece(column, room);
    if (piece == Piece::Null)
        return std::nullopt;
    while (piece == Piece::MoreToCome) {
        room = std::max(kFirstPiece, m_received);
        piece = ReadPiece(column, room);
    }
    return std::string_view(m_text.data(), m_received);
}

// What counts as received is what the driver reported, never more than the buffer held, and less where a
// driver ended a piece early so as not to split a character.
PieceReader::Piece PieceReader::ReadPiece(SQLUSMALLINT column, std::size_t room) {
    if (m_text.size() < m_received + room)
        m_text.resize(m_received + room);
    char* const buffer = m_text.data() + m_received;
    const auto size = static_cast<SQLLEN>(room);
    buffer[0] = '\0';
    buffer[size - 1] = '.';  // a full piece ends with a zero byte here
    SQLLEN length = 0;
    const RETCODE code = CallGetData(m_statement, column, SQL_C_CHAR, buffer, size, length);
    // The end of a value whose last piece was a full one.
    if (code == SQL_NO_DATA && m_received > 0)
        return Piece::Last;
    RequireInRange(code, &m_database, m_statement);
    m_outOfRange = m_outOfRange || !Succeeded(code);
    if (length == SQL_NULL_DATA && m_received == 0)
        return Piece::Null;

    const bool overflows = length == SQL_NO_TOTAL || length >= size;
    const SQLLEN most = overflows ? size - 1 : std::max<SQLLEN>(length, 0);
    const bool endsEarly =
        overflows ? buffer[size - 1] != '\0' : code == SQL_SUCCESS_WITH_INFO && WasTruncated();
    const bool countsItself = endsEarly || !Succeeded(code);
    const std::size_t got =
        countsItself ? strnlen(buffer, static_cast<std::size_t>(most)) : static_cast<std::size_t>(most);
    m_received += got;
    const bool isCut = overflows || (endsEarly && static_cast<SQLLEN>(got) < length);
    return isCut && got > 0 && Succeeded(code) ? Piece::MoreToCome : Piece::Last;
}

// The statement's last call warned of a value that was cut.
bool PieceReader::WasTruncated() const {
    const CDBException warning = MakeError(SQL_SUCCESS_WITH_INFO, &m_database, m_statement);
    return warning.m_strStateNativeOrigin.Find("State:01004") >= 0;
}

}  // namespace kortavin::odbc
