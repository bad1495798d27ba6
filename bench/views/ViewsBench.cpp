// A large text file in the text view: the open up to its first screen, the
// thumb at the middle, Ctrl+End, and what the process holds with the file
// open, against the line index. run.sh times wc -l of the same file.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/BenchSupport.h"
#include "views/FileSource.h"
#include "views/LineFile.h"
#include "views/TextFileView.h"
#include "search/SearchRequest.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <psapi.h>
#include <vector>
#include <windows.h>

using namespace bench;

namespace
{

double ResidentMb(bool peak)
{
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return double(peak ? counters.PeakWorkingSetSize : counters.WorkingSetSize) / (1024 * 1024);
}

// Sends a message to the view and waits until its window is painted.
double Timed(CFileView* view, UINT message, WPARAM wParam)
{
    const double start = NowMs();
    view->SendMessage(message, wParam);
    ::UpdateWindow(view->m_hWnd);
    return NowMs() - start;
}

using Times = std::vector<double>;

int Runs()
{
    const char* runs = getenv("KM_BENCH_RUNS");
    return runs && atoi(runs) > 0 ? atoi(runs) : 5;
}

void Report(const char* row, Times times)
{
    std::sort(times.begin(), times.end());
    printf("  %-22s %9.1f %8.1f %8.1f\n", row, times.front(), times[times.size() / 2], times.back());
}

// Opens a file in the view up to its first screen; closes it again unless
// it is to stay.
double TimedOpen(const char* path, bool close)
{
    const double start = NowMs();
    CFileView* view = dynamic_cast<CFileView*>(theApp.Frame()->OpenFile(path, true, false));
    if (view)
        ::UpdateWindow(view->m_hWnd);
    const double took = NowMs() - start;
    if (view && close) {
        view->SendMessage(WM_CLOSE);
        PumpUntilIdle();
    }
    return took;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        printf("usage: views_bench file\n");
        return 2;
    }
    BoxWatch watch(IDCANCEL); // a question would be a fault here
    if (!StartApplication()) {
        printf("no frame\n");
        return 1;
    }
    const int runs = Runs();
    // The platform's own reading of the whole file: a second floor, beside wc -l.
    Times reads, index, small, open;
    std::vector<char> chunk(0x40000);
    for (int run = 0; run < runs; ++run) {
        HANDLE file = ::CreateFileA(argv[1], GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
        DWORD got = 0;
        const double start = NowMs();
        while (::ReadFile(file, chunk.data(), DWORD(chunk.size()), &got, nullptr) && got)
            ;
        reads.push_back(NowMs() - start);
        ::CloseHandle(file);
    }
    // The line index alone, with no window: what the open spends elsewhere.
    for (int run = 0; run < runs; ++run) {
        CLineFile lines(8);
        const double start = NowMs();
        OpenRecordFile(lines, argv[1]);
        index.push_back(NowMs() - start);
    }
    // The window's own cost: a file of one line in the view.
    const char* name = "views_bench_small.txt";
    FILE* out = fopen(name, "wb");
    fputs("one line\n", out);
    fclose(out);
    for (int run = 0; run < runs; ++run)
        small.push_back(TimedOpen(name, true));
    remove(name);
    double before = 0;
    for (int run = 0; run < runs; ++run) {
        before = ResidentMb(false);
        open.push_back(TimedOpen(argv[1], run + 1 < runs));
    }
    auto* view = dynamic_cast<CTextFileView*>(theApp.Frame()->MDIGetActive());
    if (!view) {
        printf("the view did not open %s\n", argv[1]);
        return 1;
    }
    const double middle = Timed(view, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 500));
    const long middleTop = view->m_nTopLine;
    const double end = Timed(view, FVM_BOTTOM, 0);
    // A find from the top for a text that no line holds reads every line.
    view->SendMessage(FVM_TOP, 0);
    g_searchRequest.m_strFind = "frobnicate";
    g_searchRequest.m_bRecompile = 1;
    double start = NowMs();
    view->FindText(&g_searchRequest, false, -1, 0);
    const double find = NowMs() - start;
    const double lines = view->m_pFile->m_nRecordCount;
    printf("text view of %s: %.0f lines, %.1f MB\n", argv[1], lines,
           double(view->m_pFile->m_nFileLength) / (1024 * 1024));
    printf("  %d runs each, in ms:       fastest   median  slowest\n", runs);
    Report("ReadFile of it all", reads);
    Report("line index alone", index);
    Report("a file of one line", small);
    Report("open to first screen", open);
    printf("  thumb to the middle   %9.1f ms   top line %ld\n", middle, middleTop);
    printf("  Ctrl+End              %9.1f ms\n", end);
    printf("  find a missing text   %9.1f ms   MB/s %.0f\n", find,
           double(view->m_pFile->m_nFileLength) / (1024 * 1024) / (find / 1000));
    printf("  resident %.1f MB (peak %.1f), %.1f MB before the open; line index %.1f MB\n",
           ResidentMb(false), ResidentMb(true), before, (lines + 1) * 4 / (1024 * 1024));
    for (const std::string& text : watch.texts)
        printf("unexpected question: %s\n", text.c_str());
    EndApplication();
    return watch.texts.empty() ? 0 : 1;
}
