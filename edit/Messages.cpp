#include "edit/Messages.h"

#include "framework/String.h"
#include "framework/WinApp.h"
#include "framework/Wnd.h"
#include "resources/KmIds.h"
#include "ui/StatusBar.h"

#include <cstdarg>

namespace
{

const SIZE_T kMessageBlockSize = 2048;
const int kNoticeSeconds = 5;

// The string id of a file exception's cause.
UINT CauseStringId(int cause)
{
    switch (cause) {
    case CFileException::fileNotFound:
        return IDS_CAUSE_FILENOTFOUND;
    case CFileException::badPath:
        return IDS_CAUSE_BADPATH;
    case CFileException::tooManyOpenFiles:
        return IDS_CAUSE_TOOMANYOPEN;
    case CFileException::accessDenied:
        return IDS_CAUSE_ACCESSDENIED;
    case CFileException::invalidFile:
        return IDS_CAUSE_INVALIDFILE;
    case CFileException::directoryFull:
        return IDS_CAUSE_DIRECTORYFULL;
    case CFileException::badSeek:
        return IDS_CAUSE_BADSEEK;
    case CFileException::hardIO:
        return IDS_CAUSE_HARDIO;
    case CFileException::sharingViolation:
        return IDS_CAUSE_SHARINGVIOLATION;
    case CFileException::lockViolation:
        return IDS_CAUSE_LOCKVIOLATION;
    case CFileException::diskFull:
        return IDS_CAUSE_DISKFULL;
    case CFileException::endOfFile:
        return IDS_CAUSE_ENDOFFILE;
    default:
        return IDS_CAUSE_GENERIC;
    }
}

int ShowMessage(HWND owner, const char* text, UINT style)
{
    const CWinApp* app = KmGetApp();
    return ::MessageBoxExA(owner, text, app ? app->m_pszAppName : "", style, 0);
}

// Formats string stringId with the arguments into text, or "*id*" when
// the string is missing or memory runs out.
void FormatMessageText(char* text, UINT stringId, va_list args)
{
    try {
        CString format;
        if (format.LoadString(stringId)) {
            ::wvsprintfA(text, format, args);
            return;
        }
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    }
    ::wsprintfA(text, "*%d*", static_cast<int>(stringId));
}

} // namespace

int KmMessageBoxUnchecked(CWnd* parent, UINT style, UINT stringId, ...)
{
    HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, kMessageBlockSize);
    char* text = block ? static_cast<char*>(::GlobalLock(block)) : nullptr;
    if (!text) {
        if (block)
            ::GlobalFree(block);
        OutOfMemoryNotice();
        return IDCANCEL; // a question counts as refused
    }
    va_list args;
    va_start(args, stringId);
    FormatMessageText(text, stringId, args);
    va_end(args);
    HWND owner = parent ? parent->m_hWnd : KmGetMainWindow();
    int answer = ShowMessage(owner, text, style);
    ::GlobalUnlock(block);
    ::GlobalFree(block);
    return answer;
}

void OutOfMemoryNotice()
{
    ::MessageBeep(MB_ICONEXCLAMATION);
    if (CKmStatusBar* bar = CKmStatusBar::OfParent(KmGetMainWindow()))
        bar->SetTextId(IDS_OUTOFMEMORY, kNoticeSeconds);
}

int ReportFileError(const char* path, const CFileException& error, UINT style)
{
    CString text;
    try {
        CString format, cause;
        format.LoadString(IDS_FILEERROR);
        cause.LoadString(CauseStringId(error.m_cause));
        text.Format(format, path, cause.c_str());
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
        return IDCANCEL;
    }
    ::MessageBeep(MB_ICONHAND);
    return ShowMessage(KmGetMainWindow(), text, style);
}

int ReportFileCause(const char* path, int cause, UINT style)
{
    return ReportFileError(path, CFileException(cause), style);
}

int ReportLastError(const char* path, UINT style)
{
    const long error = static_cast<long>(::GetLastError());
    return ReportFileError(path, CFileException(CFileException::OsErrorToException(error), error),
                           style);
}
