#include "kortavin/textimport/mateup.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "kortavin/resources/dialogs.h"
#include "kortavin/textimport/mateupdlg.h"
#include "kortavin/window/combobox.h"
#include "tests/support/memory/input.h"

using namespace kortavin::testing;
namespace resources = kortavin::resources;
using kortavin::CMateupDlg;
using ::testing::ElementsAre;

namespace {

CString Gbk(const std::string& utf8) {
    return CString::FromUtf8(utf8).value();
}

class Matching : public ::testing::Test {
  protected:
    // What the user does in the dialog; TRUE when it was confirmed.
    BOOL Match(const std::string& columns, const std::string& samples, const std::string& targets,
               std::function<void()> user) {
        CString lists[] = {Gbk(columns), Gbk(samples), Gbk(targets)};
        m_desktop->NextModal(std::move(user));
        return CMateup::Mateup(lists[0], lists[1], lists[2], m_matches);
    }
    static CMateupDlg& Dialog() {
        return dynamic_cast<CMateupDlg&>(*TheDesktop().Windows().front()->Record().Object());
    }
    static CGridCtrl& Grid(int id) { return dynamic_cast<CGridCtrl&>(*Dialog().GetDlgItem(id)); }
    static std::string Cells(int id) {
        CString all;
        for (int row = 0; row < Grid(id).GetRowCount(); ++row)
            all += Grid(id).GetItemText(row, 0) + "=" + Grid(id).GetItemText(row, 1) + ";";
        return all.ToUtf8().value();
    }
    static void Fill(int row, const std::string& text) {
        CGridCtrl& grid = Grid(resources::kMatchListGrid);
        MoveFocusTo(&grid);
        grid.SetFocusCell(row, 1);
        Key(VK_RETURN);
        while (!grid.GetDlgItem(GridEditorControlId)->GetWindowText().IsEmpty())
            Key(VK_BACK);
        Type(Gbk(text).View());
        Key(VK_RETURN);
        Loop();
    }
    static void Press(int button) {
        Click(*Dialog().GetDlgItem(button), {2, 2});
        Loop();
    }

    MemoryDesktop m_desktop;
    CWordArray m_matches;
};

}  // namespace

TEST_F(Matching, FieldsArePairedInOrderThenByTheUser) {
    EXPECT_TRUE(Match("'ID',\"名称\",Width", "1,二环", "NAME,ID,WIDTH,EXTRA", [] {
        EXPECT_EQ(Cells(resources::kMatchListGrid), "待配=列名;NAME=ID;ID=名称;WIDTH=Width;EXTRA=;");
        EXPECT_EQ(Cells(resources::kMatchSampleGrid), "列名=样品数据;ID=1;名称=二环;Width=;");
        Press(IDOK);  // the last field has no column yet
        Fill(1, "  名称\t");
        Fill(2, "id");
        Fill(4, "nothing");
        Press(IDOK);
        Fill(4, "WIDTH ");
        Press(IDOK);
    }));
    EXPECT_THAT(std::vector<WORD>(m_matches.begin(), m_matches.end()), ElementsAre(2, 1, 3, 3));
}

TEST_F(Matching, ListOffersTheColumnsAndSamplesAreEditedCentred) {
    EXPECT_FALSE(Match("a,b", "1,2", "x,y", [] {
        CGridCtrl& grid = Grid(resources::kMatchListGrid);
        MoveFocusTo(&grid);
        grid.SetFocusCell(1, 1);
        Key(VK_RETURN);
        auto& list = dynamic_cast<CComboBox&>(*grid.GetDlgItem(GridEditorControlId));
        EXPECT_EQ(list.GetCount(), 2);
        PickItem(list, 1);
        Key(VK_RETURN);
        EXPECT_EQ(grid.GetItemText(1, 1), "b");
        MoveFocusTo(&Grid(resources::kMatchSampleGrid));
        Grid(resources::kMatchSampleGrid).SetFocusCell(1, 1);
        Key(VK_RETURN);
        EXPECT_NE(Grid(resources::kMatchSampleGrid).GetDlgItem(GridEditorControlId)->GetStyle() & ES_CENTER,
                  0U);
        CloseByUser(Dialog());
    }));
}

TEST_F(Matching, CancelLeavesTheCallersArrayAndListsWithoutCommasAreEmpty) {
    m_matches.Add(7);
    EXPECT_FALSE(Match("a,b", "", "x,y", [] { Press(IDCANCEL); }));
    EXPECT_THAT(std::vector<WORD>(m_matches.begin(), m_matches.end()), ElementsAre(7));
    EXPECT_FALSE(Match("a", "1", "x,y", [] {
        Press(IDOK);  // no column at all
        Press(IDCANCEL);
    }));
    EXPECT_TRUE(Match("a,b", "1,2", "x", [] { Press(IDOK); }));
    EXPECT_TRUE(m_matches.IsEmpty());
    EXPECT_TRUE(Match("a,,a", "1,2,3", "x,y,z", [] { Press(IDOK); }))
        << "an empty name matches an empty cell";
    EXPECT_THAT(std::vector<WORD>(m_matches.begin(), m_matches.end()), ElementsAre(1, 2, 1))
        << "of equal names the first";
}
