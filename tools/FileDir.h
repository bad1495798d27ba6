// File lists: texts of file specifications turned into a sorted list of
// full lower-case paths, and the time and dates of the page headers in the
// forms of the system's international settings.
#pragma once
#include "framework/Object.h"
#include "framework/String.h"

#include <ctime>
#include <vector>

class CFileDir : public CObject
{
    DECLARE_DYNAMIC(CFileDir)
  public:
    // The blank-separated words of one text, or of a directory and a list
    // (a null text counts as empty), each expanded into the paths it
    // matches; a word that matches nothing stays as typed. With more than
    // one word, a first one that names a directory is the place of the
    // others. The number of names in the list.
    int Read(const char* text, const char* list = nullptr);
    // The next path, owned by the list; null after the last, and then the
    // walk starts again.
    const char* Next();

    // False for a pattern and for what does not exist; true for a drive
    // root and for a directory.
    static bool IsDirectory(const char* path);
    // Inserts in byte order; a path already there is not added again.
    void AddSorted(const char* path);

    std::vector<CString> m_list;
    size_t m_pos = 0;

  private:
    void AddMatches(const CString& spec);
};

void FormatTime(const tm& time, CString& text);
void FormatShortDate(const tm& time, CString& text);
void FormatLongDate(const tm& time, CString& text);
