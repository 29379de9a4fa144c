#include <gmock/gmock.h>

#include "kortavin/base/texts.h"
#include "kortavin/window/dialog.h"
#include "kortavin/window/messagebox.h"
#include "kortavin/window/metrics.h"
#include "kortavin/window/toolkit.h"

using kortavin::base::Text;
using kortavin::base::TextId;

// The library that this program loads has no toolkit beside it.
TEST(ToolkitMissing, EachNeedOfAWindowIsAnErrorAndMessagesAreDropped) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            kortavin::window::RequireToolkit();
            FAIL() << "a toolkit was found";
        } catch (const CResourceException& error) {
            const CString reason = error.GetErrorMessage();
            EXPECT_EQ(reason.Find(Text(TextId::NoWindows)), 0) << reason.GetString();
            EXPECT_GE(reason.Find("libkortavin-qt"), 0) << reason.GetString();
        }
        EXPECT_EQ(AfxMessageBox("text"), IDOK);
    }
    CWnd window;
    EXPECT_THROW(window.Create("Static", "", WS_POPUP, {}, nullptr, 1), CResourceException);
    EXPECT_THROW(CDialog(1).DoModal(), CResourceException);
    EXPECT_EQ(kortavin::window::CurrentToolkit(), nullptr);
}

TEST(ToolkitMissing, ColorsAndFontsAreAPlainDesktops) {
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), RGB(0, 0, 0));
    EXPECT_GT(GetSystemMetrics(SM_CXVSCROLL), 0);
    EXPECT_NE(kortavin::window::MessageBoxFont().lfHeight, 0);
}
