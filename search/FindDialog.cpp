#include "search/FindDialog.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "search/SearchRequest.h"

#include <dlgs.h>

IMPLEMENT_DYNAMIC(CKmFindReplaceDialog, CFindReplaceDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CKmFindReplaceDialog, CFindReplaceDialog)
    ON_CONTROL(EN_CHANGE, edt1, OnFindWhatChange)
    ON_COMMAND(pshHelp, OnHelp)
END_MESSAGE_MAP()
// clang-format on

CKmFindReplaceDialog* g_findDialog = nullptr;

namespace
{

const UINT kHelpFind = 1;
const UINT kHelpReplace = 2;

} // namespace

CKmFindReplaceDialog::CKmFindReplaceDialog(bool findOnly, bool scopeChecked, POINT origin)
    : m_ptOrigin(origin), m_bFindOnly(findOnly), m_bScopeChecked(scopeChecked)
{
}

bool CKmFindReplaceDialog::Open(bool findOnly)
{
    SearchRequest& request = g_searchRequest;
    CKmFrame* frame = theApp.Frame();
    if (!frame)
        return false;
    if (CKmChild* child = frame->m_pActiveChild)
        if (child->GetFindSeed(request.m_strFind))
            request.m_bRecompile = 1;
    DWORD flags = FR_DOWN | FR_SHOWHELP;
    if (request.m_bMatchCase)
        flags |= FR_MATCHCASE;
    if (request.m_bWholeWord)
        flags |= FR_WHOLEWORD;
    CKmFindReplaceDialog* dialog = nullptr;
    try {
        dialog =
            new CKmFindReplaceDialog(findOnly, request.m_bSelectionOnly != 0, request.m_ptDialog);
        g_findDialog = dialog;
        if (dialog->Create(findOnly, request.m_strFind, request.m_strReplace, flags, frame->m_hWnd,
                           findOnly ? 0 : IDD_REPLACE))
            return true;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    delete dialog;
    g_findDialog = nullptr;
    return false;
}

bool CKmFindReplaceDialog::OnInitDialog()
{
    RECT rect;
    ::GetWindowRect(m_hWnd, &rect);
    POINT place = m_ptOrigin;
    if (place.x == -1 && place.y == -1) {
        // The right edge of the frame's client part, clear of a scroll bar.
        HWND area = theApp.Frame() ? theApp.Frame()->m_hWndMDIClient : nullptr;
        RECT client = {};
        if (area) {
            ::GetClientRect(area, &client);
            ::MapWindowPoints(area, nullptr, reinterpret_cast<POINT*>(&client), 2);
        }
        place.x = client.right - ::GetSystemMetrics(SM_CXVSCROLL);
        place.y = client.top;
    }
    ::SetWindowPos(m_hWnd, nullptr, place.x - (rect.right - rect.left), place.y, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (!m_bFindOnly)
        CheckDlgButton(IDC_SCOPE, m_bScopeChecked != 0);
    return true;
}

bool CKmFindReplaceDialog::TakeChanged()
{
    bool changed = m_bChanged != 0;
    m_bChanged = 0;
    return changed;
}

void CKmFindReplaceDialog::SetFindText(const char* text)
{
    SetDlgItemText(edt1, text);
    m_bChanged = 1;
}

bool CKmFindReplaceDialog::ScopeChecked() const
{
    return !m_bFindOnly && IsDlgButtonChecked(IDC_SCOPE);
}

// The platform's dialog still sees the change, to enable its buttons.
void CKmFindReplaceDialog::OnFindWhatChange()
{
    m_bChanged = 1;
    Default();
}

void CKmFindReplaceDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT,
               m_bFindOnly ? kHelpFind : kHelpReplace);
}
