#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kortavin/odbc/dbexception.h"
#include "kortavin/odbc/handles.h"

namespace kortavin {

class CDatabase;

namespace odbc {

// One SQLGetData call, repeated while it is still executing. A value out of range (SQLSTATE 22003) is no
// failure; every other one is thrown, that there is no data (100) too. `length` is what the driver reported,
// SQL_NULL_DATA where it reported nothing. Answers the call's code. `database` may be null.
RETCODE GetData(const CDatabase* database, HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType,
                SQLPOINTER buffer, SQLLEN size, SQLLEN& length);

// Reads whole values as text by SQLGetData, in as many pieces as they come in.
class PieceReader {
  public:
    PieceReader(const CDatabase& database, HSTMT statement) : m_database(database), m_statement(statement) {}
    PieceReader(const PieceReader&) = delete;
    PieceReader& operator=(const PieceReader&) = delete;

    // The value of a column (from 1) of the current row; nothing for NULL. Valid until the next call. A value
    // can be read once: drivers give its end the second time. Throws CDBException.
    std::optional<std::string_view> Read(SQLUSMALLINT column);

    // Whether the last value was out of range; what was received of it was answered all the same.
    bool WasOutOfRange() const { return m_outOfRange; }

  private:
    enum class Piece { Null, Last, MoreToCome };

    Piece ReadPiece(SQLUSMALLINT column, std::size_t room);
    bool WasTruncated() const;

    const CDatabase& m_database;
    HSTMT m_statement;
    std::string m_text;  // with room behind the value
    std::size_t m_received = 0;
    bool m_outOfRange = false;
};

}  // namespace odbc

}  // namespace kortavin
