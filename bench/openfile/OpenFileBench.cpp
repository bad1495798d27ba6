// Opening and saving a large Unix-format source in the editor window, next
// to a plain copy of the same file as the floor. The open is split into its
// two halves: reading and converting the text block, and handing the block
// to the edit control.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "framework/Wnd.h"
#include "resources/KmIds.h"
#include "support/BenchSupport.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>
#include <windows.h>

using namespace bench;

namespace
{

size_t g_fileSize = 20u * 1024 * 1024; // the first argument sets it in MB

struct Times {
    double load = 0;      // LoadTextBlock alone
    double setHandle = 0; // EM_SETHANDLE of that block into a fresh control
    double open = 0;      // CKmFrame::OpenFile, the whole of it
    double save = 0;      // ID_FILE_SAVE after one changed character
    double reload = 0;    // LoadIntoEdit again in the open window
    double copy = 0;      // CopyFileA of the same file
};

// The two halves of an open, measured on their own.
void MeasureHalves(const std::string& path, Times& times)
{
    FileFormat format = FF_DOS;
    double start = NowMs();
    HLOCAL block = CKmFileEdit::LoadTextBlock(path.c_str(), 0xFFFFFFFFu, nullptr, format, 0);
    times.load = NowMs() - start;
    if (!block)
        return;
    HWND edit = ::CreateWindowExA(
        0, "EDIT", "",
        WS_POPUP | ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL | WS_HSCROLL | WS_VSCROLL, 0, 0,
        600, 400, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ::SendMessageA(edit, EM_LIMITTEXT, 0, 0);
    HLOCAL old = reinterpret_cast<HLOCAL>(::SendMessageA(edit, EM_GETHANDLE, 0, 0));
    start = NowMs();
    ::SendMessageA(edit, EM_SETHANDLE, reinterpret_cast<WPARAM>(block), 0);
    times.setHandle = NowMs() - start;
    ::LocalFree(old);
    ::DestroyWindow(edit); // frees the block with the control
}

bool MeasureEditor(CKmFrame* frame, const std::string& path, size_t size, Times& times)
{
    double start = NowMs();
    CKmChild* child = frame->OpenFile(path.c_str(), false, false);
    times.open = NowMs() - start;
    if (!child)
        return false;
    HWND edit = ::GetDlgItem(child->m_hWnd, IDC_EDIT);
    ::SendMessageA(edit, EM_SETSEL, 0, 1);
    ::SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("S"));
    start = NowMs();
    ::SendMessageA(child->m_hWnd, WM_COMMAND, ID_FILE_SAVE, 0);
    times.save = NowMs() - start;
    WIN32_FILE_ATTRIBUTE_DATA saved = {};
    ::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &saved);
    if (saved.nFileSizeLow != size || saved.nFileSizeHigh != 0)
        printf("%s: the save wrote %lu bytes, not %lu\n", path.c_str(), saved.nFileSizeLow,
               static_cast<unsigned long>(size));
    start = NowMs();
    static_cast<CKmFileEdit*>(child)->LoadIntoEdit(path.c_str(), false);
    times.reload = NowMs() - start;
    ::SendMessageA(child->m_hWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    return true;
}

void Report(const char* name, const Times& t, size_t size)
{
    printf("%s: %.1f MB\n", name, static_cast<double>(size) / (1024.0 * 1024.0));
    printf("  copy (CopyFileA)        %9.1f ms\n", t.copy);
    printf("  open (OpenFile)         %9.1f ms   open/copy %7.1f\n", t.open, t.open / t.copy);
    printf("    load (LoadTextBlock)  %9.1f ms\n", t.load);
    printf("    EM_SETHANDLE          %9.1f ms\n", t.setHandle);
    printf("  reload (LoadIntoEdit)   %9.1f ms   in the window's own control\n", t.reload);
    printf("  save (ID_FILE_SAVE)     %9.1f ms   save/copy %7.1f\n", t.save, t.save / t.copy);
}

bool RunOne(CKmFrame* frame, const std::string& dir, const char* name, const char* eol)
{
    const std::string path = dir + "\\" + name;
    const std::string copy = path + ".copy";
    const std::string text = MakeSource(g_fileSize, eol);
    if (!WriteAll(path, text)) {
        printf("cannot write %s\n", path.c_str());
        return false;
    }
    Times times;
    double start = NowMs();
    ::CopyFileA(path.c_str(), copy.c_str(), FALSE);
    times.copy = NowMs() - start;
    MeasureHalves(path, times);
    bool opened = MeasureEditor(frame, path, text.size(), times);
    if (opened)
        Report(name, times, text.size());
    else
        printf("%s: the editor did not open the file\n", name);
    ::DeleteFileA(copy.c_str());
    ::DeleteFileA(path.c_str());
    return opened;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && atoi(argv[1]) > 0)
        g_fileSize = static_cast<size_t>(atoi(argv[1])) * 1024 * 1024;
    char temp[MAX_PATH];
    ::GetTempPathA(MAX_PATH, temp);
    const std::string dir = std::string(temp) + "kmbench" + std::to_string(::GetCurrentProcessId());
    ::CreateDirectoryA(dir.c_str(), nullptr);

    BoxWatch watch(IDCANCEL); // questions would be a fault here
    if (!StartApplication()) {
        printf("no frame\n");
        return 1;
    }
    bool ok = RunOne(theApp.Frame(), dir, "unix.c", "\n");
    ok = RunOne(theApp.Frame(), dir, "dos.c", "\r\n") && ok;
    for (const std::string& text : watch.texts)
        printf("unexpected question: %s\n", text.c_str());
    EndApplication();
    ::RemoveDirectoryA(dir.c_str());
    return ok && watch.texts.empty() ? 0 : 1;
}
