#include "kortavin/window/propertysheet.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "kortavin/base/texts.h"
#include "kortavin/window/button.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

using base::TextId;

namespace {

constexpr int kTabsId = 0x3020;
// In pixels of the message-box font's dialog units: between everything, and of a button.
constexpr int kMargin = 7;
constexpr CSize kButton{50, 14};

CSize SheetUnit() {
    return window::DialogUnitOf(CFont(window::RequireToolkit().MessageBoxFont()));
}

CSize PixelSizeOf(const window::FoundDialog& page) {
    const CSize unit = window::DialogUnitOf(window::DialogFont(*page.dialog));
    return window::PixelsOf({0, 0, page.dialog->width, page.dialog->height}, unit).Size();
}

CString CaptionOf(const window::FoundDialog& page) {
    const bool hasText = page.module->text != nullptr && page.dialog->caption != 0;
    return hasText ? CString(page.module->text(page.dialog->caption)) : CString();
}

window::WindowRecord* MakeChild(window::WindowRecord* parent, window::WindowKind kind, int id, DWORD style,
                                const CRect& rect, const CString& text) {
    const window::WindowRequest request{kind, &parent->Native(), style | WS_CHILD, rect, text, nullptr};
    return window::WindowRecord::Create({kind, parent, nullptr, id, request.style}, request);
}

}  // namespace

CPropertyPage::CPropertyPage(unsigned templateId) : CDialog(templateId) {}
CPropertyPage::~CPropertyPage() = default;

BOOL CPropertyPage::OnInitDialog() {
    if (!UpdateData(FALSE) && m_propertySheet != nullptr)
        m_propertySheet->EndDialog(-1);
    return TRUE;
}

BOOL CPropertyPage::OnSetActive() {
    return TRUE;
}

BOOL CPropertyPage::OnKillActive() {
    return UpdateData(TRUE);
}

void CPropertyPage::OnOK() {}
void CPropertyPage::OnCancel() {}

CPropertySheet::CPropertySheet(unsigned captionId, CWnd* parent, unsigned selected)
    : CPropertySheet(window::FindText(captionId).value_or(CString()), parent, selected) {}

CPropertySheet::CPropertySheet(const char* caption, CWnd* parent, unsigned selected)
    : m_caption(caption),
      m_sheetParent(parent),
      m_first(static_cast<int>(selected)),
      m_frame{0, 0, 0, 0, WS_POPUP | WS_CAPTION | WS_SYSMENU, "", 9, {}} {}

CPropertySheet::~CPropertySheet() = default;

const window::MessageMap* CPropertySheet::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnControl<TCN_SELCHANGE, kTabsId, &CPropertySheet::OnTabChosen>()};
    static const window::MessageMap map{CDialog::GetMessageMap(), kEntries};
    return &map;
}

void CPropertySheet::AddPage(CPropertyPage* page) {
    if (page != nullptr)
        m_pages.push_back(page);
}

CPropertyPage* CPropertySheet::GetPage(int index) const {
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<std::size_t>(index)] : nullptr;
}

// All templates are looked for before anything shows.
std::vector<window::FoundDialog> CPropertySheet::FindTemplates() const {
    std::vector<window::FoundDialog> found;
    std::ranges::transform(m_pages, std::back_inserter(found),
                           [](const auto* page) { return page->FindTemplate(); });
    return found;
}

int CPropertySheet::DoModal() {
    if (m_hWnd != nullptr || m_pages.empty())
        return -1;
    m_templates = FindTemplates();
    m_active = -1;
    for (CPropertyPage* const page : m_pages) {
        page->m_propertySheet = this;
        page->m_isSetUp = false;
    }
    InitModalIndirect(m_frame, m_sheetParent);
    struct PagesOfRun {
        std::vector<CPropertyPage*>& pages;
        ~PagesOfRun() {
            for (CPropertyPage* const page : pages)
                page->m_propertySheet = nullptr;
        }
    } const scope{m_pages};
    return CDialog::DoModal();
}

BOOL CPropertySheet::OnInitDialog() {
    SetWindowText(m_caption);
    MakeButtons(MakePages());
    for (int i = 0; i < GetPageCount() && m_active < 0 && m_hWnd != nullptr; ++i) {
        const int index = (std::max(m_first, 0) + i) % GetPageCount();
        if (Activate(index))
            ShowOnly(index);
    }
    return m_active < 0;
}

window::NativeTabs& CPropertySheet::Tabs() const {
    return *window::RecordOf(m_hWnd)->Child(kTabsId)->Native().AsTabs();
}

// The tabs and, on their frame, a window for each page, still empty. Answers where the tabs lie.
CRect CPropertySheet::MakePages() {
    window::WindowRecord* const tabs = MakeChild(window::RecordOf(m_hWnd), window::WindowKind::Tabs, kTabsId,
                                                 WS_VISIBLE | WS_TABSTOP, {}, {});
    CSize size;
    for (const auto& found : m_templates) {
        Tabs().Add(CaptionOf(found).View());
        const CSize page = PixelSizeOf(found);
        size = {std::max(size.cx, page.cx), std::max(size.cy, page.cy)};
    }
    const CSize margin = window::PixelsOf({0, 0, kMargin, kMargin}, SheetUnit()).Size();
    const CPoint corner = Tabs().Around({CPoint(), size}).TopLeft();
    const CRect place(CPoint(margin.cx - corner.x, margin.cy - corner.y), size);
    const CRect around = Tabs().Around(place);
    tabs->Native().Move(around);
    for (CPropertyPage* const page : m_pages)
        page->SubclassWindow(MakeChild(window::RecordOf(m_hWnd), window::WindowKind::Plain, 0, 0, place, {}));
    return around;
}

// To the right below the tabs, which the dialog is then made to fit.
void CPropertySheet::MakeButtons(const CRect& tabs) {
    const CSize margin = window::PixelsOf({0, 0, kMargin, kMargin}, SheetUnit()).Size();
    const CSize size = window::PixelsOf({0, 0, kButton.cx, kButton.cy}, SheetUnit()).Size();
    CPoint corner(tabs.right - 2 * size.cx - margin.cx, tabs.bottom + margin.cy);
    MakeChild(window::RecordOf(m_hWnd), window::WindowKind::Button, IDOK,
              WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, {corner, size}, CString(Text(TextId::Ok)));
    corner.x += size.cx + margin.cx;
    MakeChild(window::RecordOf(m_hWnd), window::WindowKind::Button, IDCANCEL, WS_VISIBLE | WS_TABSTOP,
              {corner, size}, CString(Text(TextId::Cancel)));
    const CPoint place = window::RecordOf(m_hWnd)->Native().GetRect().TopLeft();
    MoveWindow({place, CSize(tabs.right + margin.cx, corner.y + size.cy + margin.cy)});
}

// A page whose set-up fails has no controls again, and can be tried anew.
void CPropertySheet::SetUp(CPropertyPage& page, const window::FoundDialog& found) {
    page.m_isSetUp = true;
    try {
        page.m_unit = window::MakeControls(window::RecordOf(&page), *found.dialog, *found.module);
        page.OnInitDialog();
    } catch (...) {
        while (page.m_hWnd != nullptr && !window::RecordOf(page.m_hWnd)->Children().empty())
            window::RecordOf(page.m_hWnd)->Children().back()->Destroy();
        page.m_isSetUp = false;
        throw;
    }
}

// FALSE when the page refuses.
bool CPropertySheet::Activate(int index) {
    CPropertyPage& page = *GetPage(index);
    if (!page.m_isSetUp)
        SetUp(page, m_templates[static_cast<std::size_t>(index)]);
    return page.m_hWnd != nullptr && page.OnSetActive();
}

// The focus goes where it will stay before the former page, which may have it, is hidden.
void CPropertySheet::ShowOnly(int index, bool byKeys) {
    CPropertyPage* const former = GetPage(std::exchange(m_active, index));
    Tabs().Select(index);
    GetPage(index)->ShowWindow(TRUE);
    if (window::FocusWindow() != window::RecordOf(m_hWnd)->Child(kTabsId))
        GetPage(index)->FocusFirstControl(byKeys);
    if (former != nullptr)
        former->ShowWindow(FALSE);
}

BOOL CPropertySheet::SetActivePage(int index) {
    return TurnTo(index, false);
}

BOOL CPropertySheet::TurnTo(int index, bool byKeys) {
    CPropertyPage* const former = GetPage(m_active);
    if (m_hWnd == nullptr || GetPage(index) == nullptr || former == nullptr)
        return FALSE;
    if (index == m_active)
        return TRUE;
    const bool wasOnTabs = window::FocusWindow() == window::RecordOf(m_hWnd)->Child(kTabsId);
    if (!former->OnKillActive() || m_hWnd == nullptr)
        return FALSE;
    if (!Activate(index)) {
        former->OnSetActive();
        return FALSE;
    }
    if (wasOnTabs)
        window::SetFocusTo(window::RecordOf(m_hWnd)->Child(kTabsId));
    ShowOnly(index, byKeys);
    return TRUE;
}

// When the page does not change after all, not even by an error, its tab comes back.
void CPropertySheet::OnTabChosen() {
    struct TabOfPage {
        const CPropertySheet& sheet;
        ~TabOfPage() {
            if (sheet.m_hWnd != nullptr)
                sheet.Tabs().Select(sheet.m_active);
        }
    } const scope{*this};
    TurnTo(Tabs().Selection(), !window::RequireToolkit().IsKeyDown(VK_LBUTTON));
}

void CPropertySheet::OnOK() {
    window::WindowRecord* const button = m_hWnd != nullptr ? window::RecordOf(m_hWnd)->Child(IDOK) : nullptr;
    if (button != nullptr && !button->Native().IsEnabled())
        return;
    if (CPropertyPage* const active = GetPage(m_active); active != nullptr && !active->OnKillActive())
        return;
    for (CPropertyPage* const page : m_pages)
        if (page->m_isSetUp)
            page->OnOK();
    EndDialog(IDOK);
}

}  // namespace kortavin
