// Starting a program through the shell, with the $ macros of its
// arguments and directory replaced by facts about the active window and
// the project at that moment.
#pragma once
#include "framework/String.h"

class CKmFrame;

// 1 and the value for a name of the macro table, 0 for any other.
int LookupMacro(CKmFrame* frame, const char* name, CString& value);
void ExpandMacros(CKmFrame* frame, const char* text, CString& result);
// Non-zero when the program started; a failure has been shown.
int RunCommand(CKmFrame* frame, const char* program, const char* arguments, const char* directory,
               bool minimized);
