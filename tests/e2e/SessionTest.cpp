// kelmar.exe closed on two files and started again without arguments: the
// session brings the windows back.
#include "Program.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

// The captions of the frame's windows from the top down, once two are
// there and have settled.
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
    const std::string a = Lower(dir + "\\a.c"), b = Lower(dir + "\\b.c");
    WriteFileBytes(a, "int a;\r\n");
    WriteFileBytes(b, "int b;\r\n");
    WriteFileBytes(dir + "\\kelmar.ini", ""); // read and written here, not beside the program

    std::vector<std::string> before;
    {
        Program program;
        ASSERT_TRUE(program.Start("a.c b.c", dir)) << "cannot start " << g_program;
        before = Stacking(program.client);
        EXPECT_TRUE(program.Close());
    }
    ASSERT_EQ((std::set<std::string>{a, b}), std::set<std::string>(before.begin(), before.end()));
    {
        Program program;
        ASSERT_TRUE(program.Start("", dir));
        EXPECT_EQ((std::vector<std::string>{before[1], before[0]}), Stacking(program.client));
        EXPECT_TRUE(program.Close());
    }
    RemoveTree(dir);
}

} // namespace
