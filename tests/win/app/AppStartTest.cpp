// Start-up on a command line: switches, file words, references in them.
#include "AppTestBase.h"

#include "app/KmApp.h"
#include "app/Settings.h"
#include "resources/KmIds.h"

#include <vector>

namespace
{

std::string Lines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "line " + std::to_string(i) + " of the file\r\n";
    return text;
}

// Whether the children stand side by side, each as high as the client.
bool TiledAcross(HWND client)
{
    RECT area;
    ::GetClientRect(client, &area);
    int count = 0;
    for (HWND child = ::GetWindow(client, GW_CHILD); child;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetWindow(child, GW_OWNER))
            continue;
        RECT rect;
        ::GetWindowRect(child, &rect);
        ::MapWindowPoints(nullptr, client, reinterpret_cast<POINT*>(&rect), 2);
        if (rect.top != 0 || rect.bottom - rect.top != area.bottom)
            return false;
        ++count;
    }
    return count > 1;
}

std::vector<std::string> g_printed; // captions of windows sent ID_FILE_PRINT

LRESULT CALLBACK WatchPrint(int code, WPARAM wParam, LPARAM lParam)
{
    const CWPSTRUCT* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && call->message == WM_COMMAND && LOWORD(call->wParam) == ID_FILE_PRINT) {
        char text[MAX_PATH + 1] = "";
        ::GetWindowTextA(call->hwnd, text, sizeof text);
        g_printed.push_back(text);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

class AppStartTest : public AppTestBase
{
};

TEST_F(AppStartTest, SafeModeOpensTheFilesWithoutArrangingThem)
{
    WriteFile("a.c", Lines(3));
    WriteFile("b.c", Lines(4));

    ASSERT_TRUE(Start("-s -av a.c b.c"));
    EXPECT_EQ(theApp.safeMode, 1);
    EXPECT_EQ(theApp.arrange, 0);
    EXPECT_EQ(ChildCaptions(), (std::set<std::string>{FullLower("a.c"), FullLower("b.c")}));
    EXPECT_FALSE(TiledAcross(MdiClient()));
    EXPECT_TRUE(m_boxes.texts.empty());
    CloseFrame();

    // The same without -s: the files are tiled as -av asks.
    ASSERT_TRUE(Start("-av a.c b.c"));
    EXPECT_EQ(theApp.safeMode, 0);
    EXPECT_EQ(ChildCaptions().size(), 2u);
    EXPECT_TRUE(TiledAcross(MdiClient()));
    EXPECT_TRUE(::GetWindowLongPtrA(m_frame, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

TEST_F(AppStartTest, EditOnlyTurnsTheProjectOffForTheRun)
{
    for (bool editOnly : {true, false}) {
        SCOPED_TRACE(editOnly ? "-e" : "no switch");
        ASSERT_TRUE(Start(editOnly ? "-e" : ""));
        EXPECT_EQ((theApp.flags & KF_NOPROJECT) != 0, editOnly);
        // The Project popup is the third of the menu without files.
        UINT state = ::GetMenuState(::GetMenu(m_frame), 2, MF_BYPOSITION);
        EXPECT_EQ((state & MF_GRAYED) != 0, editOnly);
        CloseFrame();
    }
}

TEST_F(AppStartTest, CapitalPAfterSlashPrintsEachFileAndEnds)
{
    WriteFile("a.c", Lines(3));
    g_printed.clear();
    HHOOK watch = ::SetWindowsHookExA(WH_CALLWNDPROC, WatchPrint, nullptr, ::GetCurrentThreadId());

    // A missing file gives the question of opening, and the next one follows.
    EXPECT_FALSE(Start("/P missing.c a.c"));
    ::UnhookWindowsHookEx(watch);

    ASSERT_EQ(m_boxes.texts.size(), 1u);
    EXPECT_NE(m_boxes.texts[0].find("missing.c"), std::string::npos);
    EXPECT_FALSE(Exists("missing.c"));
    EXPECT_EQ(g_printed, std::vector<std::string>{FullLower("a.c")});
    ASSERT_NE(m_frame, nullptr);
    EXPECT_TRUE(ChildCaptions().empty()); // printed and destroyed
    EXPECT_FALSE(::GetWindowLongPtrA(m_frame, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

// The settings layer is to drop a project directory that does not exist;
// until it reads settings, the word stays as given and the run goes on.
TEST_F(AppStartTest, ProjectDirectoryThatIsNoDirectoryDoesNotStopTheStart)
{
    WriteFile("a.c", Lines(2));

    ASSERT_TRUE(Start("-d nosuchdir a.c"));
    EXPECT_STREQ(theApp.m_strProjectDir.c_str(), "nosuchdir");
    EXPECT_EQ(ChildCaptions(), std::set<std::string>{FullLower("a.c")});
    EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(AppStartTest, SwitchBehindAFileNameIsAFileName)
{
    WriteFile("a.c", Lines(2));
    WriteFile("b.c", Lines(2));

    ASSERT_TRUE(Start("a.c b.c -s")); // the offer to create "-s" is refused
    EXPECT_EQ(theApp.safeMode, 0);
    ASSERT_EQ(m_boxes.texts.size(), 1u);
    EXPECT_NE(m_boxes.texts[0].find("OK to create new"), std::string::npos);
    EXPECT_NE(m_boxes.texts[0].find("\\-s'"), std::string::npos); // resolved at start
    EXPECT_FALSE(Exists("-s"));
    EXPECT_EQ(ChildCaptions(), (std::set<std::string>{FullLower("a.c"), FullLower("b.c")}));
    CloseFrame();

    m_boxes.Queue(IDYES);
    ASSERT_TRUE(Start("a.c b.c -s"));
    EXPECT_TRUE(Exists("-s"));
    EXPECT_EQ(ChildCaptions(),
              (std::set<std::string>{FullLower("a.c"), FullLower("b.c"), FullLower("-s")}));
}

TEST_F(AppStartTest, ReferenceInAWordPlacesTheCaret)
{
    WriteFile("prog.c", Lines(20));
    std::string unix;
    for (int i = 1; i <= 9; ++i)
        unix += "row " + std::to_string(i) + "\n";
    WriteFile("foo", unix);

    // foo(3).c is read as the file foo at line 3.
    ASSERT_TRUE(Start("prog.c(12,5) foo(3).c"));
    EXPECT_TRUE(m_boxes.texts.empty());

    HWND prog = ChildByCaption(FullLower("prog.c"));
    ASSERT_NE(prog, nullptr);
    CaretPlace place = CaretOf(prog);
    EXPECT_EQ(place.line, 11);
    EXPECT_EQ(place.column, 4);

    HWND foo = ChildByCaption(FullLower("foo"));
    ASSERT_NE(foo, nullptr);
    place = CaretOf(foo);
    EXPECT_EQ(place.line, 2);
    EXPECT_EQ(place.column, 0);
    EXPECT_EQ(ChildCaptions().size(), 2u);
}

TEST_F(AppStartTest, WordWithoutReferenceOpensAtTheTop)
{
    WriteFile("prog.c", Lines(20));
    ASSERT_TRUE(Start("prog.c"));
    HWND prog = ChildByCaption(FullLower("prog.c"));
    ASSERT_NE(prog, nullptr);
    CaretPlace place = CaretOf(prog);
    EXPECT_EQ(place.line, 0);
    EXPECT_EQ(place.column, 0);
}

// The hexadecimal view does not exist yet: the frame only alerts, and above
// all no editor loads the binary file.
TEST_F(AppStartTest, HexAddressOpensNoEditor)
{
    std::string binary(0x2000, '\0');
    for (size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<char>(i * 7);
    WriteFile("prog.exe", binary);

    ASSERT_TRUE(Start("prog.exe(0x1F00)"));
    EXPECT_TRUE(ChildCaptions().empty());
    EXPECT_TRUE(m_boxes.texts.empty());
}

// Each window makes its own directory the current one, so the names of the
// command line are taken against the directory the program started in.
TEST_F(AppStartTest, RelativeNamesOfTheCommandLineNameTheFilesOfTheStartDirectory)
{
    ASSERT_TRUE(::CreateDirectoryA((m_dir + "\\app").c_str(), nullptr));
    ASSERT_TRUE(::CreateDirectoryA((m_dir + "\\edit").c_str(), nullptr));
    WriteFile("app\\frame.c", Lines(2));
    WriteFile("edit\\editor.c", Lines(20));

    ASSERT_TRUE(Start("app\\frame.c edit\\editor.c(12,5)"));
    EXPECT_TRUE(m_boxes.texts.empty()); // no offer to create anything
    EXPECT_EQ(ChildCaptions(),
              (std::set<std::string>{FullLower("app\\frame.c"), FullLower("edit\\editor.c")}));
    const CaretPlace place = CaretOf(ChildByCaption(FullLower("edit\\editor.c")));
    EXPECT_EQ(11, place.line);
    EXPECT_EQ(4, place.column);
}
