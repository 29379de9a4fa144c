#include "kortavin/window/messagebox.h"

#include <utility>

#include "kortavin/window/toolkit.h"

namespace kortavin {

namespace window {
namespace {

MessageBoxHandler& CurrentHandler() {
    static MessageBoxHandler handler;
    return handler;
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
    return std::exchange(CurrentHandler(), std::move(handler));
}

}  // namespace window

int AfxMessageBox(const char* text, UINT type, UINT /*helpContext*/) {
    const char* const shown = text != nullptr ? text : "";
    if (const auto handler = window::CurrentHandler())
        return handler(shown, type);
    try {
        return window::RequireToolkit().ShowMessageBox(shown, type, nullptr);
    } catch (const CResourceException&) {
        return IDOK;
    }
}

}  // namespace kortavin
