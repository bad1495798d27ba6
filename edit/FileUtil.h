// The helpers for path names, temporary files and backups. None of them
// keeps state; file failures end in a message box, so callers see only
// true or false.
#pragma once
#include "framework/Exception.h"
#include "framework/String.h"

#include <cstdint>
#include <ctime>
#include <windows.h>

struct FileStatus {
    time_t created;
    time_t modified;
    time_t accessed;
    uint32_t size;           // low word of the size only
    uint8_t attribute;       // attribute bits masked with 63; the whole value for a root
    char fullName[MAX_PATH]; // ANSI, in the case the full-path function gave it
};

// The current directory, lower case; empty if it cannot be read.
void GetCurrentDir(CString& dir);
// Changes drive (for "x:...") and directory.
bool ChangeDir(const char* path);
bool MakeDir(const char* path);
// The lower-case directory part of path; false, leaving dir, for a bare name.
bool SplitDir(const char* path, CString& dir);
// The absolute path, ASCII lower-cased.
bool GetFullPath(const char* path, CString& full);
// path behind dir and its backslash when path starts so; else path.
const char* PathRelativeTo(const char* path, const char* dir);
// Status of a file, directory or root; false for wildcards (status left
// as it was) and for what does not exist.
bool GetFileStatus(const char* path, FileStatus& status);

// A new temporary file "KMT....tmp" in the temporary directory; with an
// extension, name ends in that extension instead, and the created file
// keeps its own name.
bool MakeTempName(const char* extension, CString& name);
bool WriteStringFile(const char* path, const char* text);
bool RemoveFile(const char* path);
// The .BAK name of a full path: from its last dot, or its end, on.
CString BackupName(const char* fullName);
// Moves path to its .BAK name; true when there was nothing to back up.
bool MakeBackup(const char* path);
