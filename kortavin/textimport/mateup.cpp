#include "kortavin/textimport/mateup.h"

#include "kortavin/textimport/mateupdlg.h"

namespace kortavin {

BOOL CMateup::Mateup(CString& strColumns, CString& strSamples, CString& strTargets, CWordArray& matches) {
    CMateupDlg dialog;
    dialog.m_Columns = strColumns;
    dialog.m_Samples = strSamples;
    dialog.m_Targets = strTargets;
    if (dialog.DoModal() != IDOK)
        return FALSE;
    matches = dialog.m_Matches;
    return TRUE;
}

}  // namespace kortavin
