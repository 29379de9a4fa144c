#include "desktop/importjob.h"

#include <algorithm>

#include "desktop/progress.h"
#include "desktop/report.h"
#include "desktop/text.h"
#include "kortavin/db/rowinserter.h"
#include "kortavin/service/statement.h"
#include "kortavin/textimport/geotextfile.h"
#include "kortavin/textimport/token.h"

namespace kortavin::desktop {
namespace {

// Undoes what was not committed.
class Transaction {
  public:
    explicit Transaction(CGeoDatabase& database) : m_database(&database) { database.BeginTrans(); }
    ~Transaction() {
        try {
            if (m_database != nullptr)
                m_database->Rollback();
        } catch (const CException&) {  // with the connection goes the transaction
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit() {
        m_database->CommitTrans();
        m_database = nullptr;
    }

  private:
    CGeoDatabase* m_database;
};

std::vector<CString> Chosen(const std::vector<CString>& pieces, const std::vector<WORD>& positions) {
    std::vector<CString> values;
    values.reserve(positions.size());
    for (const WORD position : positions)
        values.push_back(position <= pieces.size() ? pieces[position - 1U] : CString());
    return values;
}

void InsertLine(CRowInserter& inserter, const CString& line, ULONGLONG number, std::size_t columns,
                const ImportRequest& request) {
    const auto pieces = SplitLine(line, request.separator);
    if (pieces.size() != columns)
        RefuseLine(number, line, QStringLiteral("有 %1 个值，应有 %2 个。").arg(pieces.size()).arg(columns));
    try {
        inserter.Insert(Chosen(pieces, request.positions));
    } catch (const CDBException& error) {
        RefuseLine(number, line, Shown(error.GetErrorMessage()).trimmed());
    }
}

CStringArray ArrayOf(const std::vector<CString>& texts) {
    CStringArray array;
    for (const CString& text : texts)
        array.Add(text);
    return array;
}

}  // namespace

// With a separator behind it every piece ends in one, and the last token is an empty one that does not count.
std::vector<CString> SplitLine(const CString& line, const CString& separator) {
    std::vector<CString> pieces;
    CToken token(line + separator);
    token.SetToken(separator);
    while (token.MoreTokens())
        pieces.push_back(token.GetNextToken());
    if (pieces.empty())
        return {line};
    pieces.pop_back();
    return pieces;
}

TextHead ReadHead(TextSource& text, const CString& separator) {
    CGeoTextFile reader(&text.File());
    if (!reader.NextLine() || reader.GetLine().IsEmpty())
        throw Failure("文件的第一行是空的：它应当给出列名。");
    TextHead head{SplitLine(reader.GetLine(), separator), {}};
    if (reader.NextLine())
        head.samples = SplitLine(reader.GetLine(), separator);
    return head;
}

std::vector<CString> FieldsOf(CGeoDatabase& database, const CString& table) {
    const auto rows =
        service::OpenStatement(database, "SELECT * FROM " + QuotedName(database, table) + " WHERE 1=0");
    std::vector<CString> fields;
    for (const CODBCFieldInfo& info : service::DescribeResult(*rows))
        fields.push_back(info.m_strName);
    return fields;
}

ULONGLONG ImportText(CGeoDatabase& database, TextSource& text, const ImportRequest& request,
                     Progress& progress) {
    CGeoTextFile reader(&text.File());
    ULONGLONG number = 0;
    ULONGLONG rows = 0;
    std::size_t columns = 0;
    Transaction transaction(database);
    CRowInserter inserter(database, request.table, ArrayOf(request.fields));
    for (; reader.NextLine(); ++number) {
        const CString line = reader.GetLine();
        if (number == 0)
            columns = SplitLine(line, request.separator).size();
        if (number == 0 || line.IsEmpty())
            continue;
        InsertLine(inserter, line, number + 1, columns, request);
        ++rows;
        progress.Update([rows] { return QStringLiteral("已导入 %L1 行…").arg(rows); });
    }
    transaction.Commit();
    return rows;
}

}  // namespace kortavin::desktop
