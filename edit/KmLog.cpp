#include "edit/KmLog.h"

#include "app/FileReference.h"
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

#include <cstdarg>
#include <new>

IMPLEMENT_DYNAMIC(CKmLog, CKmFileEdit)

// clang-format off
BEGIN_MESSAGE_MAP(CKmLog, CKmFileEdit)
    ON_MESSAGE(WM_RBUTTONDOWN, OnRButtonDown)
    ON_COMMAND(ID_EDIT_UNDO, OnRefused)
    ON_COMMAND(ID_EDIT_CUT, OnRefused)
    ON_COMMAND(ID_EDIT_PASTE, OnRefused)
    ON_COMMAND(ID_EDIT_SHIFTLEFT, OnRefused)
    ON_COMMAND(ID_EDIT_SHIFTRIGHT, OnRefused)
    ON_COMMAND(ID_SEARCH_GOTOLINE, GotoSourceLine)
    ON_COMMAND(ID_HELP_CONTEXT_CHILD, OnHelpContext)
    ON_MESSAGE(WM_TIMER, OnFlushTimer)
END_MESSAGE_MAP()
// clang-format on

namespace
{

const UINT kHelpLog = 5;
// wvsprintfA writes at most this much; the log takes the first 511.
const int kFormatLimit = 1024;
const int kLogLineLimit = 511;
// Appended text waits at most this long before it reaches the control:
// each append there redraws the scroll bars, which under some window
// systems costs milliseconds, whatever the length of the text.
const DWORD kFlushDelay = 200;
const UINT_PTR kFlushTimer = 1;

} // namespace

CKmLog::CKmLog(unsigned long flags, int locate) : CKmFileEdit(nullptr, flags), m_bLocate(locate)
{
    m_flags |= CF_READONLY | CF_UNTITLED;
    m_flags &= ~(CF_FILE | CF_ALIGN | CF_BLOCKINDENT);
    m_format = FF_DOS;
}

CKmLog* CKmLog::Create(unsigned long flags, int locate)
{
    CKmLog* log = new CKmLog(flags, locate);
    if (log->CreateWindowFor("", "LogIcon"))
        return log;
    if (log->m_hWnd)
        log->MDIDestroy(); // the window deletes its object
    else
        delete log;
    return nullptr;
}

unsigned long CKmLog::ToolLogFlags()
{
    unsigned long flags = CF_READONLY;
    if (!(theApp.flags & KF_NOHSCROLL))
        flags |= CF_HSCROLL;
    if (!(theApp.flags & KF_NOVSCROLL))
        flags |= CF_VSCROLL;
    return flags;
}

// Text is gathered and reaches the control at most kFlushDelay later, at
// the tool's end, or when the log closes. Appending moves the
// caret to the end, so the newest line stays in sight and whatever the user
// had selected is lost; the control's read-only state does not stop
// EM_REPLACESEL.
int CKmLog::LogPrintf(const char* format, ...)
{
    if (m_outOfSpace)
        return -1;
    char text[kFormatLimit + 1];
    va_list args;
    va_start(args, format);
    int length = ::wvsprintfA(text, format, args);
    va_end(args);
    if (length < 1)
        return length;
    if (length > kLogLineLimit) {
        length = kLogLineLimit;
        text[length] = '\0';
    }
    try {
        m_pending.append(text, static_cast<size_t>(length));
    } catch (const std::bad_alloc&) {
        Flush();
        AppendToControl(text);
        return length;
    }
    // Setting a timer is a round trip to the window system on some
    // platforms: one for all the lines that wait.
    if (::GetTickCount() - m_lastFlush >= kFlushDelay)
        Flush();
    else if (!m_flushTimer)
        m_flushTimer = ::SetTimer(m_hWnd, kFlushTimer, kFlushDelay, nullptr) != 0;
    return length;
}

void CKmLog::Flush()
{
    if (m_flushTimer)
        ::KillTimer(m_hWnd, kFlushTimer);
    m_flushTimer = false;
    m_lastFlush = ::GetTickCount();
    if (m_pending.empty())
        return;
    std::string text;
    text.swap(m_pending);
    if (!m_outOfSpace)
        AppendToControl(text.c_str());
}

void CKmLog::AppendToControl(const char* text)
{
    const DWORD end = static_cast<DWORD>(::GetWindowTextLengthA(m_edit.m_hWnd));
    m_edit.SetSelection(end, end);
    m_edit.SendMessage(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text));
}

LRESULT CKmLog::OnFlushTimer(WPARAM, LPARAM)
{
    Flush();
    return 0;
}

bool CKmLog::QuerySave(unsigned promptId)
{
    Flush();
    return CKmFileEdit::QuerySave(promptId);
}

void CKmLog::MarkClean()
{
    Flush();
    OnSetClean();
}

// The reference stays selected as the mark of the last jump. The request is
// posted: the new window must not open while the log is still handling the
// click that asked for it.
void CKmLog::GotoSourceLine()
{
    if (!m_bLocate)
        return;
    HGLOBAL handle = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(OpenRequest));
    OpenRequest* request = handle ? static_cast<OpenRequest*>(::GlobalLock(handle)) : nullptr;
    if (!request) {
        if (handle)
            ::GlobalFree(handle);
        OutOfMemoryNotice();
        return;
    }
    // EM_LINELENGTH of -1 counts only the unselected part of the line, and
    // the last jump's mark is selected: ask for the line by its start.
    const LRESULT start = m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(-1));
    const int length = static_cast<int>(m_edit.SendMessage(EM_LINELENGTH, start));
    int found;
    {
        CEditText text(m_edit);
        found = ParseFileReference(text.text + start, length, *request);
    }
    ::GlobalUnlock(handle);
    HWND frame = KmGetMainWindow();
    if (found > 0 && frame) {
        m_edit.SetSelection(static_cast<DWORD>(start), static_cast<DWORD>(start + found));
        if (::PostMessageA(frame, WM_KM_OPENFILE, 1, reinterpret_cast<LPARAM>(handle)))
            return;
    } else {
        Alert(MB_ICONEXCLAMATION);
    }
    ::GlobalFree(handle);
}

// A right click puts the caret on the line and jumps from there; a log
// without references has no use for the button.
LRESULT CKmLog::OnRButtonDown(WPARAM, LPARAM lParam)
{
    if (!m_bLocate)
        return 0;
    if (CKmFrame* frame = theApp.Frame())
        ::SendMessageA(frame->m_hWndMDIClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_hWnd), 0);
    POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    ::MapWindowPoints(m_hWnd, m_edit.m_hWnd, &point, 1);
    const LPARAM at = MAKELPARAM(point.x, point.y);
    m_edit.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
    m_edit.SendMessage(WM_LBUTTONUP, 0, at);
    GotoSourceLine();
    return 0;
}

void CKmLog::OnRefused()
{
    Alert(MB_ICONEXCLAMATION);
}

void CKmLog::OnHelpContext()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpLog);
}

// Nothing to save, print or change; Goto Line is the jump where lines hold
// references.
void CKmLog::UpdatePopup(HMENU menu, int index)
{
    CKmChild::UpdatePopup(menu, index);
    if (index == POPUP_SEARCH && m_bLocate)
        EnableItem(menu, ID_SEARCH_GOTOLINE, true);
}

void CKmLog::UpdateEditPopup(HMENU menu, int index)
{
    CKmChild::UpdateEditPopup(menu, index);
}
