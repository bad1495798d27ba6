#include "support/BenchSupport.h"

#include "app/KmApp.h"
#include "framework/Wnd.h"

#include <cstdio>
#include <cstring>

namespace bench
{

namespace
{
BoxWatch* g_watch = nullptr;
} // namespace

double NowMs()
{
    static double ticksPerMs = 0;
    if (ticksPerMs == 0) {
        LARGE_INTEGER frequency;
        ::QueryPerformanceFrequency(&frequency);
        ticksPerMs = static_cast<double>(frequency.QuadPart) / 1000.0;
    }
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) / ticksPerMs;
}

void PumpUntilIdle()
{
    MSG msg;
    for (DWORD quiet = ::GetTickCount(); ::GetTickCount() - quiet < 50;) {
        if (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
            quiet = ::GetTickCount();
        } else {
            ::Sleep(1);
        }
    }
}

std::string MakeSource(size_t size, const char* eol)
{
    std::string text;
    text.reserve(size + 128);
    char line[128];
    for (unsigned i = 0; text.size() < size; ++i) {
        switch (i % 6) {
        case 0:
            snprintf(line, sizeof line, "static int value_%u(struct item* p, int n)%s", i, eol);
            break;
        case 1:
            snprintf(line, sizeof line, "{%s", eol);
            break;
        case 2:
            snprintf(line, sizeof line, "    int total = n * %u + p->count;%s", i % 97, eol);
            break;
        case 3:
            snprintf(line, sizeof line, "\tif (total > %u) /* clamp */%s\t\ttotal = 0;%s", i, eol,
                     eol);
            break;
        case 4:
            snprintf(line, sizeof line, "    return total;%s", eol);
            break;
        default:
            snprintf(line, sizeof line, "}%s%s", eol, eol);
            break;
        }
        text += line;
    }
    return text;
}

bool WriteAll(const std::string& path, const std::string& text)
{
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    BOOL ok = ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(file);
    return ok && written == text.size();
}

BoxWatch::BoxWatch(int answer)
    : answer(answer), m_hook(::SetWindowsHookExA(WH_CBT, Hook, nullptr, ::GetCurrentThreadId()))
{
    g_watch = this;
}

BoxWatch::~BoxWatch()
{
    ::UnhookWindowsHookEx(m_hook);
    g_watch = nullptr;
}

LRESULT CALLBACK BoxWatch::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_watch) {
        HWND box = reinterpret_cast<HWND>(wParam);
        char name[16] = "";
        ::GetClassNameA(box, name, sizeof name);
        if (strcmp(name, "#32770") == 0) {
            char text[1024] = "";
            ::GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
            g_watch->texts.push_back(text);
            ::PostMessageA(box, WM_COMMAND, g_watch->answer, 0);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

bool StartApplication()
{
    theApp.SetInstance(::GetModuleHandleA(nullptr), nullptr, "-s", SW_SHOWNORMAL);
    return theApp.InitInstance() && theApp.Frame();
}

void EndApplication()
{
    ::SendMessageA(theApp.m_pMainWnd->m_hWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
}

} // namespace bench
