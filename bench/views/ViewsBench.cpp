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

#include <cstdio>
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
    // The platform's own reading of the whole file: a second floor, beside wc -l.
    HANDLE file =
        ::CreateFileA(argv[1], GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::vector<char> chunk(0x40000);
    DWORD got = 0;
    double start = NowMs();
    while (::ReadFile(file, chunk.data(), DWORD(chunk.size()), &got, nullptr) && got)
        ;
    const double reads = NowMs() - start;
    ::CloseHandle(file);
    // The line index alone, with no window: what the open spends elsewhere.
    double index = 0;
    {
        CLineFile lines(8);
        start = NowMs();
        OpenRecordFile(lines, argv[1]);
        index = NowMs() - start;
    }
    // The window's own cost: a file of one line in the view.
    double small = 0;
    {
        const char* name = "views_bench_small.txt";
        FILE* out = fopen(name, "wb");
        fputs("one line\n", out);
        fclose(out);
        start = NowMs();
        CFileView* tiny = dynamic_cast<CFileView*>(theApp.Frame()->OpenFile(name, true, false));
        if (tiny)
            ::UpdateWindow(tiny->m_hWnd);
        small = NowMs() - start;
        if (tiny)
            tiny->SendMessage(WM_CLOSE);
        PumpUntilIdle();
        remove(name);
    }
    const double before = ResidentMb(false);
    start = NowMs();
    auto* view = dynamic_cast<CTextFileView*>(theApp.Frame()->OpenFile(argv[1], true, false));
    if (view)
        ::UpdateWindow(view->m_hWnd);
    const double open = NowMs() - start;
    if (!view) {
        printf("the view did not open %s\n", argv[1]);
        return 1;
    }
    const double middle = Timed(view, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 500));
    const long middleTop = view->m_nTopLine;
    const double end = Timed(view, FVM_BOTTOM, 0);
    const double lines = view->m_pFile->m_nRecordCount;
    printf("text view of %s: %.0f lines, %.1f MB\n", argv[1], lines,
           double(view->m_pFile->m_nFileLength) / (1024 * 1024));
    printf("  ReadFile of it all    %9.1f ms\n", reads);
    printf("  line index alone      %9.1f ms\n", index);
    printf("  a file of one line    %9.1f ms\n", small);
    printf("  open to first screen  %9.1f ms\n", open);
    printf("  thumb to the middle   %9.1f ms   top line %ld\n", middle, middleTop);
    printf("  Ctrl+End              %9.1f ms\n", end);
    printf("  resident %.1f MB (peak %.1f), %.1f MB before the open; line index %.1f MB\n",
           ResidentMb(false), ResidentMb(true), before, (lines + 1) * 4 / (1024 * 1024));
    for (const std::string& text : watch.texts)
        printf("unexpected question: %s\n", text.c_str());
    EndApplication();
    return watch.texts.empty() ? 0 : 1;
}
