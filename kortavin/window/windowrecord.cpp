#include "kortavin/window/windowrecord.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "kortavin/window/combobox.h"
#include "kortavin/window/wnd.h"

namespace kortavin::window {
namespace {

// Never destroyed: windows of a host's static objects go later than anything here could.
std::unordered_set<WindowRecord*>& LivingWindows() {
    static auto* windows = new std::unordered_set<WindowRecord*>;
    return *windows;
}

void MakeComboField(WindowRecord* combo) {
    const bool hasField =
        combo->Kind() == WindowKind::ComboBox && (combo->Style() & CBS_DROPDOWNLIST) == CBS_DROPDOWN;
    if (hasField)
        WindowRecord::Create(
            {WindowKind::Edit, combo, nullptr, kComboEditId, WS_CHILD | WS_VISIBLE},
            [combo](WindowRecord& field) { return combo->Native().AsCombo()->MakeEditField(field); });
}

}  // namespace

WindowRecord* RecordOf(const CWnd* window) {
    return window != nullptr ? static_cast<WindowRecord*>(window->m_hWnd) : nullptr;
}

bool IsWindow(HWND window) {
    return window != nullptr && LivingWindows().contains(RecordOf(window));
}

WindowRecord::WindowRecord(const WindowPlace& place) : m_place(place) {
    LivingWindows().insert(this);
    if (m_place.parent != nullptr)
        m_place.parent->m_children.push_back(this);
}

void WindowRecord::SetParent(WindowRecord* parent) {
    if (m_dying || parent == m_place.parent)
        return;
    if (m_place.parent != nullptr)
        std::erase(m_place.parent->m_children, this);
    m_place.parent = parent;
    if (parent != nullptr)
        parent->m_children.push_back(this);
}

WindowRecord::~WindowRecord() {
    LivingWindows().erase(this);
    for (WindowRecord* const other : LivingWindows())
        if (other->m_place.owner == this)
            other->m_place.owner = nullptr;
    if (IsWindow(m_place.parent))
        std::erase(m_place.parent->m_children, this);
}

WindowRecord* WindowRecord::Create(const WindowPlace& place, const MakeNative& make) {
    struct Deleter {
        void operator()(WindowRecord* window) const { delete window; }
    };
    std::unique_ptr<WindowRecord, Deleter> window(new WindowRecord(place));
    window->m_native = make(*window);
    return window->m_native != nullptr ? window.release() : nullptr;
}

WindowRecord* WindowRecord::Create(const WindowPlace& place, const WindowRequest& request) {
    WindowRecord* const window =
        Create(place, [&](WindowRecord& made) { return RequireToolkit().MakeWindow(request, made); });
    if (request.font != nullptr)
        window->m_font = *request.font;
    try {
        MakeComboField(window);
    } catch (...) {
        window->Destroy();
        throw;
    }
    return window;
}

void WindowRecord::Destroy() noexcept {
    if (std::exchange(m_dying, true))
        return;
    LeaveFocusAndCapture(this);
    Report(*this, WM_DESTROY);
    while (!m_children.empty()) {
        WindowRecord* const child = m_children.back();
        child->Destroy();
        std::erase(m_children, child);  // one that is being destroyed further up the stack
    }
    Report(*this, WM_NCDESTROY);
    DropPosted(this);
    CWnd* const object = m_object;
    if (m_madeObject != nullptr)
        m_madeObject->m_hWnd = nullptr;
    if (object != nullptr)
        object->m_hWnd = nullptr;
    delete this;
    if (object != nullptr)
        Guarded([object] { object->PostNcDestroy(); });
}

WindowRecord* WindowRecord::Child(int id) const {
    const auto found = std::find_if(m_children.begin(), m_children.end(),
                                    [id](const WindowRecord* child) { return child->m_place.id == id; });
    return found == m_children.end() ? nullptr : *found;
}

CWnd* WindowRecord::ObjectForAsking() {
    if (m_object != nullptr)
        return m_object;
    if (m_madeObject == nullptr) {
        m_madeObject = std::make_unique<CWnd>();
        m_madeObject->m_hWnd = this;
    }
    return m_madeObject.get();
}

CFont& WindowRecord::Font() {
    if (m_font.GetNative() == nullptr)
        m_font = CFont(RequireToolkit().MessageBoxFont());
    return m_font;
}

}  // namespace kortavin::window
