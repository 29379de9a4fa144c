#include "kortavin/window/filedialog.h"

#include "kortavin/window/windowrecord.h"

namespace kortavin {

namespace {

std::vector<window::FileRequest::Filter> SplitFilter(const CString& filter) {
    std::vector<window::FileRequest::Filter> filters;
    int start = 0;
    while (true) {
        const int nameEnd = filter.Find('|', start);
        const int patternEnd = nameEnd > start ? filter.Find('|', nameEnd + 1) : -1;
        if (patternEnd < 0)
            return filters;
        filters.push_back(
            {filter.Mid(start, nameEnd - start), filter.Mid(nameEnd + 1, patternEnd - nameEnd - 1)});
        start = patternEnd + 1;
    }
}

}  // namespace

CFileDialog::CFileDialog(BOOL forOpening, const char* defaultExtension, const char* initialName, DWORD flags,
                         const char* filter, CWnd* parent)
    : m_request(std::make_unique<window::FileRequest>()), m_parent(parent) {
    m_request->forOpening = forOpening != FALSE;
    m_request->confirmReplacing = (flags & OFN_OVERWRITEPROMPT) != 0;
    m_request->filters = SplitFilter(filter);
    m_request->defaultExtension = defaultExtension;
    m_request->initialName = initialName;
}

CFileDialog::~CFileDialog() = default;

int CFileDialog::DoModal() {
    window::WindowRecord* const parent = window::RecordOf(m_parent);
    m_request->parent = parent != nullptr ? &parent->Native() : nullptr;
    const auto chosen = window::RequireToolkit().ChooseFile(*m_request);
    if (!chosen)
        return IDCANCEL;
    m_path = *chosen;
    return IDOK;
}

}  // namespace kortavin
