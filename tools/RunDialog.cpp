#include "tools/RunDialog.h"

#include "edit/FileUtil.h"
#include "framework/FileDialog.h"
#include "resources/KmIds.h"

namespace
{
const int kCommandLimit = 128;
}

bool CRunDialog::OnInitDialog()
{
    CString dir, line = m_run.m_strCommand;
    GetCurrentDir(dir);
    SetDlgItemText(IDC_RUN_DIR, dir);
    if (!m_run.m_strArguments.IsEmpty()) {
        line += ' ';
        line += m_run.m_strArguments;
    }
    ::SendMessageA(GetDlgItem(IDC_RUN_COMMAND), EM_LIMITTEXT, kCommandLimit, 0);
    SetDlgItemText(IDC_RUN_COMMAND, line);
    CheckDlgButton(IDC_RUN_MINIMIZED, m_run.m_bMinimized != 0);
    ::EnableWindow(GetDlgItem(IDOK), !line.IsEmpty());
    CentreOver(m_parent);
    return true;
}

bool CRunDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    if (id == IDC_RUN_COMMAND && HIWORD(wParam) == EN_CHANGE)
        ::EnableWindow(GetDlgItem(IDOK), ::GetWindowTextLengthA(GetDlgItem(IDC_RUN_COMMAND)) > 0);
    if (id != IDC_RUN_BROWSE)
        return CModalDialog::OnCommand(wParam, lParam);
    CFileDialog dialog(true, "EXE", nullptr, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
    dialog.m_ofn.hwndOwner = m_hWnd;
    CString filter;
    filter.LoadString(IDS_FILTER_PROGRAMS);
    dialog.SetFilter(filter);
    if (dialog.DoModal() == IDOK)
        SetDlgItemText(IDC_RUN_COMMAND, dialog.GetPathName());
    ::SetFocus(GetDlgItem(IDC_RUN_COMMAND));
    return true;
}

// The program is what stands before the first blank; what follows, less
// its leading blanks, are the arguments.
void CRunDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)))
        return;
    CString line;
    GetDlgItemText(IDC_RUN_COMMAND, line);
    const std::string text = line.str();
    const size_t blank = text.find(' ');
    m_run.m_strCommand = text.substr(0, blank).c_str();
    m_run.m_strArguments.Empty();
    if (blank != std::string::npos) {
        const size_t start = text.find_first_not_of(' ', blank);
        if (start != std::string::npos)
            m_run.m_strArguments = text.substr(start).c_str();
    }
    m_run.m_bMinimized = IsDlgButtonChecked(IDC_RUN_MINIMIZED);
    EndDialog(IDOK);
}
