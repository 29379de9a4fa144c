#include "kortavin/window/dialog.h"

#include <algorithm>

#include "kortavin/base/texts.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

namespace {

bool TakesFocus(window::WindowRecord* control) {
    return (control->Style() & WS_TABSTOP) != 0 && (control->Style() & WS_VISIBLE) != 0 &&
           control->Native().IsEnabled();
}

// Takes a dialog's window away, however its run ends, and gives the focus back to where it was.
class WindowOfRun {
  public:
    explicit WindowOfRun(const CWnd& dialog) : m_dialog(dialog), m_formerFocus(window::FocusWindow()) {}
    ~WindowOfRun() {
        if (m_dialog.m_hWnd != nullptr)
            window::RecordOf(m_dialog.m_hWnd)->Destroy();
        if (window::IsWindow(m_formerFocus))
            window::Guarded([this] { window::SetFocusTo(m_formerFocus); });
    }
    WindowOfRun(const WindowOfRun&) = delete;
    WindowOfRun& operator=(const WindowOfRun&) = delete;

  private:
    const CWnd& m_dialog;
    window::WindowRecord* m_formerFocus;
};

}  // namespace

CDialog::CDialog(unsigned templateId, CWnd* parent) : m_templateId(templateId), m_parent(parent) {}
CDialog::~CDialog() = default;

void CDialog::InitModalIndirect(const window::DialogTemplate& dialog, CWnd* parent,
                                const window::ResourceModule* module) {
    m_template = &dialog;
    m_module = module;
    m_parent = parent;
}

const window::MessageMap* CDialog::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {window::OnCommand<IDOK, &CDialog::OnOK>(),
                                                        window::OnCommand<IDCANCEL, &CDialog::OnCancel>(),
                                                        window::OnMessage<WM_CLOSE, &CDialog::OnClose>()};
    static const window::MessageMap map{CWnd::GetMessageMap(), kEntries};
    return &map;
}

window::FoundDialog CDialog::FindTemplate() const {
    if (m_template != nullptr)
        return {m_template, m_module != nullptr ? m_module : window::CurrentSource()};
    if (const auto found = window::FindDialog(m_templateId))
        return *found;
    CString text;
    text.Format(Text(base::TextId::NoSuchDialog), m_templateId);
    throw CResourceException(text);
}

int CDialog::DoModal() {
    if (m_hWnd != nullptr)
        return -1;
    const auto found = FindTemplate();
    m_result.reset();
    const WindowOfRun scope(*this);
    Open(found);
    return RunToEnd();
}

void CDialog::Open(const window::FoundDialog& found) {
    Attach(window::MakeDialogWindow(found, window::RecordOf(m_parent)));
    m_unit = window::MakeControls(window::RecordOf(m_hWnd), *found.dialog, *found.module);
    if (OnInitDialog() && m_hWnd != nullptr)
        FocusFirstControl();
}

// A dialog that its own set-up ended is never shown.
int CDialog::RunToEnd() {
    if (m_hWnd != nullptr && !m_result)
        window::RunModal(window::RecordOf(m_hWnd));
    return m_result.value_or(IDCANCEL);
}

void CDialog::FocusFirstControl(bool byUser) {
    const auto& controls = window::RecordOf(m_hWnd)->Children();
    const auto first = std::ranges::find_if(controls, TakesFocus);
    window::SetFocusTo(first != controls.end() ? *first : window::RecordOf(m_hWnd), byUser);
}

void CDialog::EndDialog(int result) {
    m_result = result;
    if (m_hWnd != nullptr)
        window::RequireToolkit().EndModal(window::RecordOf(m_hWnd)->Native());
}

void CDialog::MapDialogRect(CRect* rect) const {
    *rect = window::PixelsOf(*rect, m_unit);
}

BOOL CDialog::OnInitDialog() {
    if (UpdateData(FALSE))
        return TRUE;
    EndDialog(-1);
    return FALSE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

// The close box is another way to cancel, for derived classes too.
void CDialog::OnClose() {
    SendMessage(WM_COMMAND, MakeWParam(IDCANCEL, BN_CLICKED));
}

}  // namespace kortavin
