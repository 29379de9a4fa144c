#include <deque>

#include "kortavin/window/messagemap.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin::window {
namespace {

struct Posted {
    HWND window;
    Message message;
};

std::deque<Posted>& Queue() {
    static auto* queue = new std::deque<Posted>;
    return *queue;
}

}  // namespace

BOOL PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindow(window))
        return FALSE;
    Queue().push_back({window, {message, wParam, lParam}});
    if (Queue().size() == 1)
        RequireToolkit().RequestDispatch();
    return TRUE;
}

void DispatchPosted() noexcept {
    while (!Queue().empty()) {
        const Posted next = Queue().front();
        Queue().pop_front();
        // A handler may run a loop of its own, in which the rest must arrive.
        if (!Queue().empty())
            Guarded([] { RequireToolkit().RequestDispatch(); });
        Report(*RecordOf(next.window), next.message.message, next.message.wParam, next.message.lParam);
    }
}

void DropPosted(HWND window) {
    std::erase_if(Queue(), [window](const Posted& posted) { return posted.window == window; });
}

}  // namespace kortavin::window
