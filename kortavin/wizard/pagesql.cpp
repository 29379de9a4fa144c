#include "kortavin/wizard/pagesql.h"

#include <optional>

#include "kortavin/base/replacement.h"
#include "kortavin/base/texts.h"
#include "kortavin/grid/heading.h"
#include "kortavin/query/savedquery.h"
#include "kortavin/window/filedialog.h"

namespace kortavin {

using base::TextId;

namespace {

constexpr int kPreviewRows = 10;
constexpr DWORD kStatementTimeout = 999;  // seconds

// Nothing when the user cancels.
std::optional<CString> ChooseFile(BOOL forOpening, CWnd* parent) {
    CFileDialog chooser(forOpening, "", "", 0, Text(TextId::QueryFileFilter), parent);
    if (chooser.DoModal() != IDOK)
        return std::nullopt;
    return chooser.GetPathName();
}

// Nothing when it fails, after that was shown.
std::optional<CString> Load(const CString& path) {
    try {
        return query::ReadSavedQuery(path);
    } catch (const CFileException&) {
        AfxMessageBox(Text(TextId::OpenFileFailed));
    } catch (const query::SavedQueryFormatError& error) {
        AfxMessageBox(error.GetErrorMessage());
    }
    return std::nullopt;
}

// A file that cannot be written at all is told from one that cannot be finished; a former one is then as it
// was.
void Save(const CString& path, const CString& sql) {
    std::optional<base::FileReplacement> replacement;
    try {
        replacement.emplace(path);
        query::WriteSavedQuery(replacement->File(), sql);
        replacement->Commit();
    } catch (const CFileException&) {
        AfxMessageBox(Text(replacement ? TextId::SaveFileFailed : TextId::OpenFileFailed));
    }
}

}  // namespace

CPageSql::CPageSql() : CWizardPage(resources::kStatementPage) {}
CPageSql::~CPageSql() = default;

const window::MessageMap* CPageSql::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kCheckButton, &CPageSql::OnCheck>(),
        window::OnCommand<resources::kLoadButton, &CPageSql::OnLoad>(),
        window::OnCommand<resources::kSaveButton, &CPageSql::OnSave>()};
    static const window::MessageMap map{CWizardPage::GetMessageMap(), kEntries};
    return &map;
}

void CPageSql::DoDataExchange(CDataExchange* exchange) {
    CWizardPage::DoDataExchange(exchange);
    DDX_Text(exchange, resources::kStatementEdit, m_strSql);
    DDX_GridCtrl(exchange, resources::kGrid, m_Grid);
}

BOOL CPageSql::OnSetActive() {
    if (m_pSheet != nullptr) {
        m_strSql = m_pSheet->BuildSql();
        UpdateData(FALSE);
        m_pSheet->EnableOkButton(TRUE);
    }
    return CPropertyPage::OnSetActive();
}

void CPageSql::OnOK() {
    UpdateData(TRUE);
    if (m_pSheet != nullptr)
        m_pSheet->m_strSql = m_strSql;
    CWizardPage::OnOK();
}

void CPageSql::OnCheck() {
    UpdateData(TRUE);
    if (m_pSheet != nullptr && m_pSheet->m_pDatabase != nullptr && !m_strSql.IsEmpty())
        RunCheck(m_strSql, *m_pSheet->m_pDatabase);
}

BOOL CPageSql::RunCheck(const CString& text, CGeoDatabase& database) {
    _CRecordsetEx recordset(&database);
    try {
        database.SetQueryTimeout(kStatementTimeout);
        recordset.OpenSql(text);
    } catch (const CDBException&) {
        return FALSE;
    } catch (const CMemoryException&) {
        return FALSE;
    }
    return recordset.IsOpen() && FillPreviewRows(recordset);
}

// The first label is the number of rows that the grid had before: after the first check they so go on from
// where they ended.
BOOL CPageSql::FillPreviewRows(_CRecordsetEx& recordset) {
    BOOL isWhole = TRUE;
    try {
        const int firstLabel = m_Grid.GetRowCount();
        if (recordset.GetODBCFieldCount() > 0) {
            FillPreviewHeader(recordset);
            AppendRows(recordset, firstLabel);
        }
    } catch (...) {
        isWhole = FALSE;
    }
    Invalidate();
    m_Grid.Invalidate();
    recordset.Close();
    return isWhole;
}

void CPageSql::AppendRows(_CRecordsetEx& recordset, int firstLabel) {
    const int height = m_Grid.GetRowHeight(0);
    for (int i = 0; i < kPreviewRows && !recordset.IsEOF(); ++i) {
        CString label;
        label.Format("%d", firstLabel + i);
        const int row = m_Grid.InsertRow(label);
        m_Grid.SetRowHeight(row, height);
        for (short column = 0; column < recordset.GetODBCFieldCount(); ++column) {
            CString value;
            recordset.ReadFieldText(column, value);
            m_Grid.SetItemText(row, column + 1, value);
        }
        recordset.MoveNext();
    }
}

void CPageSql::FillPreviewHeader(const _CRecordsetEx& recordset) {
    m_Grid.DeleteAllItems();
    m_Grid.SetRowCount(1);
    m_Grid.SetColumnCount(recordset.GetODBCFieldCount() + 1);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetFixedColumnCount(1);
    for (short column = 0; column < recordset.GetODBCFieldCount(); ++column) {
        CODBCFieldInfo info;
        recordset.GetODBCFieldInfo(column, info);
        grid::SetHeading(m_Grid, 0, column + 1, info.m_strName);
    }
}

void CPageSql::OnLoad() {
    const auto path = ChooseFile(TRUE, this);
    if (!path)
        return;
    if (const auto sql = Load(*path)) {
        m_strSql = *sql;
        UpdateData(FALSE);
    }
}

void CPageSql::OnSave() {
    UpdateData(TRUE);
    if (m_strSql.IsEmpty())
        return;
    if (const auto path = ChooseFile(FALSE, this))
        Save(*path, m_strSql);
}

}  // namespace kortavin
