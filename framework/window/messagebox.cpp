#include "framework/window/messagebox.h"

#include <utility>

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
    const auto handler = kortavin::window::CurrentHandler();
    return handler ? handler(text != nullptr ? text : "", type) : IDOK;
}
