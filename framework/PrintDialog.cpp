#include "framework/PrintDialog.h"

IMPLEMENT_DYNAMIC(CPrintDialog, CDialog)

CPrintDialog::CPrintDialog(bool setupOnly, DWORD flags, HWND owner) : m_pd()
{
    m_pd.lStructSize = sizeof m_pd;
    m_pd.hwndOwner = owner;
    m_pd.Flags = flags | (setupOnly ? PD_PRINTSETUP : 0);
}

CPrintDialog::~CPrintDialog()
{
    if (m_pd.hDC)
        ::DeleteDC(m_pd.hDC);
    if (m_pd.hDevMode)
        ::GlobalFree(m_pd.hDevMode);
    if (m_pd.hDevNames)
        ::GlobalFree(m_pd.hDevNames);
}

INT_PTR CPrintDialog::DoModal()
{
    if (m_pd.hDC) { // a context not taken from the last time
        ::DeleteDC(m_pd.hDC);
        m_pd.hDC = nullptr;
    }
    return ::PrintDlgA(&m_pd) ? IDOK : IDCANCEL;
}

HDC CPrintDialog::TakePrinterDC()
{
    HDC dc = m_pd.hDC;
    m_pd.hDC = nullptr;
    return dc;
}

CString CPrintDialog::DeviceNamesPart(WORD DEVNAMES::*offset) const
{
    CString part;
    if (const auto* names =
            m_pd.hDevNames ? static_cast<const DEVNAMES*>(::GlobalLock(m_pd.hDevNames)) : nullptr) {
        part = reinterpret_cast<const char*>(names) + names->*offset;
        ::GlobalUnlock(m_pd.hDevNames);
    }
    return part;
}
