#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>

#include "kortavin/base/exception.h"
#include "kortavin/base/texts.h"
#include "kortavin/window/metrics.h"
#include "kortavin/window/wnd.h"

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The program is not linked with a toolkit.
TEST(ToolkitOnDemand, IsLoadedForTheFirstWindowAndServesWhereThereIsADesktop) {
    static CWnd window;  // goes with the process
    const auto errorUnder = [](const char* platform) -> std::string {
        setenv("QT_QPA_PLATFORM", platform, 1);
        try {
            window.Create("Static", "text", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50}, nullptr, 1);
            return "";
        } catch (const CResourceException& error) {
            return error.GetErrorMessage().GetString();
        }
    };
    const auto isQtLoaded = [] { return dlopen("libQt6Core.so.6", RTLD_NOW | RTLD_NOLOAD) != nullptr; };
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XDG_RUNTIME_DIR"})
        unsetenv(name);
    const char* const noWindows = kortavin::base::Text(kortavin::base::TextId::NoWindows);

    EXPECT_NE(kortavin::window::MessageBoxFont().lfHeight, 0);
    EXPECT_FALSE(isQtLoaded());
    EXPECT_THAT(errorUnder("xcb"), AllOf(StartsWith(noWindows), HasSubstr("xcb")));
    EXPECT_THAT(errorUnder("nonsense"), AllOf(StartsWith(noWindows), HasSubstr("nonsense")));
    EXPECT_EQ(AfxMessageBox("nobody sees it"), IDOK);
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
    EXPECT_TRUE(isQtLoaded());
    EXPECT_EQ(errorUnder("nonsense;offscreen"), "");
    EXPECT_TRUE(window.IsWindowVisible());
}
