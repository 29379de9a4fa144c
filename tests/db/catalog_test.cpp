#include "db/catalogrecordsets.h"
#include "framework/window/messagebox.h"
#include "tests/support/databases.h"

using namespace kortavin::test;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

// Keeps what would be shown in message boxes.
class MessageRecord {
  public:
    MessageRecord() {
        m_former = kortavin::window::SetMessageBoxHandler([this](const CString& text, UINT type) {
            EXPECT_EQ(type, MB_OK);
            m_texts.emplace_back(text.View());
            return IDOK;
        });
    }
    ~MessageRecord() { kortavin::window::SetMessageBoxHandler(m_former); }
    const std::vector<std::string>& Texts() const { return m_texts; }

  private:
    std::vector<std::string> m_texts;
    kortavin::window::MessageBoxHandler m_former;
};

std::vector<std::string> Names(const CStringArray& names) {
    std::vector<std::string> copy;
    for (const CString& name : names)
        copy.emplace_back(name.View());
    return copy;
}

class Catalog : public EveryDatabaseTest {
  protected:
    void TearDown() override {
        EveryDatabaseTest::TearDown();
        EXPECT_THAT(m_messages.Texts(), ElementsAre());
    }

    MessageRecord m_messages;
};
INSTANTIATE_TEST_SUITE_P(On, Catalog, kEveryBackend, BackendName);

class SqliteCatalog : public SqliteTest {
  protected:
    MessageRecord m_messages;
};

}  // namespace

TEST_P(Catalog, ListsTablesAndViewsWithTheirGbkNames) {
    const std::string road = MakeTable("道路", "a integer");
    const std::string town = MakeTable("town", "a integer");
    const std::string view = MakeView("视图", "SELECT a FROM " + road);
    CStringArray tables;
    tables.Add("left over");
    EXPECT_TRUE(m_database.GetAllTables(tables));
    EXPECT_THAT(Names(tables), IsSupersetOf({Gbk(road), Gbk(town), Gbk(view)}));
    EXPECT_EQ(Gbk(road).substr(0, 4), "\xB5\xC0\xC2\xB7");
    EXPECT_THAT(Names(tables), testing::Not(testing::Contains("left over")));
    EXPECT_THAT(Names(tables), testing::Each(testing::Not("pg_class")));
}

TEST_P(Catalog, AppendsColumnsInTheirOrderAndBracketsThoseWithABlank) {
    const std::string table =
        MakeTable("列", "名称 integer, plain integer, " + Quoted("Order Date") + " date, " + Quoted("x.y") +
                            " integer, " + Quoted("宽 度.米") + " integer");
    const CString name(Gbk(table));
    CStringArray columns;
    columns.Add("former");
    EXPECT_TRUE(m_database.GetColumnList(name, columns));
    EXPECT_THAT(Names(columns), ElementsAre("former", "\xC3\xFB\xB3\xC6", "plain", "[Order Date]", "x.y",
                                            "[\xBF\xED \xB6\xC8.\xC3\xD7]"));
    EXPECT_TRUE(m_database.GetColumnList(name, columns));
    EXPECT_EQ(columns.GetSize(), 11);
    EXPECT_STREQ(columns[6], columns[1]);
    EXPECT_FALSE(m_database.IsODBCJetDriver());
}

TEST_P(Catalog, UnknownTableHasNoColumns) {
    CStringArray columns;
    columns.Add("former");
    EXPECT_FALSE(m_database.GetColumnList("nosuchtable", columns));
    EXPECT_FALSE(m_database.GetColumnList(CString(Gbk("没有此表")), columns));
    EXPECT_THAT(Names(columns), ElementsAre("former"));
}

TEST_P(Catalog, RecordsetsBindTheirFields) {
    const std::string table = MakeTable("t", "number integer NOT NULL, 日期 date, 名称 varchar(20)");
    _CTables tables(&m_database);
    ASSERT_TRUE(tables.Open(nullptr, nullptr, CString(Gbk(table)), "'TABLE,VIEW'", CRecordset::forwardOnly));
    EXPECT_STREQ(tables.m_strName, CString(Gbk(table)));
    EXPECT_STREQ(tables.m_strType, "TABLE");
    EXPECT_FALSE(tables.IsBOF());
    EXPECT_GE(tables.GetODBCFieldCount(), 5);
    tables.MoveNext();
    EXPECT_TRUE(tables.IsEOF());

    CColumns columns(&m_database);
    ASSERT_TRUE(columns.Open(nullptr, nullptr, CString(Gbk(table)), nullptr, CRecordset::forwardOnly));
    EXPECT_STREQ(columns.m_strTableName, CString(Gbk(table)));
    EXPECT_STREQ(columns.m_strColumnName, "number");
    EXPECT_EQ(columns.m_nDataType, 4);
    EXPECT_EQ(columns.m_nNullable, 0);
    EXPECT_GE(columns.GetODBCFieldCount(), 12);
    columns.MoveNext();
    EXPECT_EQ(columns.m_nDataType, 9);
    EXPECT_EQ(columns.m_nNullable, 1);
    EXPECT_FALSE(columns.m_strTypeName.IsEmpty());
    columns.MoveNext();
    EXPECT_STREQ(columns.m_strColumnName, "\xC3\xFB\xB3\xC6");
    EXPECT_THAT(columns.m_nDataType, testing::AnyOf(12, -9));  // the catalog's own words, in ODBC 2 too
    EXPECT_EQ(columns.m_lPrecision, 20);

    ASSERT_TRUE(columns.Open(nullptr, nullptr, "nosuchtable", nullptr, CRecordset::forwardOnly));
    EXPECT_TRUE(columns.IsBOF());
    EXPECT_TRUE(columns.IsEOF());
    ASSERT_TRUE(columns.Open(nullptr, nullptr, CString(Gbk(table)), "number", CRecordset::forwardOnly));
    EXPECT_STREQ(columns.m_strColumnName, "number");
}

TEST_F(SqliteCatalog, DatabaseWithoutTablesHasAnEmptyList) {
    CStringArray tables;
    tables.Add("left over");
    EXPECT_TRUE(m_database.GetAllTables(tables));
    EXPECT_EQ(tables.GetSize(), 0);
}

TEST_F(SqliteCatalog, NamesAreCutAt255BytesAndNeverInsideACharacter) {
    Execute("CREATE TABLE " + std::string(300, 'a') + " (" + std::string(255, 'b') + ", " +
            std::string(256, 'c') + ")");
    std::string chinese;
    for (int i = 0; i < 150; ++i)
        chinese += "路";
    Execute("CREATE TABLE " + chinese + " (a)");
    CStringArray tables;
    m_database.GetAllTables(tables);
    EXPECT_THAT(Names(tables),
                testing::UnorderedElementsAre(std::string(255, 'a'), Gbk(chinese).substr(0, 254)));
    CStringArray columns;
    m_database.GetColumnList(CString(std::string(300, 'a')), columns);
    EXPECT_THAT(Names(columns), ElementsAre(std::string(255, 'b'), std::string(255, 'c')));
}

TEST_F(SqliteCatalog, ErrorsOfTheDataSourceAreShownAndTrapped) {
    CGeoDatabase closed;
    CStringArray names;
    names.Add("former");
    EXPECT_TRUE(closed.GetColumnList("t", names));
    EXPECT_THAT(Names(names), ElementsAre("former"));
    EXPECT_EQ(m_messages.Texts().size(), 1U);
    EXPECT_FALSE(closed.GetAllTables(names));
    EXPECT_EQ(names.GetSize(), 0);
    EXPECT_EQ(m_messages.Texts().size(), 2U);
    EXPECT_TRUE(m_database.GetColumnList("\xFF\xFF", names));
    EXPECT_EQ(m_messages.Texts().size(), 3U);
    // The message, and the state directly behind it.
    for (const std::string& text : m_messages.Texts())
        EXPECT_THAT(text, testing::ContainsRegex("[^ ].*\nState:[0-9A-Z]{5},"));
    EXPECT_FALSE(closed.IsODBCJetDriver());
}

TEST_F(SqliteCatalog, RecordsetsAnswerTheClassOfTheirBase) {
    _CTables tables(&m_database);
    CColumns columns(&m_database);
    for (CCatalogRecordset* recordset :
         {static_cast<CCatalogRecordset*>(&tables), static_cast<CCatalogRecordset*>(&columns)}) {
        EXPECT_STREQ(recordset->GetRuntimeClass()->m_lpszClassName, "_CRecordsetEx");
        EXPECT_TRUE(recordset->IsKindOf(&CRecordset::classCRecordset));
        EXPECT_TRUE(recordset->IsKindOf(&CObject::classCObject));
        EXPECT_STREQ(recordset->GetDefaultConnect(), "ODBC;");
        EXPECT_STREQ(recordset->GetDefaultSQL(), "!");
    }
}
