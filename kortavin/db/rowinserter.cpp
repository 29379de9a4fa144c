#include "kortavin/db/rowinserter.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "kortavin/odbc/diagnostics.h"

namespace kortavin {

using odbc::Succeeded;
using odbc::WhileExecuting;

namespace {

constexpr std::size_t kLongest = 4000;  // bytes of a value that every driver takes as a short one

// A blank: the driver knows no quoting.
char QuoteOf(HDBC connection) {
    std::array<char, 8> quote{};
    SQLSMALLINT length = 0;
    const SQLRETURN code =
        SQLGetInfo(connection, SQL_IDENTIFIER_QUOTE_CHAR, quote.data(), quote.size(), &length);
    return Succeeded(code) && length == 1 ? quote[0] : ' ';
}

CString InsertStatement(CGeoDatabase& database, const CString& table, const CStringArray& columns) {
    CString names;
    CString places;
    for (const CString& column : columns) {
        names += (names.IsEmpty() ? "" : ", ") + QuotedName(database, column);
        places += places.IsEmpty() ? "?" : ", ?";
    }
    return "INSERT INTO " + QuotedName(database, table) + " (" + names + ") VALUES (" + places + ")";
}

}  // namespace

CString QuotedName(CGeoDatabase& database, const CString& name) {
    const char quote = QuoteOf(database.m_hdbc);
    if (quote == ' ')
        return name;
    CString quoted(quote);
    for (int start = 0, end = 0; end >= 0; start = end + 1) {
        end = name.Find(quote, start);
        quoted += end < 0 ? name.Mid(start) : name.Mid(start, end + 1 - start);
        quoted += quote;
    }
    return quoted;
}

struct CRowInserter::Statement {
    Statement(CGeoDatabase& connection, const CString& table, const CStringArray& columns)
        : database(connection), values(static_cast<std::size_t>(columns.GetSize())), lengths(values.size()) {
        if (const SQLRETURN code = handle.Allocate(database.m_hdbc); !Succeeded(code))
            throw database.MakeError(code);
        database.OnSetOptions(handle.Get());
        std::string sql = database.ToNarrow(InsertStatement(database, table, columns).View());
        auto* const text = reinterpret_cast<SQLCHAR*>(sql.data());
        Require(WhileExecuting([&] { return SQLPrepare(handle.Get(), text, SQL_NTS); }));
    }

    void Require(SQLRETURN code) const {
        if (!Succeeded(code) && code != SQL_NO_DATA)
            throw odbc::MakeError(code, &database, handle.Get());
    }

    void Bind(std::size_t i, const CString& value) {
        values[i] = database.ToNarrow(value.View());
        std::string& text = values[i];
        lengths[i] = text.empty() ? SQLLEN{SQL_NULL_DATA} : static_cast<SQLLEN>(text.size());
        const SQLSMALLINT type = text.size() > kLongest ? SQL_LONGVARCHAR : SQL_VARCHAR;
        Require(SQLBindParameter(handle.Get(), static_cast<SQLUSMALLINT>(i + 1), SQL_PARAM_INPUT, SQL_C_CHAR,
                                 type, std::max<SQLULEN>(text.size(), 1), 0, text.data(),
                                 static_cast<SQLLEN>(text.size()), &lengths[i]));
    }

    void Execute() {
        const SQLRETURN code = WhileExecuting([&] { return SQLExecute(handle.Get()); });
        Require(code);
        SQLFreeStmt(handle.Get(), SQL_CLOSE);
    }

    CGeoDatabase& database;
    odbc::StatementHandle handle;
    std::vector<std::string> values;  // in the connection's character set
    std::vector<SQLLEN> lengths;
};

CRowInserter::CRowInserter(CGeoDatabase& database, const CString& table, const CStringArray& columns)
    : m_statement(WithMemoryErrors([&] { return std::make_unique<Statement>(database, table, columns); })) {}

CRowInserter::~CRowInserter() = default;

void CRowInserter::Insert(std::span<const CString> values) {
    if (values.size() != m_statement->values.size())
        throw odbc::MakeOwnError(SQL_ERROR, "07001", "The row has another number of values");
    WithMemoryErrors([&] {
        for (std::size_t i = 0; i < values.size(); ++i)
            m_statement->Bind(i, values[i]);
        m_statement->Execute();
    });
}

}  // namespace kortavin
