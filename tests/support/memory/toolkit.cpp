#include "tests/support/memory/toolkit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

#include "kortavin/base/exception.h"
#include "kortavin/window/metrics.h"
#include "tests/support/memory/controls.h"

using kortavin::window::IsWindow;

namespace kortavin::testing {
namespace {

template <class T>
T TakeFirst(std::deque<T>& queue) {
    T first = queue.empty() ? T() : std::move(queue.front());
    if (!queue.empty())
        queue.pop_front();
    return first;
}

std::vector<window::WindowRecord*> RecordsOf(const std::vector<MemoryWindow*>& windows) {
    std::vector<window::WindowRecord*> records;
    for (const MemoryWindow* const window : windows)
        records.push_back(&window->Record());
    return records;
}

}  // namespace

std::unique_ptr<window::NativeWindow> MemoryToolkit::MakeWindow(const window::WindowRequest& request,
                                                                window::WindowRecord& window) {
    if (std::exchange(m_windowFails, false))
        throw CResourceException("no window");
    switch (request.kind) {
        case window::WindowKind::Edit:
            return std::make_unique<MemoryEdit>(*this, window, request);
        case window::WindowKind::Button:
            return std::make_unique<MemoryButton>(*this, window, request);
        case window::WindowKind::ComboBox:
            return std::make_unique<MemoryCombo>(*this, window, request);
        case window::WindowKind::ListBox:
            return std::make_unique<MemoryList>(*this, window, request);
        case window::WindowKind::Tabs:
            return std::make_unique<MemoryTabs>(*this, window, request);
        default:
            return std::make_unique<MemoryWindow>(*this, window, request);
    }
}

std::shared_ptr<const window::NativeFont> MemoryToolkit::MakeFont(const LOGFONT& description) {
    return std::make_shared<FixedFont>(description);
}

LOGFONT MemoryToolkit::MessageBoxFont() const {
    LOGFONT font;
    font.lfHeight = -FixedFont::kCellHeight;
    std::ranges::copy(std::string_view("Fixed"), font.lfFaceName.begin());
    return font;
}

COLORREF MemoryToolkit::SystemColor(int index) const {
    const auto found = m_colorOverrides.find(index);
    return found != m_colorOverrides.end() ? found->second : window::PlainColor(index);
}

void MemoryToolkit::SetSystemColor(int index, COLORREF color) {
    m_colorOverrides[index] = color;
    for (window::WindowRecord* const window : RecordsOf(m_windows))
        if (IsWindow(window))
            window::Report(*window, WM_SYSCOLORCHANGE);
}

int MemoryToolkit::SystemMetric(int index) const {
    return index == SM_CXVSCROLL || index == SM_CYHSCROLL ? MemoryWindow::kScrollBarSize : 0;
}

std::optional<UINT> MemoryToolkit::TimerPeriod(const MemoryWindow& window, UINT_PTR id) const {
    const auto found = m_timers.find({&window, id});
    return found != m_timers.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<CRect> MemoryToolkit::Confinement() const {
    if (m_confining == nullptr)
        return std::nullopt;
    return CRect(m_confining->ClientToScreen(m_confinement.TopLeft()), m_confinement.Size());
}

CPoint MemoryToolkit::MovePointer(CPoint screenPoint) {
    m_pointer = screenPoint;
    if (const auto within = Confinement(); within && !within->IsRectEmpty()) {
        m_pointer.x = std::clamp(m_pointer.x, within->left, within->right - 1);
        m_pointer.y = std::clamp(m_pointer.y, within->top, within->bottom - 1);
    }
    return m_pointer;
}

window::WindowRecord* MemoryToolkit::LiftKey(UINT virtualKey) {
    const auto key = m_keys.extract(virtualKey);
    return key.empty() ? nullptr : key.mapped();
}

bool MemoryToolkit::IsReachable(const MemoryWindow& window) const {
    if (m_modalRuns.empty())
        return true;
    const ModalRun& innermost = m_modalRuns.back();
    return !innermost.ended && window.IsInside(innermost.dialog);
}

window::WindowRecord* MemoryToolkit::KeyTarget() const {
    window::WindowRecord* const focus = window::FocusWindow();
    if (focus != nullptr && IsReachable(static_cast<MemoryWindow&>(focus->Native())))
        return focus;
    const bool isModal = !m_modalRuns.empty() && !m_modalRuns.back().ended;
    return isModal ? &m_modalRuns.back().dialog->Record() : nullptr;
}

void MemoryToolkit::EndCapture() {
    m_pressed = nullptr;
    if (std::exchange(m_captor, nullptr) != nullptr)
        window::ReportCaptureLost();
}

// Painting may make and destroy windows, and may invalidate: each round asks anew. Ten of them end what
// always posts.
void MemoryToolkit::Loop() {
    for (int round = 0; round < 10; ++round) {
        if (std::exchange(m_dispatchRequested, false))
            window::DispatchPosted();
        for (window::WindowRecord* const window : RecordsOf(m_windows))
            if (IsWindow(window))
                window->Native().UpdateNow();
        if (!m_dispatchRequested)
            return;
    }
}

void MemoryToolkit::RunModal(window::NativeWindow& dialog) {
    auto& native = static_cast<MemoryWindow&>(dialog);
    EndCapture();
    ModalRun& run = m_modalRuns.emplace_back(ModalRun{&native});
    native.Show(true);
    if (const auto script = TakeFirst(m_modalScripts))
        script();
    if (!run.ended)
        Loop();
    if (!run.ended)
        window::Report(native.Record(), WM_CLOSE);
    EXPECT_TRUE(run.ended) << "the dialog does not close";
    if (run.dialog != nullptr)
        native.Show(false);
    m_modalRuns.pop_back();
}

void MemoryToolkit::EndModal(window::NativeWindow& dialog) {
    for (ModalRun& run : m_modalRuns)
        run.ended = run.ended || run.dialog == &dialog;
}

int MemoryToolkit::ShowMessageBox(std::string_view text, UINT, window::NativeWindow*) {
    EndCapture();
    m_messageBoxes.emplace_back(text);
    return IDOK;
}

std::optional<COLORREF> MemoryToolkit::ChooseColor(const window::ColorRequest& request) {
    if (std::exchange(m_colorFails, false))
        throw CResourceException("no chooser");
    EndCapture();
    m_colorRequests.push_back(request);
    return TakeFirst(m_colors);
}

std::optional<CString> MemoryToolkit::ChooseFile(const window::FileRequest& request) {
    EndCapture();
    m_fileRequests.push_back(request);
    return TakeFirst(m_files);
}

void MemoryToolkit::Forget(MemoryWindow& window) {
    std::erase(m_windows, &window);
    std::erase_if(m_timers, [&](const auto& timer) { return timer.first.first == &window; });
    for (MemoryWindow** const user : {&m_captor, &m_pressed, &m_confining})
        if (*user == &window)
            *user = nullptr;
    for (auto& [key, receiver] : m_keys)
        if (receiver == &window.Record())
            receiver = nullptr;
    for (ModalRun& run : m_modalRuns)
        if (run.dialog == &window)
            run = {nullptr, true};
}

MemoryDesktop::MemoryDesktop() {
    auto toolkit = std::make_unique<MemoryToolkit>();
    m_toolkit = toolkit.get();
    EXPECT_EQ(window::SetToolkit(std::move(toolkit)), nullptr);
}

MemoryDesktop::~MemoryDesktop() {
    EXPECT_THAT(m_toolkit->Windows(), ::testing::IsEmpty());
    while (!m_toolkit->Windows().empty())
        m_toolkit->Windows().front()->Record().Destroy();
    window::SetToolkit(nullptr);
}

MemoryToolkit& TheDesktop() {
    return static_cast<MemoryToolkit&>(window::RequireToolkit());
}

MemoryWindow& NativeOf(const CWnd& window) {
    if (window.m_hWnd == nullptr)
        throw std::logic_error("no window is attached");
    return static_cast<MemoryWindow&>(window::RecordOf(window.m_hWnd)->Native());
}

}  // namespace kortavin::testing
