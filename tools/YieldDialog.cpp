#include "tools/YieldDialog.h"

#include "app/KmApp.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CYieldException, CException)
IMPLEMENT_DYNAMIC(CYieldDialog, CDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CYieldDialog, CDialog)
    ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()
// clang-format on

namespace
{
CYieldException g_yieldException;
const int kCancelledSeconds = 5;
} // namespace

void CYieldException::Throw()
{
    throw g_yieldException;
}

void ShowCancelled()
{
    ::MessageBeep(MB_ICONHAND);
    theApp.statusBar.SetTextId(IDS_CANCELLED, kCancelledSeconds);
}

CYieldDialog::CYieldDialog(int throwOnCancel) : m_bThrowOnCancel(throwOnCancel) {}

CYieldDialog::~CYieldDialog()
{
    Close();
}

bool CYieldDialog::ShowProgress(unsigned stringId, const char* argument)
{
    try {
        CString format;
        format.LoadString(stringId);
        char text[1025]; // the most that wsprintfA writes
        wsprintfA(text, format, argument);
        m_strText = text;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return false;
    }
    HWND frame = KmGetMainWindow();
    ::EnableWindow(frame, FALSE);
    if (Create(IDD_YIELD, frame))
        return true;
    ::EnableWindow(frame, TRUE);
    return false;
}

bool CYieldDialog::OnInitDialog()
{
    CentreOver(::GetParent(m_hWnd));
    SetDlgItemText(IDC_YIELD_TEXT, m_strText);
    m_strText.Empty();
    return true;
}

void CYieldDialog::OnCancel()
{
    m_bCancelled = 1;
    Close();
}

void CYieldDialog::Close()
{
    m_strText.Empty();
    if (m_hWnd && ::IsWindow(m_hWnd)) {
        ::EnableWindow(KmGetMainWindow(), TRUE);
        DestroyWindow();
    }
}

// A click on Cancel is dispatched here, and the exception leaves from this
// same call, so no other command gets in between.
int CYieldDialog::Yield()
{
    MSG msg;
    while (!m_bCancelled && ::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            m_bCancelled = 1; // the job stops; the program does not
            break;
        }
        if (!m_hWnd || !::IsWindow(m_hWnd) || !::IsDialogMessageA(m_hWnd, &msg)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
    }
    if (m_bCancelled && m_bThrowOnCancel)
        CYieldException::Throw();
    return !m_bCancelled;
}
