#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>

#include "framework/window/dialog.h"
#include "framework/window/metrics.h"
#include "framework/window/toolkit.h"
#include "resources/texts.h"

using kortavin::resources::Text;
using kortavin::resources::TextId;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

bool IsQtLoaded() {
    return dlopen("libQt6Core.so.6", RTLD_NOW | RTLD_NOLOAD) != nullptr;
}

// What a window's maker is told under this platform.
std::string ErrorUnder(const char* platform) {
    setenv("QT_QPA_PLATFORM", platform, 1);
    try {
        CWnd().Create("Static", "", WS_POPUP, {}, nullptr, 1);
    } catch (const CResourceException& error) {
        EXPECT_THROW(CDialog(1).DoModal(), CResourceException);
        EXPECT_EQ(AfxMessageBox("nobody sees it"), IDOK);
        EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
        return error.GetErrorMessage().GetString();
    }
    return {};
}

}  // namespace

// The program is not linked with any toolkit.
TEST(ToolkitOnDemand, IsLoadedForTheFirstWindowAndServesWhereThereIsADesktop) {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XDG_RUNTIME_DIR"})
        unsetenv(name);
    EXPECT_NE(kortavin::window::MessageBoxFont().lfHeight, 0);
    ASSERT_FALSE(IsQtLoaded());
    EXPECT_THAT(ErrorUnder("xcb"), AllOf(StartsWith(Text(TextId::NoWindows)), HasSubstr("xcb")));
    EXPECT_THAT(ErrorUnder("nonsense;xcb"), HasSubstr("xcb"));
    EXPECT_THAT(ErrorUnder("nonsense"), AllOf(StartsWith(Text(TextId::NoWindows)), HasSubstr("nonsense")));
    EXPECT_TRUE(IsQtLoaded());

    EXPECT_EQ(ErrorUnder("nonsense;offscreen:"), "");
    static CWnd left;  // at the process's end
    EXPECT_TRUE(left.Create("Static", "text", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50}, nullptr, 1));
    EXPECT_TRUE(left.IsWindowVisible());
}
