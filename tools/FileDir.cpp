#include "tools/FileDir.h"

#include "app/WordList.h"
#include "resources/KmIds.h"
#include "tools/DateFormat.h"

#include <algorithm>
#include <cstring>
#include <windows.h>

IMPLEMENT_DYNAMIC(CFileDir, CObject)

namespace
{

// A directory word without its trailing backslashes, but for a lone first
// one and the root's behind a drive.
CString TrimBackslashes(const char* word)
{
    CString dir(word);
    int length = dir.GetLength();
    while (length > 1 && dir[length - 1] == '\\' && dir[length - 2] != ':')
        --length;
    return dir.Left(length);
}

class FindHandle
{
  public:
    explicit FindHandle(HANDLE handle) : m_handle(handle) {}
    ~FindHandle()
    {
        if (m_handle != INVALID_HANDLE_VALUE)
            ::FindClose(m_handle);
    }
    FindHandle(const FindHandle&) = delete;
    FindHandle& operator=(const FindHandle&) = delete;
    HANDLE m_handle;
};

} // namespace

// The A calls take and give ANSI names here, so the names need no code page
// conversion on their way through the search.
int CFileDir::Read(const char* text, const char* list)
{
    m_list.clear();
    m_pos = 0;
    CWordList words(2, text, list);
    CString prefix;
    uint32_t first = 0;
    if (words.m_count > 1) {
        const CString dir = TrimBackslashes(words.m_words[0]);
        if (IsDirectory(dir)) {
            const char last = dir[dir.GetLength() - 1];
            prefix = last == '\\' || last == ':' ? dir : dir + "\\";
            first = 1;
        }
    }
    for (uint32_t i = first; i < words.m_count; ++i)
        AddMatches(prefix + words.m_words[i]);
    m_pos = 0;
    return static_cast<int>(m_list.size());
}

// A name that matches nothing goes in as it is, to fail where it is opened.
void CFileDir::AddMatches(const CString& spec)
{
    WIN32_FIND_DATAA found;
    FindHandle search(::FindFirstFileA(spec, &found));
    if (search.m_handle == INVALID_HANDLE_VALUE) {
        CString name(spec);
        name.MakeLower();
        AddSorted(name);
        return;
    }
    const int backslash = spec.ReverseFind('\\');
    const CString dir = spec.Left(backslash >= 0 ? backslash + 1 : spec.ReverseFind(':') + 1);
    do {
        char full[MAX_PATH];
        const DWORD length = ::GetFullPathNameA(dir + found.cFileName, MAX_PATH, full, nullptr);
        // The entry's own attributes: asking the file system again for each
        // name costs two calls under some platforms, more than the search.
        const bool directory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (length == 0 || length >= MAX_PATH || directory)
            continue;
        CString path(full);
        path.MakeLower();
        AddSorted(path);
    } while (::FindNextFileA(search.m_handle, &found));
}

const char* CFileDir::Next()
{
    if (m_pos >= m_list.size()) {
        m_pos = 0;
        return nullptr;
    }
    return m_list[m_pos++];
}

bool CFileDir::IsDirectory(const char* path)
{
    if (strpbrk(path, "?*"))
        return false;
    const size_t length = strlen(path);
    if (length >= 2 && path[1] == ':') {
        const char root[] = {path[0], ':', '\\', '\0'};
        if (::GetDriveTypeA(root) <= DRIVE_NO_ROOT_DIR) // no such drive
            return false;
        if (length == 2 || (length == 3 && (path[2] == '\\' || path[2] == '.')))
            return true;
    }
    const DWORD attributes = ::GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

void CFileDir::AddSorted(const char* path)
{
    const auto at =
        std::lower_bound(m_list.begin(), m_list.end(), path,
                         [](const CString& a, const char* b) { return strcmp(a, b) < 0; });
    if (at == m_list.end() || strcmp(*at, path) != 0)
        m_list.insert(at, CString(path));
}

namespace
{

const char kIntl[] = "intl";

std::string IntlText(const char* key, const char* fallback)
{
    char value[81];
    ::GetProfileStringA(kIntl, key, fallback, value, sizeof value);
    return value;
}

std::string Names(UINT id)
{
    CString names;
    names.LoadString(id);
    return names.str();
}

} // namespace

void FormatTime(const tm& time, CString& text)
{
    TimeSettings settings;
    settings.separator = IntlText("sTime", ":")[0];
    settings.leadingZero = ::GetProfileIntA(kIntl, "iTLzero", 0) != 0;
    settings.clock24 = ::GetProfileIntA(kIntl, "iTime", 0) != 0;
    settings.am = IntlText("s1159", "AM");
    settings.pm = IntlText("s2359", "PM");
    text = FormatTimeText(time, settings);
}

void FormatShortDate(const tm& time, CString& text)
{
    text = FormatShortDateText(time, IntlText("sShortDate", "M/d/yy").c_str());
}

void FormatLongDate(const tm& time, CString& text)
{
    text = FormatLongDateText(time, IntlText("sLongDate", "dddd' 'MMMM' 'd' 'yyyy").c_str(),
                              Names(IDS_DAYNAMES).c_str(), Names(IDS_MONTHNAMES).c_str());
}
