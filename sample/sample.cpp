#include "sample/sample.h"

#include <stdexcept>

#include "kortavin/odbc/database.h"
#include "kortavin/odbc/dbexception.h"

namespace kortavin::sample {
namespace {

class Transaction {
  public:
    explicit Transaction(CDatabase& database) : m_database(database) { m_database.BeginTrans(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (!m_done)
            RollBack();
    }
    void Commit() {
        m_database.CommitTrans();
        m_done = true;
    }

  private:
    // The error that led here is the one to report; the database may be past answering.
    void RollBack() noexcept try { m_database.Rollback(); } catch (const CException&) {
    }

    CDatabase& m_database;
    bool m_done = false;
};

CString InGbk(std::string_view utf8) {
    std::optional<CString> text = CString::FromUtf8(utf8);
    if (!text)
        throw std::logic_error("the sample's statements are not UTF-8");
    return *std::move(text);
}

}  // namespace

void WriteSample(CDatabase& database) {
    Transaction transaction(database);
    for (const std::string_view statement : AtlasStatements())
        database.ExecuteSQL(InGbk(statement));
    transaction.Commit();
}

}  // namespace kortavin::sample
