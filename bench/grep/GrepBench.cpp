// The global search under wine over the tree that grep_floor made: the
// search through its dialog into a log, with the matching lines and with
// the counts only; the same line scan with no log at all, and the log's
// control alone taking as many lines, which show where the time goes.
// run.sh sets these beside grep -rn and the native floor.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmLog.h"
#include "resources/KmIds.h"
#include "search/GlobalSearch.h"
#include "search/GrepDialog.h"
#include "search/SearchRequest.h"
#include "support/BenchSupport.h"
#include "tools/FileDir.h"

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace bench;

namespace
{

void Row(const char* text, const char* what, double ms, long hits)
{
    printf("%s|%s|%.3f|%ld\n", text, what, ms / 1000, hits);
}

// Every *.c file read and searched as the global search does, no log.
void ScanOnly(const std::string& dir, const char* text, bool word)
{
    PatternBuffer pattern;
    AllocatePattern(pattern);
    CompileSearchText(text, word, &pattern);
    BuildFirstCharMap(&pattern);
    const double start = NowMs();
    CFileDir files;
    files.Read(dir.c_str(), "*.c");
    long hits = 0;
    while (const char* path = files.Next()) {
        CGrepFile file(path);
        hits += GrepLines(file.Lines(), &pattern, nullptr);
        file.Close();
    }
    Row(text, "engine line scan, wine, no log", NowMs() - start, hits);
    free(pattern.buffer);
}

// Every *.c file opened and read whole through the file layer, no search.
void ReadOnly(const std::string& dir)
{
    const double start = NowMs();
    CFileDir files;
    files.Read(dir.c_str(), "*.c");
    static char block[65536];
    long bytes = 0;
    while (const char* path = files.Next()) {
        CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
        for (unsigned got; (got = file.Read(block, sizeof block)) != 0;)
            bytes += got;
        file.Close();
    }
    Row("frobnicate", "the files read, no search (MB)", NowMs() - start, bytes >> 20);
}

// The dialog's OK to the end of the search; the lines of the log.
long Search(const std::string& dir, const char* text, bool word, bool listLines)
{
    theApp.Frame()->SendMessage(WM_COMMAND, ID_SEARCH_GREP);
    HWND dialog = g_grepDialog->m_hWnd;
    ::SetDlgItemTextA(dialog, IDC_GREP_SEARCH, text);
    ::SetDlgItemTextA(dialog, IDC_GREP_FILES, "*.c");
    ::SetDlgItemTextA(dialog, IDC_GREP_DIR, dir.c_str());
    ::CheckDlgButton(dialog, IDC_GREP_WHOLEWORD, word ? BST_CHECKED : BST_UNCHECKED);
    ::CheckDlgButton(dialog, IDC_GREP_LISTLINES, listLines ? BST_CHECKED : BST_UNCHECKED);
    BoxWatch watch(IDOK);
    const double start = NowMs();
    ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    const double ms = NowMs() - start;
    CKmChild* log = theApp.Frame()->m_pActiveChild;
    HWND edit = log ? ::GetDlgItem(log->m_hWnd, IDC_EDIT) : nullptr;
    const long lines =
        edit ? static_cast<long>(::SendMessageA(edit, EM_GETLINECOUNT, 0, 0)) - 1 : 0;
    Row(text, listLines ? "global search, lines to the log" : "global search, counts to the log",
        ms, lines);
    for (const std::string& box : watch.texts)
        printf("  box: %s\n", box.c_str());
    if (log)
        ::SendMessageA(log->m_hWnd, WM_CLOSE, 0, 0);
    ::SendMessageA(dialog, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    return lines;
}

// What the log's control alone takes for that many lines.
void LogAlone(const char* text, long lines)
{
    CKmLog* log = CKmLog::Create(CKmLog::ToolLogFlags(), 1);
    const double start = NowMs();
    for (long i = 0; i < lines; ++i)
        log->LogPrintf("f%ld.c(%ld): %s\r\n", i, i, "    frobnicate(p, 1234567);");
    Row(text, "the same lines to a log, no search", NowMs() - start, lines);
    log->MarkClean();
    ::SendMessageA(log->m_hWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
}

} // namespace

// The one argument is the tree's directory.
int main(int argc, char** argv)
{
    const std::string dir = argc > 1 ? argv[1] : ".";
    if (!StartApplication()) {
        printf("no frame\n");
        return 1;
    }
    ReadOnly(dir);
    for (bool word : {false, true}) {
        const char* text = word ? "tally" : "frobnicate";
        ScanOnly(dir, text, word);
        Search(dir, text, word, false);
        LogAlone(text, Search(dir, text, word, true));
    }
    EndApplication();
    return 0;
}
