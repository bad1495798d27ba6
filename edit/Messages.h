// Messages from the string table and the one form of a file error report.
// Used by every subsystem; it knows the main window and its status bar, not
// the application object.
#pragma once
#include "framework/Exception.h"

#include <type_traits>
#include <windows.h>

class CWnd;

// Formats string stringId with the arguments in the manner of wvsprintfA
// and shows it with the application's name as caption, owned by parent or
// else the main window; the button pressed (IDCANCEL without memory).
int KmMessageBoxUnchecked(CWnd* parent, UINT style, UINT stringId, ...);

// The same, with arguments limited to plain values (numbers, pointers, C
// strings): the format is only known at run time, so the compiler checks
// at least that nothing like a string object goes through "...".
template <typename... Args> int KmMessageBox(CWnd* parent, UINT style, UINT stringId, Args... args)
{
    static_assert((std::is_scalar<Args>::value && ...), "pass numbers, pointers or const char*");
    return KmMessageBoxUnchecked(parent, style, stringId, args...);
}

// The reaction to a lack of memory: a beep and a timed status-bar text.
void OutOfMemoryNotice();
// "Error accessing '<path>'" with the text of the exception's cause.
int ReportFileError(const char* path, const CFileException& error, UINT style);
int ReportFileCause(const char* path, int cause, UINT style);
// The same for the calling thread's last platform error.
int ReportLastError(const char* path, UINT style);
