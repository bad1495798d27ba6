#include "views/LogFileView.h"

#include "app/FileReference.h"
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CLogFileView, CTextFileView)

namespace
{
const DWORD kHelpLogView = 5;
}

// clang-format off
BEGIN_MESSAGE_MAP(CLogFileView, CTextFileView)
    ON_MESSAGE(WM_RBUTTONDOWN, OnRButtonDown)
    ON_COMMAND(ID_SEARCH_GOTOLINE, GotoSourceLine)
    ON_COMMAND(ID_HELP_CONTEXT_CHILD, OnHelpContext)
END_MESSAGE_MAP()
// clang-format on

CLogFileView* CLogFileView::Open(const char* fileName, unsigned long flags)
{
    CString workDir;
    GetCurrentDir(workDir);
    CLogFileView* view = new CLogFileView(flags);
    if (!view->Start(fileName, IDI_LOGVIEW))
        return nullptr; // the file stays with the caller
    view->m_strFile = fileName;
    view->m_workDir = workDir; // the command's, where its names lead
    ChangeDir(workDir);
    return view;
}

// The record file goes first, so that the file can be removed.
CLogFileView::~CLogFileView()
{
    m_pFile.reset();
    if (!m_strFile.IsEmpty())
        RemoveFile(m_strFile);
}

// As a left click, then the jump.
LRESULT CLogFileView::OnRButtonDown(WPARAM, LPARAM lParam)
{
    if (!m_bLocate)
        return 0;
    theApp.Frame()->MDIActivate(m_hWnd);
    OnLButtonDown(0, lParam);
    OnLButtonUp(0, lParam);
    GotoSourceLine();
    return 0;
}

// The block stays allocated when the line names no place.
void CLogFileView::GotoSourceLine()
{
    CKmFrame* frame = theApp.Frame();
    if (!m_bLocate) {
        frame->Alert(MB_ICONEXCLAMATION);
        return;
    }
    HGLOBAL handle = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(OpenRequest));
    OpenRequest* request = handle ? static_cast<OpenRequest*>(::GlobalLock(handle)) : nullptr;
    if (!request) {
        ::MessageBeep(0);
        return;
    }
    FilePos start, end;
    if (!GetOrderedSelection(start, end))
        start = end = m_posCaret;
    const int found = LoadLine(end.line)
                          ? ParseFileReference(m_pLine.data(), RecordLength(end.line), *request)
                          : 0;
    ::GlobalUnlock(handle);
    if (found <= 0) {
        frame->Alert(MB_ICONEXCLAMATION);
        return;
    }
    FilePos anchor = start, caret = end;
    anchor.col = anchor.dispCol = 0;
    caret.col = found;
    Normalize(caret);
    SelectRange(anchor, caret);
    ::PostMessageA(frame->m_hWnd, WM_KM_OPENFILE, 1, reinterpret_cast<LPARAM>(handle));
}

void CLogFileView::OnHelpContext()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpLogView);
}
