#include "framework/FileDialog.h"

#include "framework/WinApp.h"

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)
IMPLEMENT_DYNAMIC(CFontDialog, CDialog)

CFileDialog::CFileDialog(bool open, const char* defaultExtension, const char* fileName, DWORD flags)
    : m_ofn(), m_bOpen(open), m_defaultExtension(defaultExtension), m_fileName()
{
    lstrcpynA(m_fileName, fileName ? fileName : "", sizeof m_fileName);
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.hwndOwner = KmGetMainWindow();
    m_ofn.hInstance = KmGetResourceHandle();
    m_ofn.lpstrFile = m_fileName;
    m_ofn.nMaxFile = sizeof m_fileName;
    m_ofn.Flags = flags;
    if (!m_defaultExtension.IsEmpty())
        m_ofn.lpstrDefExt = m_defaultExtension;
}

DWORD CFileDialog::SetFilter(const char* pairs)
{
    m_filterPairs = pairs;
    DWORD marks = 0;
    for (int i = 0; i < m_filterPairs.GetLength(); ++i)
        if (m_filterPairs[i] == '|') {
            m_filterPairs.SetAt(i, '\0');
            ++marks;
        }
    m_ofn.lpstrFilter = m_filterPairs.IsEmpty() ? nullptr : m_filterPairs.c_str();
    return marks;
}

INT_PTR CFileDialog::DoModal()
{
    m_ofn.Flags |= OFN_ENABLEHOOK;
    m_ofn.lpfnHook = &CFileDialog::HookProc;
    m_ofn.lCustData = reinterpret_cast<LPARAM>(this);
    const BOOL chosen = m_bOpen ? ::GetOpenFileNameA(&m_ofn) : ::GetSaveFileNameA(&m_ofn);
    if (m_hWnd) // the hook need not see the last message
        Detach();
    return chosen ? IDOK : IDCANCEL;
}

std::vector<CString> CFileDialog::GetPathNames() const
{
    std::vector<CString> names;
    const CString all(m_ofn.lpstrFile);
    int at = all.Find(' ');
    if (!(m_ofn.Flags & OFN_ALLOWMULTISELECT) || at < 0) {
        names.push_back(all);
        return names;
    }
    CString dir = all.Left(at);
    if (dir.GetLength() > 0 && dir[dir.GetLength() - 1] != '\\')
        dir += '\\';
    while (at < all.GetLength()) {
        while (at < all.GetLength() && all[at] == ' ')
            ++at;
        int end = all.Find(' ', at);
        if (end < 0)
            end = all.GetLength();
        if (end > at)
            names.push_back(dir + all.Mid(at, end - at));
        at = end;
    }
    return names;
}

UINT_PTR CALLBACK CFileDialog::HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    return static_cast<UINT_PTR>(DialogProc(hwnd, message, wParam, lParam, [](LPARAM init) {
        return static_cast<CDialog*>(
            reinterpret_cast<CFileDialog*>(reinterpret_cast<OPENFILENAMEA*>(init)->lCustData));
    }));
}

CFontDialog::CFontDialog(const LOGFONTA& logFont, DWORD flags, HWND owner) : m_cf(), m_lf(logFont)
{
    m_cf.lStructSize = sizeof m_cf;
    m_cf.hwndOwner = owner;
    m_cf.lpLogFont = &m_lf;
    m_cf.Flags = flags | CF_INITTOLOGFONTSTRUCT;
}

INT_PTR CFontDialog::DoModal()
{
    return ::ChooseFontA(&m_cf) ? IDOK : IDCANCEL;
}
