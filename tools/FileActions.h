// What the file manager does to each file of a list: delete, touch, copy
// and rename, with a question on each failure (OK goes on with the next
// file, Cancel stops) and the refusals for paths that are no plain files.
#pragma once
#include "framework/String.h"

enum class FileAction { Delete, Touch, Copy, Rename };

// The blank-separated names of list, in order, under a wait cursor; target
// is the place of a copy or rename, null for the others.
void ForEachFile(FileAction action, const char* list, const char* target);

// What the user confirmed in a list of names, less its trailing blanks.
void DropTrailingBlanks(CString& text);
