#include "print/PrintAbortDialog.h"

#include "resources/KmIds.h"

// clang-format off
BEGIN_MESSAGE_MAP(CPrintAbortDialog, CDialog)
    ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()
// clang-format on

CPrintAbortDialog::CPrintAbortDialog(HWND frame, bool& aborted) : m_frame(frame), m_aborted(aborted)
{
    ::EnableWindow(m_frame, FALSE);
}

CPrintAbortDialog::~CPrintAbortDialog()
{
    ::EnableWindow(m_frame, TRUE);
    if (m_hWnd && ::IsWindow(m_hWnd))
        DestroyWindow();
}

bool CPrintAbortDialog::Create(const char* name, const char* device, const char* port)
{
    m_lines[0] = name, m_lines[1] = device, m_lines[2] = port;
    return CDialog::Create(IDD_PRINTABORT, m_frame);
}

bool CPrintAbortDialog::OnInitDialog()
{
    CentreOver(m_frame);
    const int ids[] = {IDC_PRINTABORT_NAME, IDC_PRINTABORT_DEVICE, IDC_PRINTABORT_PORT};
    for (int i = 0; i < 3; ++i)
        SetDlgItemText(ids[i], m_lines[i]);
    return true;
}

void CPrintAbortDialog::OnCancel()
{
    ::MessageBeep(0);
    m_aborted = true;
    ::EnableWindow(m_frame, TRUE);
    DestroyWindow();
}
