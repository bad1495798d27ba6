// Start-up on a command line (switches, file words, references in them) and
// the frame's intake of DDE commands.
#include "app/KmApp.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "views/HexFileView.h"

#include <dde.h>

using namespace kmtest;

namespace
{

std::string Lines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "line " + std::to_string(i) + " of the file\r\n";
    return text;
}

std::vector<std::string> g_printed; // captions of windows sent ID_FILE_PRINT

LRESULT CALLBACK WatchPrint(int code, WPARAM wParam, LPARAM lParam)
{
    const CWPSTRUCT* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && call->message == WM_COMMAND && LOWORD(call->wParam) == ID_FILE_PRINT)
        g_printed.push_back(WindowText(call->hwnd));
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

using AppStartTest = FrameTest;

// -s opens the files without arranging them as -av asks; -e turns the
// project off for the run, and the menu without files grays its popup.
TEST_F(AppStartTest, SafeModeOpensTheFilesWithoutArrangingThemAndEditOnlyGraysTheProject)
{
    Write("a.c", Lines(3));
    Write("b.c", Lines(4));
    for (const bool switches : {true, false}) {
        SCOPED_TRACE(switches);
        ASSERT_TRUE(Start(switches ? "-s -e -av a.c b.c" : "-av a.c b.c"));
        EXPECT_EQ(switches, theApp.safeMode);
        EXPECT_EQ(ARRANGE_TILEACROSS, theApp.arrange);
        ASSERT_EQ(ChildCaptions(), (std::set<std::string>{FullLower("a.c"), FullLower("b.c")}));
        const RECT a = Place(Children()[0], MdiClient()), b = Place(Children()[1], MdiClient());
        EXPECT_EQ(!switches, a.top == b.top && a.left != b.left); // side by side
        EXPECT_TRUE(::GetWindowLongPtrA(m_frameWnd, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
        EXPECT_EQ(switches, (theApp.flags & KF_NOPROJECT) != 0);
        Command(ID_WINDOW_CLOSEALL);
        const UINT state =
            ::GetMenuState(::GetMenu(m_frameWnd), kNoFileProjectPopup, MF_BYPOSITION);
        EXPECT_EQ(switches, (state & MF_GRAYED) != 0);
        CloseFrame();
    }
}

TEST_F(AppStartTest, CapitalPAfterSlashPrintsEachFileAndEnds)
{
    Write("a.c", Lines(3));
    g_printed.clear();
    HHOOK watch = ::SetWindowsHookExA(WH_CALLWNDPROC, WatchPrint, nullptr, ::GetCurrentThreadId());
    // missing.c is offered for creation, refused; a.c's print dialog cancelled.
    m_boxes.Queue({IDNO, IDCANCEL});
    EXPECT_FALSE(Start("/P missing.c a.c"));
    ::UnhookWindowsHookEx(watch);
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_NE(std::string::npos, m_boxes.Boxes()[0].text.find("missing.c"));
    EXPECT_FALSE(Exists(Path("missing.c")));
    EXPECT_EQ(std::vector<std::string>{FullLower("a.c")}, g_printed);
    ASSERT_NE(nullptr, m_frameWnd);
    EXPECT_TRUE(Children().empty()); // printed and destroyed
    EXPECT_FALSE(::GetWindowLongPtrA(m_frameWnd, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

// Every name is resolved against the start directory before a window
// opens, although each window makes its own directory the current one. A
// hex address is for the hex view: no editor loads the binary file. A
// switch behind a file name is a file name; a project directory that does
// not exist is dropped.
TEST_F(AppStartTest, FileWordsOpenWhereTheyAreWithTheCaretAtTheirReferenceAndSwitchesBehindThem)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("one").c_str(), nullptr));
    ASSERT_TRUE(::CreateDirectoryA(Path("two").c_str(), nullptr));
    Write("one\\a.c", Lines(2));
    Write("two\\b.c", Lines(2));
    Write("prog.c", Lines(20));
    Write("plain.c", Lines(20));
    Write("foo", "row 1\nrow 2\nrow 3\nrow 4\n");
    Write("prog.exe", std::string(0x100, '\0'));
    m_boxes.Queue({IDNO});
    // foo(3).c: the file foo at line 3
    ASSERT_TRUE(Start("-d nosuchdir one\\a.c two\\b.c(2) prog.c(12,5) foo(3).c prog.exe(0x1F) "
                      "plain.c -s"));
    EXPECT_STREQ("", theApp.m_strProjectDir.c_str());
    EXPECT_EQ(0, theApp.safeMode);
    EXPECT_EQ(std::vector<std::string>{"OK to create new\n'" + Path("-s") + "'"}, m_boxes.Texts());
    EXPECT_FALSE(Exists(Path("-s")));
    const struct {
        const char* name;
        CaretPlace place;
    } rows[] = {{"one\\a.c", {0, 0}},
                {"two\\b.c", {1, 0}},
                {"prog.c", {11, 4}},
                {"foo", {2, 0}},
                {"plain.c", {0, 0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        HWND child = ChildByCaption(FullLower(row.name));
        ASSERT_NE(nullptr, child);
        EXPECT_EQ(row.place, CaretOf(child));
    }
    // An address opens a hex view with its byte selected.
    auto* hex = dynamic_cast<CHexFileView*>(KmChildOf(ChildByCaption(FullLower("prog.exe"))));
    ASSERT_NE(nullptr, hex);
    EXPECT_EQ(1, hex->m_posCaret.line);
    EXPECT_EQ(15, hex->m_posCaret.col);
    EXPECT_EQ(6u, Children().size());
}

// --- DDE, driven by a client window of this thread

// What the client got: the message, the server, and the atoms of an
// initiation or the status and command block of an execute.
struct Answer {
    UINT message;
    HWND server;
    UINT_PTR low, high;
};
std::vector<Answer> g_answers;
bool g_initiating = false;

LRESULT CALLBACK ClientProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_DDE_ACK && message != WM_DDE_TERMINATE)
        return ::DefWindowProcA(hwnd, message, wParam, lParam);
    UINT_PTR low = LOWORD(lParam), high = HIWORD(lParam);
    if (message == WM_DDE_ACK && !g_initiating) {
        ::UnpackDDElParam(WM_DDE_ACK, lParam, &low, &high);
        ::FreeDDElParam(WM_DDE_ACK, lParam);
        ::GlobalFree(reinterpret_cast<HGLOBAL>(high));
    }
    g_answers.push_back({message, reinterpret_cast<HWND>(wParam), low, high});
    return 0;
}

// Only an initiation for our service and topic is answered. Every command
// is, with status 1 and the client's own block, but only the exact open
// command opens; a terminate gets its own.
TEST_F(AppStartTest, DdeInitiationForServiceAndTopicOnlyAndOnlyTheExactOpenCommandOpens)
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = ClientProc;
    wc.lpszClassName = "KmTestDdeClient";
    ::RegisterClassA(&wc);
    const HWND client = ::CreateWindowExA(0, wc.lpszClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr,
                                          nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, client);
    ASSERT_TRUE(Start());
    const auto initiate = [&](const char* service, const char* topic) {
        const ATOM serviceAtom = service ? ::GlobalAddAtomA(service) : 0;
        const ATOM topicAtom = topic ? ::GlobalAddAtomA(topic) : 0;
        g_initiating = true;
        ::SendMessageA(m_frameWnd, WM_DDE_INITIATE, reinterpret_cast<WPARAM>(client),
                       MAKELPARAM(serviceAtom, topicAtom));
        g_initiating = false;
        ::GlobalDeleteAtom(serviceAtom);
        ::GlobalDeleteAtom(topicAtom);
    };
    const ATOM service = ::GlobalAddAtomA("Kelmar"), topic = ::GlobalAddAtomA("system");
    initiate("Kelmar", "system");
    ASSERT_EQ(1u, g_answers.size());
    EXPECT_EQ(m_frameWnd, g_answers[0].server);
    EXPECT_EQ(service, g_answers[0].low);
    EXPECT_EQ(topic, g_answers[0].high);
    ::GlobalDeleteAtom(service);
    ::GlobalDeleteAtom(topic);
    initiate("Kelmar", "other");
    initiate("Other", "system");
    initiate(nullptr, nullptr); // a wild initiation
    EXPECT_EQ(1u, g_answers.size());

    Write("x.c", "one\ntwo\nthree\nfour\n");
    const std::string x = FullLower("x.c");
    const struct {
        std::string command;
        bool opens;
        CaretPlace place;
    } rows[] = {
        {"[open(\"" + x + "\")]", true, {0, 0}},
        {"[open(\"" + x + "(3,2)\")]", true, {2, 1}},
        {"[open(\"" + x + "\")]junk[open(\"other.c\")]", true, {0, 0}}, // other.c never looked at
        {"[OPEN(\"" + x + "\")]", false, {}},
        {"[open(\"" + x, false, {}},
        {"[open(" + x + ")]", false, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, row.command.size() + 1);
        memcpy(::GlobalLock(block), row.command.c_str(), row.command.size() + 1);
        ::GlobalUnlock(block);
        g_answers.clear();
        ::PostMessageA(m_frameWnd, WM_DDE_EXECUTE, reinterpret_cast<WPARAM>(client),
                       ::PackDDElParam(WM_DDE_EXECUTE, 0, reinterpret_cast<UINT_PTR>(block)));
        PumpUntilIdle();
        ASSERT_EQ(1u, g_answers.size());
        EXPECT_EQ(static_cast<UINT>(WM_DDE_ACK), g_answers[0].message);
        EXPECT_EQ(m_frameWnd, g_answers[0].server);
        EXPECT_EQ(1u, LOWORD(g_answers[0].low));
        EXPECT_EQ(reinterpret_cast<UINT_PTR>(block), g_answers[0].high);
        EXPECT_EQ(row.opens ? std::set<std::string>{x} : std::set<std::string>{}, ChildCaptions());
        if (row.opens) {
            EXPECT_EQ(row.place, CaretOf(ChildByCaption(x)));
        }
        Command(ID_WINDOW_CLOSEALL);
    }
    g_answers.clear();
    ::PostMessageA(m_frameWnd, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(client), 0);
    PumpUntilIdle();
    ASSERT_EQ(1u, g_answers.size());
    EXPECT_EQ(static_cast<UINT>(WM_DDE_TERMINATE), g_answers[0].message);
    EXPECT_EQ(m_frameWnd, g_answers[0].server);
    ::DestroyWindow(client);
}

} // namespace
