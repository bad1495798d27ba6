#include "tools/ToolArgsDialog.h"

#include "app/KmApp.h"
#include "resources/KmIds.h"

namespace
{
const DWORD kHelpToolArgs = 62;
}

IMPLEMENT_DYNAMIC(CToolArgsDialog, CModalDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CToolArgsDialog, CModalDialog)
    ON_COMMAND(IDHELP, OnHelp)
END_MESSAGE_MAP()
// clang-format on

CToolArgsDialog::CToolArgsDialog(HWND parent, const char* command, const char* arguments)
    : CModalDialog(IDD_TOOLARGS, parent), m_strArguments(arguments), m_strCommand(command)
{
}

bool CToolArgsDialog::OnInitDialog()
{
    SetWindowText(m_strCommand);
    SetDlgItemText(IDC_TOOLARGS_TEXT, m_strArguments);
    return true;
}

void CToolArgsDialog::OnOK()
{
    GetDlgItemText(IDC_TOOLARGS_TEXT, m_strArguments);
    EndDialog(IDOK);
}

void CToolArgsDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpToolArgs);
}
