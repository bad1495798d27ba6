#include "Program.h"

#include <gtest/gtest.h>

#include <utility>

namespace kmtest
{

std::string g_program;

namespace
{

// The process's top-level window that holds an MDI client.
BOOL CALLBACK FindFrame(HWND hwnd, LPARAM lParam)
{
    auto* search = reinterpret_cast<std::pair<DWORD, HWND>*>(lParam);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(hwnd, &owner);
    if (owner == search->first && ::FindWindowExA(hwnd, nullptr, "MDICLIENT", nullptr))
        search->second = hwnd;
    return !search->second;
}

} // namespace

Program::~Program()
{
    if (!m_process.hProcess)
        return;
    ::TerminateProcess(m_process.hProcess, 1); // when it did not end
    ::CloseHandle(m_process.hProcess);
    ::CloseHandle(m_process.hThread);
}

bool Program::Start(const std::string& arguments, const std::string& dir)
{
    std::string line = "\"" + g_program + "\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    if (!::CreateProcessA(g_program.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                          dir.c_str(), &startup, &m_process))
        return false;
    std::pair<DWORD, HWND> search = {m_process.dwProcessId, nullptr};
    if (!WaitFor([&] { return !::EnumWindows(FindFrame, reinterpret_cast<LPARAM>(&search)); }))
        return false;
    frame = search.second;
    client = ::FindWindowExA(frame, nullptr, "MDICLIENT", nullptr);
    return true;
}

bool Program::Close()
{
    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    return ::WaitForSingleObject(m_process.hProcess, 20000) == WAIT_OBJECT_0;
}

} // namespace kmtest

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) { // the build passes a path of the host: /x/y becomes Z:\x\y
        std::string& program = kmtest::g_program;
        program = argv[1][0] == '/' ? std::string("Z:") + argv[1] : argv[1];
        for (char& c : program)
            c = c == '/' ? '\\' : c;
    }
    return RUN_ALL_TESTS();
}
