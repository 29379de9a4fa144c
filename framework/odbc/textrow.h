#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/odbc/dbexception.h"
#include "framework/odbc/fieldinfo.h"
#include "framework/odbc/handles.h"

class CDatabase;

namespace kortavin::odbc {

// One SQLGetData call, repeated while it is still executing. A value out of range (SQLSTATE 22003) is no
// failure; every other one is thrown, that there is no data (100) too. `length` is what the driver reported,
// SQL_NULL_DATA where it reported nothing. Answers the call's code.
RETCODE GetData(const CDatabase* database, HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType,
                SQLPOINTER buffer, SQLLEN size, SQLLEN& length);

// The current row of a result, each value as the driver's text in the connection's narrow character set.
//
// Columns are bound as texts of a moderate size, which makes one call for a row out of one for each value.
// What did not fit or could not be delivered that way is read by SQLGetData, so each value has the outcome
// that reading it alone would have had. Drivers that cannot read bound columns again get none bound.
//
// The first row is read unbound: where its fetch blames a value, the driver manager keeps the statement in
// front of it, and no value could be read any more.
class TextRow {
  public:
    TextRow(const CDatabase& database, HSTMT statement, std::span<const CODBCFieldInfo> columns);
    TextRow(const TextRow&) = delete;
    TextRow& operator=(const TextRow&) = delete;

    // Fetches the next row and answers SQLFetch's code. Throws only for a row that the driver failed to
    // position on although it blamed a value.
    RETCODE Fetch();

    // The value of a column (from 0); nothing for NULL. Valid until the next call. Throws CDBException.
    std::optional<std::string_view> Read(short column);

  private:
    struct Column {
        std::unique_ptr<char[]> buffer;  // null: not bound
        SQLLEN size = 0;                 // what its values usually need
        SQLLEN wanted = 0;               // what the longest one read by SQLGetData would have needed
    };
    struct ReadAhead {  // the outcome of reading the first column of a row whose fetch failed
        std::optional<std::string> value;
        std::optional<CDBException> error;
    };

    bool CanReadBoundColumns() const;
    void BindAll();
    void Bind(short column, SQLLEN size);
    void BindLargerWhereCut();
    bool WasBound() const;
    void ReadFirstAhead(const CDBException& fetchError);
    std::optional<std::string_view> ReadByGetData(short column);
    bool WasTruncated() const;

    const CDatabase& m_database;
    HSTMT m_statement;
    std::vector<Column> m_columns;
    std::vector<SQLLEN> m_lengths;  // the driver writes them at each fetch
    enum class Binding { BeforeFirstRow, AfterFirstRow, Done };
    Binding m_binding = Binding::BeforeFirstRow;
    bool m_anyCut = false;
    bool m_boundRowFailed = false;
    std::optional<ReadAhead> m_first;
    std::string m_long;  // a value read by SQLGetData, with room behind it
    std::size_t m_longLength = 0;
    short m_longColumn = -1;  // whose value it is; SQLGetData gives each one once
};

}  // namespace kortavin::odbc
