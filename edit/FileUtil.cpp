#include "edit/FileUtil.h"

#include "edit/Messages.h"
#include "framework/File.h"
#include "framework/Wnd.h"
#include "resources/KmIds.h"

#include <cstdarg>
#include <cstring>
#include <new>

namespace
{

// Paths travel through the path calls in the OEM code page. For that round
// trip to name the same file, the calls read and give OEM names while one
// of these lives.
class OemPathCalls
{
  public:
    OemPathCalls() : m_wasAnsi(::AreFileApisANSI() != FALSE) { ::SetFileApisToOEM(); }
    ~OemPathCalls()
    {
        if (m_wasAnsi)
            ::SetFileApisToANSI();
    }
    OemPathCalls(const OemPathCalls&) = delete;
    OemPathCalls& operator=(const OemPathCalls&) = delete;

  private:
    bool m_wasAnsi;
};

CString ToOem(const char* path)
{
    CString oem(path);
    if (!oem.IsEmpty())
        ::CharToOemBuffA(path, oem.GetBuffer(oem.GetLength()), static_cast<DWORD>(oem.GetLength()));
    return oem;
}

// The full path of path in OEM form, limit MAX_PATH; false on failure.
bool FullOemPath(const char* path, char (&full)[MAX_PATH])
{
    CString oem = ToOem(path);
    OemPathCalls oemCalls;
    DWORD length = ::GetFullPathNameA(oem, MAX_PATH, full, nullptr);
    return length != 0 && length < MAX_PATH;
}

time_t FileTimeToTime(const FILETIME& time)
{
    const uint64_t ticks = (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    const uint64_t epoch = 116444736000000000ULL; // 1970-01-01 in 100 ns ticks since 1601
    return ticks <= epoch ? 0 : static_cast<time_t>((ticks - epoch) / 10000000ULL);
}

// A root that the search does not find: "x:" of a known drive, or a path
// ending in a backslash.
bool StatusOfRoot(const char* full, FileStatus& status)
{
    const size_t length = strlen(full);
    const char last = length ? full[length - 1] : '\0';
    OemPathCalls oemCalls;
    if (last == ':') {
        if (::GetDriveTypeA(full) == DRIVE_UNKNOWN || length != 2)
            return false;
    } else if (last != '\\') {
        return false;
    }
    DWORD attributes = ::GetFileAttributesA(full);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    status.created = status.modified = status.accessed = 0;
    status.size = 0;
    status.attribute = static_cast<uint8_t>(attributes);
    return true;
}

} // namespace

void GetCurrentDir(CString& dir)
{
    char buffer[MAX_PATH];
    DWORD length;
    {
        OemPathCalls oemCalls;
        length = ::GetCurrentDirectoryA(MAX_PATH, buffer);
    }
    if (length == 0 || length >= MAX_PATH) {
        dir.Empty();
        return;
    }
    ::OemToCharA(buffer, buffer);
    ::CharLowerA(buffer);
    dir = buffer;
}

bool ChangeDir(const char* path)
{
    CString oem = ToOem(path);
    OemPathCalls oemCalls;
    if (path[0] && path[1] == ':') {
        char current[MAX_PATH];
        DWORD length = ::GetCurrentDirectoryA(MAX_PATH, current);
        int drive = (path[0] >= 'a' && path[0] <= 'z' ? path[0] - 32 : path[0]) - 64;
        int currentDrive = length >= 2 && current[1] == ':' ? (current[0] & ~32) - 64 : 0;
        const char driveOnly[3] = {static_cast<char>(drive + 64), ':', '\0'};
        if (drive != currentDrive && !::SetCurrentDirectoryA(driveOnly))
            return false;
    }
    return ::SetCurrentDirectoryA(oem) != FALSE;
}

bool MakeDir(const char* path)
{
    CString oem = ToOem(path);
    OemPathCalls oemCalls;
    return ::CreateDirectoryA(oem, nullptr) != FALSE;
}

bool SplitDir(const char* path, CString& dir)
{
    const char* slash = strrchr(path, '\\');
    int length;
    if (slash) {
        length = static_cast<int>(slash - path);
        // A root keeps its backslash: c:\ and a leading one.
        if (length == 0 || slash[-1] == ':')
            ++length;
    } else if (path[0] && path[1] == ':') {
        length = 2;
    } else {
        return false;
    }
    dir = CString(path, length);
    dir.MakeLower();
    return true;
}

bool GetFullPath(const char* path, CString& full)
{
    char buffer[MAX_PATH];
    if (!FullOemPath(path, buffer))
        return false;
    ::OemToCharA(buffer, buffer);
    full = buffer;
    full.MakeLower();
    return true;
}

const char* PathRelativeTo(const char* path, const char* dir)
{
    const size_t length = strlen(dir);
    if (strncmp(path, dir, length) == 0 && path[length] == '\\')
        return path + length + 1;
    return path;
}

bool GetFileStatus(const char* path, FileStatus& status)
{
    if (strpbrk(path, "?*"))
        return false; // a pattern is never a file
    char full[MAX_PATH];
    if (!FullOemPath(path, full)) {
        status.fullName[0] = '\0';
        return false;
    }
    ::OemToCharA(full, status.fullName);

    WIN32_FIND_DATAA found;
    HANDLE search;
    {
        OemPathCalls oemCalls;
        search = ::FindFirstFileA(full, &found);
    }
    if (search == INVALID_HANDLE_VALUE)
        return StatusOfRoot(full, status);
    ::FindClose(search);
    status.created = FileTimeToTime(found.ftCreationTime);
    status.modified = FileTimeToTime(found.ftLastWriteTime);
    status.accessed = FileTimeToTime(found.ftLastAccessTime);
    status.size = found.nFileSizeLow;
    status.attribute = static_cast<uint8_t>(found.dwFileAttributes & 63);
    return true;
}

bool MakeTempName(const char* extension, CString& name)
{
    char dir[MAX_PATH];
    char buffer[MAX_PATH];
    DWORD length = ::GetTempPathA(MAX_PATH, dir);
    if (length == 0 || length >= MAX_PATH || !::GetTempFileNameA(dir, "KMT", 0, buffer)) {
        name.Empty();
        return false;
    }
    name = buffer;
    // The file just created keeps its own name: a stray that is accepted.
    if (extension && *extension && name.GetLength() >= 3)
        name = name.Left(name.GetLength() - 3) + extension;
    return true;
}

bool WriteStringFile(const char* path, const char* text)
{
    try {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write(text, static_cast<unsigned>(strlen(text)));
        file.Close();
        return true;
    } catch (const CFileException& error) {
        ReportFileError(path, error, MB_ICONEXCLAMATION);
        return false;
    }
}

bool RemoveFile(const char* path)
{
    try {
        CFile::Remove(path);
        return true;
    } catch (const CFileException& error) {
        ReportFileError(path, error, MB_ICONEXCLAMATION);
        return false;
    }
}

// The last dot of the whole path, not of the name: a dotted directory with
// a dotless name cuts at the directory's dot. Intended.
CString BackupName(const char* fullName)
{
    CString backup(fullName);
    int dot = backup.ReverseFind('.');
    if (dot >= 0)
        backup = backup.Left(dot);
    backup += ".BAK";
    return backup;
}

bool MakeBackup(const char* path)
{
    FileStatus status;
    if (!GetFileStatus(path, status))
        return true; // nothing to back up
    CString backup = BackupName(status.fullName);
    try {
        if (::GetFileAttributesA(backup) != INVALID_FILE_ATTRIBUTES)
            CFile::Remove(backup);
        CFile::Rename(status.fullName, backup);
        return true;
    } catch (const CFileException& error) {
        ReportFileError(status.fullName, error, MB_ICONEXCLAMATION);
        return false;
    }
}
