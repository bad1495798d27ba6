#include "framework/Dialog.h"

#include "framework/Exception.h"
#include "framework/WinApp.h"

#include <cstring>

IMPLEMENT_DYNAMIC(CDialog, CWnd)
IMPLEMENT_DYNAMIC(CModalDialog, CDialog)
IMPLEMENT_DYNAMIC(CFindReplaceDialog, CDialog)

bool CDialog::Create(UINT templateId, HWND parent)
{
    return ::CreateDialogParamA(KmGetResourceHandle(), MAKEINTRESOURCEA(templateId), parent,
                                &CDialog::StdDlgProc, reinterpret_cast<LPARAM>(this)) != nullptr;
}

void CDialog::CentreOver(HWND parent)
{
    CenterDialog(m_hWnd, parent);
}

void CenterDialog(HWND dialog, HWND parent)
{
    RECT own, over;
    ::GetWindowRect(dialog, &own);
    ::GetWindowRect(parent, &over);
    int dx = (((over.right - over.left) - (own.right - own.left)) / 2 + 4) & ~7;
    int dy = ((over.bottom - over.top) - (own.bottom - own.top)) / 2;
    if (dx < 0)
        dx = 6;
    if (dy < 0)
        dy = 18;
    ::SetWindowPos(dialog, nullptr, over.left + dx, over.top + dy, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
}

bool CDialog::PreTranslateMessage(MSG* msg)
{
    return ::IsDialogMessageA(m_hWnd, msg) != FALSE;
}

void CDialog::GetDlgItemText(int id, CString& text) const
{
    HWND item = GetDlgItem(id);
    int length = item ? ::GetWindowTextLengthA(item) : 0;
    char* buffer = text.GetBuffer(length + 1);
    buffer[0] = 0;
    if (item)
        ::GetWindowTextA(item, buffer, length + 1);
    text.ReleaseBuffer();
}

LRESULT CDialog::DefWindowProc(UINT, WPARAM, LPARAM)
{
    m_handled = false;
    return 0;
}

INT_PTR CDialog::DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                            CDialog* (*init)(LPARAM))
{
    CDialog* dialog = static_cast<CDialog*>(FromHandle(hwnd));
    if (!dialog && message == WM_INITDIALOG) {
        dialog = init(lParam);
        if (dialog)
            dialog->Attach(hwnd);
    }
    if (!dialog)
        return FALSE;
    try {
        if (message == WM_INITDIALOG)
            return dialog->OnInitDialog();
        if (message == WM_NCDESTROY) { // the object may be gone afterwards
            dialog->Dispatch(message, wParam, lParam);
            return FALSE;
        }
        const bool outer = dialog->m_handled;
        dialog->m_handled = true;
        LRESULT result = dialog->Dispatch(message, wParam, lParam);
        const bool handled = dialog->m_handled;
        dialog->m_handled = outer;
        if (!handled)
            return FALSE;
        ::SetWindowLongPtrA(hwnd, DWLP_MSGRESULT, result);
        return TRUE;
    } catch (...) {
        KmReportStrayException(message);
    }
    return FALSE;
}

INT_PTR CALLBACK CDialog::StdDlgProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DialogProc(hwnd, message, wParam, lParam,
                      [](LPARAM init) { return reinterpret_cast<CDialog*>(init); });
}

INT_PTR CModalDialog::DoModal()
{
    return ::DialogBoxParamA(KmGetResourceHandle(), MAKEINTRESOURCEA(m_templateId), m_parent,
                             &CDialog::StdDlgProc, reinterpret_cast<LPARAM>(this));
}

bool CModalDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    switch (LOWORD(wParam)) {
    case IDOK:
        OnOK();
        return true;
    case IDCANCEL:
        OnCancel();
        return true;
    default:
        return CDialog::OnCommand(wParam, lParam);
    }
}

CFindReplaceDialog::CFindReplaceDialog() : m_fr() {}

bool CFindReplaceDialog::Create(bool findOnly, const char* findWhat, const char* replaceWith,
                                DWORD flags, HWND owner, UINT templateId)
{
    lstrcpynA(m_findWhat, findWhat ? findWhat : "", sizeof m_findWhat);
    lstrcpynA(m_replaceWith, replaceWith ? replaceWith : "", sizeof m_replaceWith);
    m_fr.lStructSize = sizeof m_fr;
    m_fr.hwndOwner = owner;
    m_fr.hInstance = KmGetResourceHandle();
    m_fr.Flags = flags | FR_ENABLEHOOK;
    if (templateId) {
        m_fr.Flags |= FR_ENABLETEMPLATE;
        m_fr.lpTemplateName = MAKEINTRESOURCEA(templateId);
    }
    m_fr.lpstrFindWhat = m_findWhat;
    m_fr.wFindWhatLen = sizeof m_findWhat;
    m_fr.lpstrReplaceWith = m_replaceWith;
    m_fr.wReplaceWithLen = sizeof m_replaceWith;
    m_fr.lCustData = reinterpret_cast<LPARAM>(this);
    m_fr.lpfnHook = &CFindReplaceDialog::HookProc;
    HWND hwnd = findOnly ? ::FindTextA(&m_fr) : ::ReplaceTextA(&m_fr);
    if (hwnd && !m_hWnd)
        Attach(hwnd);
    return hwnd != nullptr;
}

CFindReplaceDialog* CFindReplaceDialog::FromNotification(LPARAM lParam)
{
    return reinterpret_cast<CFindReplaceDialog*>(
        reinterpret_cast<FINDREPLACEA*>(lParam)->lCustData);
}

UINT_PTR CALLBACK CFindReplaceDialog::HookProc(HWND hwnd, UINT message, WPARAM wParam,
                                               LPARAM lParam)
{
    return static_cast<UINT_PTR>(DialogProc(hwnd, message, wParam, lParam, [](LPARAM init) {
        return static_cast<CDialog*>(reinterpret_cast<CFindReplaceDialog*>(
            reinterpret_cast<FINDREPLACEA*>(init)->lCustData));
    }));
}
