// kelmar.exe closed on two files and started again without arguments: the
// session brings the windows back, stacked the other way round.
#include "Program.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

// The captions of the frame's windows from the top, once two have settled.
std::vector<std::string> Stacking(HWND client)
{
    WaitFor([&] { return ::GetWindow(::GetWindow(client, GW_CHILD), GW_HWNDNEXT) != nullptr; });
    ::Sleep(500);
    std::vector<std::string> captions;
    for (HWND hwnd = ::GetWindow(client, GW_CHILD); hwnd; hwnd = ::GetWindow(hwnd, GW_HWNDNEXT))
        if (!::GetWindow(hwnd, GW_OWNER))
            captions.push_back(WindowText(hwnd));
    return captions;
}

TEST(SessionTest, TheWindowsComeBackInReversedOrder)
{
    char temp[MAX_PATH];
    ::GetTempPathA(MAX_PATH, temp);
    const std::string dir = std::string(temp) + "kme2es" + std::to_string(::GetCurrentProcessId());
    ::CreateDirectoryA(dir.c_str(), nullptr);
    for (const char* name :
         {"\\a.c", "\\b.c", "\\kelmar.ini"}) // settings here, not beside the program
        WriteFileBytes(dir + name, "");
    std::vector<std::string> before, after;
    for (const char* arguments : {"a.c b.c", ""}) {
        Program program;
        ASSERT_TRUE(program.Start(arguments, dir)) << "cannot start " << g_program;
        (*arguments ? before : after) = Stacking(program.client);
        EXPECT_TRUE(program.Close());
    }
    EXPECT_EQ((std::set<std::string>{Lower(dir + "\\a.c"), Lower(dir + "\\b.c")}),
              std::set<std::string>(before.begin(), before.end()));
    EXPECT_EQ(std::vector<std::string>(before.rbegin(), before.rend()), after);
    RemoveTree(dir);
}

} // namespace
