#include "tests/support/scripted/faultfixture.h"
#include "tests/wizard/wizarduser.h"

using namespace kortavin;

TEST_F(FaultTest, WizardPreviewsWhatCanBeReadAndGivesTheHostsResourcesBack) {
    const MemoryDesktop desktop;
    m_source.Statement("q").AddColumn("a").AddRow({"1"}).AddRow({Error("22012", "zero")}).AddRow({"3"});
    Open();
    const window::ResourceModule host{"host", {}, nullptr, {}};
    window::AddModule(&host);
    window::SetCurrentSource(&host);
    RunWizard(m_query, "nothing", [&] {
        EXPECT_EQ(window::CurrentSource(), &window::OwnModule());
        Do("#5;");
        Page().SetDlgItemText(kStatementEdit, "q");
        Do("检查;检查;");
        m_database.Close();
        Do("检查;");
        EXPECT_EQ(Cells(), "|a/3|1/4|");
    });
    EXPECT_EQ(window::CurrentSource(), &host);
    CString sql;
    EXPECT_EQ(m_query.ConstructQuery(sql) + CQuerySql().ConstructQuery(sql), 0);
    Open();
    desktop->LetNextWindowFail();
    EXPECT_THROW(m_query.ConstructQuery(sql), CResourceException);
    EXPECT_EQ(window::CurrentSource(), &host);
    window::RemoveModule(&host);
    m_database.Close();
    m_source.hasCatalogFunctions = false;
    Open();
    EXPECT_THROW(m_query.ConstructQuery(sql), CNotSupportedException);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
    EXPECT_THAT(m_boxes, IsEmpty());
}
