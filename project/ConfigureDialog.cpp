#include "project/ConfigureDialog.h"

#include "app/IniStore.h"
#include "app/KmApp.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

#include <cstring>
#include <vector>

namespace
{
const DWORD kHelpConfigure = 40;
const int kTargetLimit = 20;
const int kEnvironments = 5;
const int kLineMargin = 4; // pixels beside the text of a line
} // namespace

IMPLEMENT_DYNAMIC(CConfigureDialog, CModalDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CConfigureDialog, CModalDialog)
    ON_COMMAND(IDC_CONFIG_SET, OnSet)
    ON_COMMAND(IDHELP, OnHelp)
    ON_CONTROL(CBN_SELCHANGE, IDC_CONFIG_ENV, OnEnvironment)
    ON_CONTROL(LBN_SELCHANGE, IDC_CONFIG_LIST, OnLineChosen)
    ON_CONTROL(EN_CHANGE, IDC_CONFIG_OPTION, OnOptionChange)
    ON_CONTROL(EN_CHANGE, IDC_CONFIG_SETTING, OnSettingChange)
END_MESSAGE_MAP()
// clang-format on

CConfigureDialog::CConfigureDialog(HWND parent) : CModalDialog(IDD_CONFIGURE, parent) {}

bool CConfigureDialog::OnInitDialog()
{
    SetDlgItemText(IDC_CONFIG_PATH, theApp.m_strProjectDir);
    ::SendMessageA(GetDlgItem(IDC_CONFIG_TARGET), EM_LIMITTEXT, kTargetLimit, 0);
    CString value;
    theApp.GetProjectSetting(IDS_KEY_TARGET, value);
    SetDlgItemText(IDC_CONFIG_TARGET, value);
    theApp.GetProjectSetting(IDS_KEY_TESTARGS, value);
    SetDlgItemText(IDC_CONFIG_ARGS, value);
    CheckDlgButton(IDC_CONFIG_DEBUG, theApp.m_bDebugBuild != 0);
    HWND environments = GetDlgItem(IDC_CONFIG_ENV);
    for (const CString& name : theApp.m_strEnvironment)
        ::SendMessageA(environments, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    ::SendMessageA(environments, CB_SETCURSEL,
                   static_cast<WPARAM>(theApp.m_nEnvironment - SECTION_ENVIRONMENT), 0);
    FillList();
    CentreOver(m_parent);
    return true;
}

// The effective values: a template's looks just like a stored one.
void CConfigureDialog::FillList()
{
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
    CString key, value;
    for (unsigned id = IDS_ENV_FIRST; id <= IDS_ENV_LAST; ++id) {
        key.LoadString(id);
        theApp.GetEnvironmentSetting(id, value);
        key += '=';
        key += value;
        ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(key.c_str()));
        Widen(key);
    }
    ::SendMessageA(list, LB_SETCURSEL, 0, 0);
    OnLineChosen();
}

// The list scrolls across as far as its widest line reaches.
void CConfigureDialog::Widen(const CString& line)
{
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    HDC dc = ::GetDC(list);
    if (!dc)
        return;
    HGDIOBJ old =
        ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageA(list, WM_GETFONT, 0, 0)));
    SIZE size = {0, 0};
    ::GetTextExtentPoint32A(dc, line, line.GetLength(), &size);
    ::SelectObject(dc, old);
    ::ReleaseDC(list, dc);
    const LRESULT extent = ::SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0);
    if (size.cx + kLineMargin > extent)
        ::SendMessageA(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(size.cx + kLineMargin), 0);
}

CString CConfigureDialog::LineAt(int index) const
{
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    const LRESULT length = ::SendMessageA(list, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
    std::vector<char> line(length < 0 ? 1 : static_cast<size_t>(length) + 1, '\0');
    ::SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(index),
                   reinterpret_cast<LPARAM>(line.data()));
    return CString(line.data());
}

// The case counts, as it does for the keys in the store.
int CConfigureDialog::FindLine(const CString& prefix) const
{
    const int count =
        static_cast<int>(::SendMessageA(GetDlgItem(IDC_CONFIG_LIST), LB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i)
        if (strncmp(LineAt(i), prefix, static_cast<size_t>(prefix.GetLength())) == 0)
            return i;
    return LB_ERR;
}

void CConfigureDialog::EnableSet(bool enable)
{
    ::EnableWindow(GetDlgItem(IDC_CONFIG_SET), enable);
}

// The choice is the project's at once; closing the dialog keeps it.
void CConfigureDialog::OnEnvironment()
{
    const LRESULT index = ::SendMessageA(GetDlgItem(IDC_CONFIG_ENV), CB_GETCURSEL, 0, 0);
    if (index < 0 || index >= kEnvironments)
        return;
    theApp.m_nEnvironment = SECTION_ENVIRONMENT + static_cast<int>(index);
    FillList();
}

void CConfigureDialog::OnLineChosen()
{
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    const LRESULT index = ::SendMessageA(list, LB_GETCURSEL, 0, 0);
    CString option, setting;
    if (index != LB_ERR) {
        const CString text = LineAt(static_cast<int>(index));
        const int equals = text.Find('=');
        option = equals < 0 ? text : text.Left(equals);
        setting = equals < 0 ? CString() : text.Mid(equals + 1);
    }
    SetDlgItemText(IDC_CONFIG_OPTION, option);
    SetDlgItemText(IDC_CONFIG_SETTING, setting);
    if (index != LB_ERR)
        ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    EnableSet(false);
}

// A key with "=" in it could never be read back, so it is refused.
void CConfigureDialog::OnOptionChange()
{
    CString option;
    GetDlgItemText(IDC_CONFIG_OPTION, option);
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    if (option.Find('=') >= 0) {
        ::MessageBeep(MB_ICONHAND);
        KmMessageBox(this, MB_ICONHAND, IDS_NOTALLOWEDHERE, "=");
        ::SetFocus(GetDlgItem(IDC_CONFIG_OPTION));
        EnableSet(false);
        return;
    }
    const int line = option.IsEmpty() ? LB_ERR : FindLine(option + "=");
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(line), 0);
    EnableSet(!option.IsEmpty());
}

void CConfigureDialog::OnSettingChange()
{
    EnableSet(::GetWindowTextLengthA(GetDlgItem(IDC_CONFIG_OPTION)) > 0);
}

// The pair goes to the store at once, its line in place of the old one or
// at the end: a key of the user's own shows until the list is filled again.
void CConfigureDialog::OnSet()
{
    CString option, setting;
    GetDlgItemText(IDC_CONFIG_OPTION, option);
    GetDlgItemText(IDC_CONFIG_SETTING, setting);
    if (option.IsEmpty() || option.Find('=') >= 0)
        return;
    theApp.SetEnvironmentSetting(option, setting);
    HWND list = GetDlgItem(IDC_CONFIG_LIST);
    const CString line = option + "=" + setting;
    LRESULT index = FindLine(option + "=");
    if (index != LB_ERR) {
        ::SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(index), 0);
        ::SendMessageA(list, LB_INSERTSTRING, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(line.c_str()));
    } else {
        index = ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    Widen(line);
}

// Escape leaves the target, the arguments and the switch as they were;
// the environment and what Set stored stay in any case.
void CConfigureDialog::OnOK()
{
    CString value;
    GetDlgItemText(IDC_CONFIG_TARGET, value);
    theApp.SetProjectSetting(IDS_KEY_TARGET, value);
    GetDlgItemText(IDC_CONFIG_ARGS, value);
    theApp.SetProjectSetting(IDS_KEY_TESTARGS, value);
    theApp.m_bDebugBuild = IsDlgButtonChecked(IDC_CONFIG_DEBUG);
    EndDialog(IDOK);
}

void CConfigureDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpConfigure);
}
