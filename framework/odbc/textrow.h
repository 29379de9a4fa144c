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
RETCODE GetData(const CDatabase& database, HSTMT statement, SQLUSMALLINT column, SQLSMALLINT targetType,
                SQLPOINTER buffer, SQLLEN size, SQLLEN& length);

// The current row of a result, each value as the driver's text in the connection's narrow character set.
//
// Columns are bound as texts of a moderate size, which makes one call for a row out of one for each value.
// What did not fit or could not be delivered that way is read by SQLGetData, so each value has the outcome
// that reading it alone would have had. Drivers that cannot read bound columns again get none bound.
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
        SQLLEN size = 0;
        SQLLEN wanted = 0;  // the size that the longest cut value would have needed
    };
    struct ReadAhead {  // the outcome of reading the first column of a row whose fetch failed
        std::optional<std::string> value;
        std::optional<CDBException> error;
    };

    bool CanReadBoundColumns() const;
    void Bind(short column, SQLLEN size);
    void BindLargerWhereCut();
    void ReadFirstAhead(const CDBException& fetchError);
    std::optional<std::string_view> ReadByGetData(short column);
    bool WasTruncated() const;

    const CDatabase& m_database;
    HSTMT m_statement;
    std::vector<Column> m_columns;
    std::vector<SQLLEN> m_lengths;  // the driver writes them at each fetch
    bool m_anyCut = false;
    bool m_boundRowFailed = false;
    std::optional<ReadAhead> m_first;
    std::string m_long;  // a value read by SQLGetData
};

}  // namespace kortavin::odbc
