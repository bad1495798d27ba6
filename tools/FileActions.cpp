#include "tools/FileActions.h"

#include "app/WordList.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "framework/File.h"
#include "resources/KmIds.h"
#include "tools/TargetName.h"

#include <cstring>
#include <new>
#include <vector>

namespace
{

// The question after a failure on one file: OK goes on, Cancel stops.
const UINT kAsk = MB_OKCANCEL | MB_ICONEXCLAMATION;
// Everything but read-only and archive: directories, hidden and system
// files, volume labels are left alone.
const unsigned kNotPlainFile = 0xDE;
const unsigned kCopyBlock = 65535;

// 0 when the action may go on with dest; else the answer of the question
// asked, where Cancel stops the run and anything else skips this file.
int ResolveTarget(const char* source, const char* target, CString& dest)
{
    FileStatus status;
    if (!GetFileStatus(target, status)) {
        dest = ExpandTargetName(source, target);
    } else if (status.attribute & FILE_ATTRIBUTE_DIRECTORY) {
        dest = target;
        if (dest.IsEmpty() || dest[dest.GetLength() - 1] != '\\')
            dest += '\\';
        const char* name = source;
        for (const char* p = source; *p; ++p)
            if (*p == '\\' || *p == ':')
                name = p + 1;
        dest += name;
    } else if (status.attribute & kNotPlainFile) {
        return KmMessageBox(nullptr, kAsk, IDS_INVALIDPATHOP, target);
    } else {
        dest = target;
    }
    if (!GetFileStatus(dest, status))
        return 0;
    dest = status.fullName;
    dest.MakeLower();
    if (lstrcmpiA(source, dest) == 0)
        return KmMessageBox(nullptr, kAsk, IDS_COPYTOITSELF, dest.c_str());
    const int answer =
        KmMessageBox(nullptr, MB_YESNOCANCEL | MB_ICONQUESTION, IDS_REPLACEEXISTING, dest.c_str());
    if (answer != IDYES)
        return answer;
    try {
        CFile::Remove(dest);
    } catch (const CFileException& error) {
        return ReportFileError(dest, error, kAsk);
    }
    return 0;
}

bool Delete(const char* name)
{
    try {
        CFile::Remove(name);
    } catch (const CFileException& error) {
        return ReportFileError(name, error, kAsk) == IDOK;
    }
    return true;
}

// Only the time of the last change moves. A file that cannot be opened for
// writing is not found for this purpose; a read-only one counts as such
// even for a user whose rights would let the opening pass.
bool Touch(const char* name, unsigned attribute)
{
    CFile file;
    if ((attribute & FILE_ATTRIBUTE_READONLY) ||
        !file.Open(name, CFile::modeWrite | CFile::shareExclusive))
        return ReportFileCause(name, CFileException::fileNotFound, kAsk) == IDOK;
    try {
        SYSTEMTIME now;
        FILETIME time;
        ::GetSystemTime(&now);
        ::SystemTimeToFileTime(&now, &time);
        file.SetTimes(nullptr, nullptr, &time);
        file.Close();
    } catch (const CFileException& error) {
        return ReportFileError(name, error, kAsk) == IDOK;
    }
    return true;
}

bool Rename(const char* name, const char* target)
{
    CString dest;
    if (const int answer = ResolveTarget(name, target, dest))
        return answer != IDCANCEL;
    try {
        CFile::Rename(name, dest);
    } catch (const CFileException& error) {
        return ReportFileError(name, error, kAsk) == IDOK;
    }
    return true;
}

// A copy keeps its source's times and attributes.
bool Copy(const char* name, unsigned attribute, const char* target)
{
    std::vector<char> block;
    try {
        block.resize(kCopyBlock);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return false;
    }
    CString dest;
    if (const int answer = ResolveTarget(name, target, dest))
        return answer != IDCANCEL;
    const char* current = name;
    try {
        CFile source(name, CFile::modeRead | CFile::shareDenyWrite);
        current = dest;
        CFile copy(dest, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
        for (unsigned count; (count = source.Read(block.data(), kCopyBlock)) != 0;)
            copy.Write(block.data(), count);
        FILETIME times[3];
        source.GetTimes(&times[0], &times[1], &times[2]);
        copy.SetTimes(&times[0], &times[1], &times[2]);
        copy.Close();
        CFile::SetAttributes(dest, attribute);
    } catch (const CFileException& error) {
        return ReportFileError(current, error, kAsk) == IDOK;
    }
    return true;
}

bool Act(FileAction action, const char* name, const FileStatus& status, const char* target)
{
    switch (action) {
    case FileAction::Delete:
        return Delete(name);
    case FileAction::Touch:
        return Touch(name, status.attribute);
    case FileAction::Copy:
        return Copy(name, status.attribute, target);
    case FileAction::Rename:
        return Rename(name, target);
    }
    return false;
}

} // namespace

void ForEachFile(FileAction action, const char* list, const char* target)
{
    CWordList words(1, list);
    HCURSOR old = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    while (const char* word = words.NextWord()) {
        FileStatus status;
        if (!GetFileStatus(word, status)) {
            if (ReportFileCause(word, CFileException::fileNotFound, kAsk) == IDCANCEL)
                break;
            continue;
        }
        if (status.attribute & kNotPlainFile) {
            KmMessageBox(nullptr, kAsk, IDS_INVALIDPATHOP, status.fullName);
            break;
        }
        CString name = status.fullName;
        name.MakeLower();
        if (!Act(action, name, status, target))
            break;
    }
    ::SetCursor(old);
}

void DropTrailingBlanks(CString& text)
{
    int length = text.GetLength();
    while (length > 0 && text[length - 1] == ' ')
        --length;
    text = text.Left(length);
}
