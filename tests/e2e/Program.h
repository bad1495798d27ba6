// kelmar.exe as the end-to-end tests drive it: a process of its own on the
// tests' display, found by its frame, and closed as a user would.
#pragma once
#include <windows.h>

#include <string>
#include <utility>

namespace kmtest
{

extern std::string g_program; // kelmar.exe, as a Windows path

// Polls until found() is true or the time is up.
template <typename Found> bool WaitFor(Found found, DWORD milliseconds = 20000)
{
    for (const DWORD start = ::GetTickCount(); !found(); ::Sleep(50))
        if (::GetTickCount() - start > milliseconds)
            return false;
    return true;
}

struct Program {
    PROCESS_INFORMATION process = {};
    HWND frame = nullptr, client = nullptr;

    ~Program()
    {
        ::TerminateProcess(process.hProcess, 1); // when it did not end
        ::CloseHandle(process.hProcess);
        ::CloseHandle(process.hThread);
    }
    // Starts kelmar.exe with the arguments in dir; whether its frame came.
    bool Start(const std::string& arguments, const std::string& dir)
    {
        std::string line = "\"" + g_program + "\" " + arguments;
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        if (!::CreateProcessA(g_program.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                              dir.c_str(), &startup, &process))
            return false;
        std::pair<DWORD, HWND> search = {process.dwProcessId, nullptr};
        if (!WaitFor([&] { return !::EnumWindows(FindFrame, reinterpret_cast<LPARAM>(&search)); }))
            return false;
        frame = search.second;
        client = ::FindWindowExA(frame, nullptr, "MDICLIENT", nullptr);
        return true;
    }
    // Whether the process ended on WM_CLOSE.
    bool Close()
    {
        ::PostMessageA(frame, WM_CLOSE, 0, 0);
        return ::WaitForSingleObject(process.hProcess, 20000) == WAIT_OBJECT_0;
    }
    // The process's top-level window that holds an MDI client.
    static BOOL CALLBACK FindFrame(HWND hwnd, LPARAM lParam)
    {
        auto* search = reinterpret_cast<std::pair<DWORD, HWND>*>(lParam);
        DWORD owner = 0;
        ::GetWindowThreadProcessId(hwnd, &owner);
        if (owner == search->first && ::FindWindowExA(hwnd, nullptr, "MDICLIENT", nullptr))
            search->second = hwnd;
        return !search->second;
    }
};

} // namespace kmtest
