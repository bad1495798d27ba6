#include "tools/ToolsDialog.h"

#include "app/KmApp.h"
#include "edit/Messages.h"
#include "framework/FileDialog.h"
#include "resources/KmIds.h"

namespace
{

const DWORD kHelpTools = 61;
const int kFields[] = {IDC_TOOLS_COMMAND, IDC_TOOLS_MENUTEXT, IDC_TOOLS_ARGUMENTS,
                       IDC_TOOLS_INITDIR, IDC_TOOLS_PROMPT,   IDC_TOOLS_MINIMIZED};

// The program's name without its folder and extension, first letter upper.
CString MenuTextFor(const CString& command)
{
    const std::string path = command.str();
    std::string name = path.substr(path.rfind('\\') + 1);
    name = name.substr(0, name.rfind('.'));
    if (name.empty())
        name = path;
    if (!name.empty())
        ::CharUpperBuffA(&name[0], 1);
    return name.c_str();
}

} // namespace

IMPLEMENT_DYNAMIC(CToolsDialog, CModalDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CToolsDialog, CModalDialog)
    ON_CONTROL(LBN_SELCHANGE, IDC_TOOLS_LIST, OnSelect)
    ON_CONTROL(EN_KILLFOCUS, IDC_TOOLS_MENUTEXT, OnMenuTextLeft)
    ON_COMMAND(IDC_TOOLS_NEW, OnNew)
    ON_COMMAND(IDC_TOOLS_DELETE, OnDelete)
    ON_COMMAND(IDC_TOOLS_UP, OnMoveUp)
    ON_COMMAND(IDC_TOOLS_DOWN, OnMoveDown)
    ON_COMMAND(IDHELP, OnHelp)
END_MESSAGE_MAP()
// clang-format on

CToolsDialog::CToolsDialog(HWND parent, CToolList* tools)
    : CModalDialog(IDD_TOOLS, parent), m_pTools(tools)
{
}

bool CToolsDialog::OnInitDialog()
{
    for (int i = 0; i < m_pTools->GetCount(); ++i)
        ::SendMessageA(
            GetDlgItem(IDC_TOOLS_LIST), LB_ADDSTRING, 0,
            reinterpret_cast<LPARAM>(static_cast<const char*>(m_pTools->GetAt(i).m_strMenuText)));
    Load(m_pTools->GetCount() > 0 ? 0 : -1);
    CentreOver(m_parent);
    return true;
}

void CToolsDialog::ReadFields()
{
    GetDlgItemText(IDC_TOOLS_COMMAND, m_edit.m_strCommand);
    GetDlgItemText(IDC_TOOLS_MENUTEXT, m_edit.m_strMenuText);
    GetDlgItemText(IDC_TOOLS_ARGUMENTS, m_edit.m_strArguments);
    GetDlgItemText(IDC_TOOLS_INITDIR, m_edit.m_strInitDir);
    m_edit.m_bPrompt = IsDlgButtonChecked(IDC_TOOLS_PROMPT);
    m_edit.m_bMinimized = IsDlgButtonChecked(IDC_TOOLS_MINIMIZED);
}

void CToolsDialog::ShowFields()
{
    SetDlgItemText(IDC_TOOLS_COMMAND, m_edit.m_strCommand);
    SetDlgItemText(IDC_TOOLS_MENUTEXT, m_edit.m_strMenuText);
    SetDlgItemText(IDC_TOOLS_ARGUMENTS, m_edit.m_strArguments);
    SetDlgItemText(IDC_TOOLS_INITDIR, m_edit.m_strInitDir);
    CheckDlgButton(IDC_TOOLS_PROMPT, m_edit.m_bPrompt != 0);
    CheckDlgButton(IDC_TOOLS_MINIMIZED, m_edit.m_bMinimized != 0);
}

// The user may keep a command that isn't there, on OK to the question.
bool CToolsDialog::Validate()
{
    OFSTRUCT found = {};
    if (m_edit.m_strCommand.IsEmpty() ||
        ::OpenFile(m_edit.m_strCommand, &found, OF_EXIST) == HFILE_ERROR) {
        ::MessageBeep(MB_ICONQUESTION);
        if (KmMessageBox(this, MB_OKCANCEL | MB_ICONQUESTION, IDS_FILEERROR,
                         static_cast<const char*>(m_edit.m_strCommand), "") != IDOK) {
            ::SetFocus(GetDlgItem(IDC_TOOLS_COMMAND));
            return false;
        }
    }
    if (m_edit.m_strMenuText.IsEmpty()) {
        ::MessageBeep(MB_ICONEXCLAMATION);
        ::SetFocus(GetDlgItem(IDC_TOOLS_MENUTEXT));
        return false;
    }
    return true;
}

bool CToolsDialog::StoreCurrent()
{
    if (!Validate())
        return false;
    m_pTools->SetAt(m_nCurrent, m_edit);
    return true;
}

void CToolsDialog::Load(int index)
{
    m_nCurrent = index;
    m_edit = index >= 0 ? m_pTools->GetAt(index) : CToolEntry();
    ShowFields();
    ::SendMessageA(GetDlgItem(IDC_TOOLS_LIST), LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    EnableControls();
}

void CToolsDialog::EnableControls()
{
    const int count = m_pTools->GetCount();
    for (int field : kFields)
        ::EnableWindow(GetDlgItem(field), count > 0);
    ::EnableWindow(GetDlgItem(IDC_TOOLS_NEW), count < CToolList::kMaxTools);
    ::EnableWindow(GetDlgItem(IDC_TOOLS_DELETE), m_nCurrent >= 0);
    ::EnableWindow(GetDlgItem(IDC_TOOLS_UP), m_nCurrent >= 1);
    ::EnableWindow(GetDlgItem(IDC_TOOLS_DOWN), m_nCurrent >= 0 && m_nCurrent < count - 1);
}

void CToolsDialog::OnSelect()
{
    const int row =
        static_cast<int>(::SendMessageA(GetDlgItem(IDC_TOOLS_LIST), LB_GETCURSEL, 0, 0));
    if (row == m_nCurrent)
        return;
    ReadFields();
    if (m_nCurrent >= 0 && !StoreCurrent()) {
        ::SendMessageA(GetDlgItem(IDC_TOOLS_LIST), LB_SETCURSEL, static_cast<WPARAM>(m_nCurrent),
                       0);
        return;
    }
    Load(row);
}

void CToolsDialog::OnNew()
{
    ReadFields();
    if (m_nCurrent >= 0 && !StoreCurrent())
        return;
    CFileDialog dialog(true, "EXE", nullptr, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
    dialog.m_ofn.hwndOwner = m_hWnd;
    CString filter;
    filter.LoadString(IDS_FILTER_PROGRAMS);
    dialog.SetFilter(filter);
    if (dialog.DoModal() != IDOK)
        return;
    m_edit = CToolEntry();
    m_edit.m_strCommand = dialog.GetPathName();
    m_edit.m_strCommand.MakeLower();
    m_edit.m_strMenuText = MenuTextFor(m_edit.m_strCommand);
    const int index = m_pTools->Add(m_edit);
    if (index < 0)
        return;
    ::SendMessageA(GetDlgItem(IDC_TOOLS_LIST), LB_ADDSTRING, 0,
                   reinterpret_cast<LPARAM>(static_cast<const char*>(m_edit.m_strMenuText)));
    Load(index);
    ::SetFocus(GetDlgItem(IDC_TOOLS_MENUTEXT));
}

void CToolsDialog::OnDelete()
{
    if (m_nCurrent < 0)
        return;
    ::SendMessageA(GetDlgItem(IDC_TOOLS_LIST), LB_DELETESTRING, static_cast<WPARAM>(m_nCurrent), 0);
    m_pTools->RemoveAt(m_nCurrent);
    Load(m_nCurrent < m_pTools->GetCount() ? m_nCurrent : m_pTools->GetCount() - 1);
}

// What the fields hold unstored moves along with the current entry.
void CToolsDialog::Swap(int first)
{
    HWND list = GetDlgItem(IDC_TOOLS_LIST);
    m_pTools->SwapWithNext(first);
    ::SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(first), 0);
    ::SendMessageA(list, LB_INSERTSTRING, static_cast<WPARAM>(first + 1),
                   reinterpret_cast<LPARAM>(
                       static_cast<const char*>(m_pTools->GetAt(first + 1).m_strMenuText)));
    m_nCurrent = m_nCurrent == first ? first + 1 : first;
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(m_nCurrent), 0);
    EnableControls();
}

void CToolsDialog::OnMoveUp()
{
    if (m_nCurrent >= 1)
        Swap(m_nCurrent - 1);
}

void CToolsDialog::OnMoveDown()
{
    if (m_nCurrent >= 0 && m_nCurrent < m_pTools->GetCount() - 1)
        Swap(m_nCurrent);
}

void CToolsDialog::OnMenuTextLeft()
{
    if (m_nCurrent < 0)
        return;
    HWND list = GetDlgItem(IDC_TOOLS_LIST);
    CString text;
    GetDlgItemText(IDC_TOOLS_MENUTEXT, text);
    ::SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(m_nCurrent), 0);
    ::SendMessageA(list, LB_INSERTSTRING, static_cast<WPARAM>(m_nCurrent),
                   reinterpret_cast<LPARAM>(static_cast<const char*>(text)));
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(m_nCurrent), 0);
}

void CToolsDialog::OnOK()
{
    ReadFields();
    if (m_nCurrent >= 0 && !StoreCurrent())
        return;
    EndDialog(IDOK);
}

void CToolsDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpTools);
}
