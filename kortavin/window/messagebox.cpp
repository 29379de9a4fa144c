#include "framework/window/messagebox.h"

#include <utility>

#include "framework/window/toolkit.h"

namespace kortavin::window {
namespace {

MessageBoxHandler& CurrentHandler() {
    static MessageBoxHandler handler;
    return handler;
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
    return std::exchange(CurrentHandler(), std::move(handler));
}

}  // namespace kortavin::window

int AfxMessageBox(const char* text, UINT type, UINT /*helpContext*/) {
    const char* const shown = text != nullptr ? text : "";
    if (const auto handler = kortavin::window::CurrentHandler())
        return handler(shown, type);
    try {
        return kortavin::window::RequireToolkit().ShowMessageBox(shown, type, nullptr);
    } catch (const CResourceException&) {
        return IDOK;
    }
}
