// The global search: a pattern over every line of a list of files, the
// hits written to a new log window. It runs to its end without yielding.
#pragma once
#include "framework/File.h"
#include "search/GrepLines.h"

class CGrepDialog;
class CKmLog;

// A file read in text mode, shared with readers only. Failures throw
// CFileException: access denied on opening, a generic one on reading, an
// invalid file on closing.
class CGrepFile : public CFile
{
    DECLARE_DYNAMIC(CGrepFile)
  public:
    explicit CGrepFile(const char* path);
    void Close();
    TextLineReader& Lines() { return m_lines; }

  private:
    size_t Fill(char* buffer, size_t capacity);
    TextLineReader m_lines;
};

// The search that the dialog's OK asks for, with the dialog's fields; a
// bad pattern, a bad directory and a fruitless search end in a box over
// the dialog.
void RunGrep(CGrepDialog& dialog);
// True if any file held a match; the log stays only then.
bool DoGrep(const char* fileList, const char* directory, bool listLines, const char* searchText,
            PatternBuffer* pattern);
// True if the file held a match. A file that fails is reported, and is no
// hit.
bool GrepFile(const char* path, bool listLines, CKmLog* log, PatternBuffer* pattern);
