// kelmar.exe as the end-to-end tests drive it: started as a process of its
// own on the display the tests run on, found by its frame, and closed.
#pragma once
#include <windows.h>

#include <string>

namespace kmtest
{

// Polls until found() is true or the time is up.
template <typename Found> bool WaitFor(Found found, DWORD milliseconds = 20000)
{
    for (const DWORD start = ::GetTickCount(); !found(); ::Sleep(50))
        if (::GetTickCount() - start > milliseconds)
            return false;
    return true;
}

class Program
{
  public:
    ~Program();
    // Starts kelmar.exe with the arguments in dir and waits for its frame.
    bool Start(const std::string& arguments, const std::string& dir);
    // Posts WM_CLOSE and waits for the process to end; whether it did.
    bool Close();

    HWND frame = nullptr;
    HWND client = nullptr; // the frame's MDI client

  private:
    PROCESS_INFORMATION m_process = {};
};

// The program under test, from the command line of the test program.
extern std::string g_program;

} // namespace kmtest
