#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kortavin/odbc/dbexception.h"
#include "kortavin/odbc/fieldinfo.h"
#include "kortavin/odbc/handles.h"
#include "kortavin/odbc/piecereader.h"

namespace kortavin {

class CDatabase;

namespace odbc {

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

    // Fetches the next row; false at the end. Throws CDBException where there is no row to read; a fetch that
    // failed for a value only is a row, and the value's error comes from Read.
    bool Fetch();

    // The value of a column (from 0) of a fetched row; nothing for NULL. Valid until the next call. Throws
    // CDBException.
    std::optional<std::string_view> Read(short column);

  private:
    enum class Binding { BeforeFirstRow, OnFirstRow, Done };
    struct Column {
        std::unique_ptr<char[]> buffer;  // null: not bound
        SQLLEN size = 0;                 // what its values usually need
        SQLLEN wanted = 0;               // what the longest one read by SQLGetData would have needed
    };
    struct Outcome {  // of reading a value ahead
        std::optional<std::string> value;
        std::optional<CDBException> error;
        bool outOfRange = false;
    };

    bool CanReadBoundColumns() const;
    void PrepareBinding();
    void BindAll();
    void Bind(std::size_t column, SQLLEN size);
    void BindLargerWhereCut();
    bool IsBound() const;
    bool CameWhole(const Column& column, SQLLEN length) const;
    void ReadAhead(const CDBException& fetchError);
    Outcome ReadOneAhead(short column);
    static bool IsOnRow(std::span<const Outcome> outcomes);
    std::optional<std::string_view> ReadByGetData(short column);

    const CDatabase& m_database;
    HSTMT m_statement;
    std::vector<Column> m_columns;
    std::vector<SQLLEN> m_lengths;  // the driver writes them at each fetch
    Binding m_binding = Binding::BeforeFirstRow;
    bool m_anyCut = false;
    bool m_fetchWarned = false;
    std::vector<Outcome> m_outcomes;  // of the whole row, where its fetch failed for a value
    PieceReader m_reader;
    std::optional<std::string_view> m_read;  // the last value from the reader,
    short m_readColumn = -1;                 // and whose it is
};

}  // namespace odbc

}  // namespace kortavin
