#include "search/GlobalSearch.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/KmLog.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "search/GrepDialog.h"
#include "search/SearchRequest.h"
#include "tools/FileDir.h"

#include <cstdlib>

IMPLEMENT_DYNAMIC(CGrepFile, CFile)

namespace
{

// The search's own compiled pattern, freed at the end.
struct GrepPattern : PatternBuffer {
    GrepPattern() = default;
    ~GrepPattern() { free(buffer); }
    GrepPattern(const GrepPattern&) = delete;
    GrepPattern& operator=(const GrepPattern&) = delete;
};

} // namespace

CGrepFile::CGrepFile(const char* path)
    : m_lines([this](char* buffer, size_t capacity) { return Fill(buffer, capacity); })
{
    if (!Open(path, modeRead | shareDenyWrite))
        ThrowFileException(CFileException::accessDenied);
}

size_t CGrepFile::Fill(char* buffer, size_t capacity)
{
    try {
        return Read(buffer, static_cast<unsigned>(capacity));
    } catch (const CFileException&) {
        ThrowFileException(CFileException::generic);
    }
}

void CGrepFile::Close()
{
    try {
        CFile::Close();
    } catch (const CFileException&) {
        ThrowFileException(CFileException::invalidFile);
    }
}

void RunGrep(CGrepDialog& dialog)
{
    GrepPattern pattern;
    if (!AllocatePattern(pattern)) {
        OutOfMemoryNotice();
        return;
    }
    pattern.fold_case = !dialog.m_bMatchCase;
    int result;
    try {
        result = CompileSearchText(dialog.m_pszSearch, dialog.m_bWholeWord != 0, &pattern);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return;
    }
    if (result != PATTERN_OK) {
        KmMessageBox(&dialog, MB_ICONEXCLAMATION, PatternMessage(result));
        dialog.FocusOn(IDC_GREP_SEARCH);
        return;
    }
    BuildFirstCharMap(&pattern);
    FileStatus status;
    if (!dialog.m_pszDir.IsEmpty() && (!GetFileStatus(dialog.m_pszDir, status) ||
                                       !(status.attribute & FILE_ATTRIBUTE_DIRECTORY))) {
        KmMessageBox(&dialog, MB_ICONHAND, IDS_CAUSE_BADPATH);
        dialog.FocusOn(IDC_GREP_DIR);
        return;
    }
    bool found = false;
    try {
        found = DoGrep(dialog.m_pszFiles, dialog.m_pszDir, dialog.m_bListLines != 0,
                       dialog.m_pszSearch, &pattern);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    if (!found)
        KmMessageBox(&dialog, MB_ICONINFORMATION, IDS_CANNOTFIND, dialog.m_pszSearch.c_str());
    dialog.FocusOn(0);
}

// The log shows while the files are searched, under a wait cursor.
bool DoGrep(const char* fileList, const char* directory, bool listLines, const char* searchText,
            PatternBuffer* pattern)
{
    CKmFrame& frame = *theApp.Frame();
    CFileDir files;
    frame.BeginBusy(true);
    try {
        files.Read(directory, fileList);
    } catch (const std::bad_alloc&) {
        // the search goes on with the names read so far
    }
    CKmLog* log = CKmLog::Create(CKmLog::ToolLogFlags(), 1);
    if (log)
        log->SetTitleFmt(IDS_TITLE_GREP, searchText);
    frame.EndBusy();
    if (!log)
        ThrowMemoryException();
    frame.BeginBusy(false);
    int found = 0;
    try {
        while (const char* path = files.Next())
            if (GrepFile(path, listLines, log, pattern))
                ++found;
    } catch (...) {
        frame.EndBusy();
        throw;
    }
    frame.EndBusy();
    if (!found) {
        log->MDIDestroy();
        return false;
    }
    log->MarkClean();
    return true;
}

bool GrepFile(const char* path, bool listLines, CKmLog* log, PatternBuffer* pattern)
{
    int hits = 0;
    try {
        CGrepFile file(path);
        const char* name = PathRelativeTo(path, log->m_workDir);
        hits = GrepLines(file.Lines(), pattern, [&](int number, const char* text) {
            if (listLines)
                log->LogPrintf("%s(%d): %s\r\n", name, number, text);
        });
        file.Close();
    } catch (const CFileException& error) {
        ReportFileError(path, error, MB_ICONEXCLAMATION);
        return false;
    }
    if (!listLines && hits)
        log->LogPrintf("%s: %d\r\n", path, hits);
    return hits > 0;
}
