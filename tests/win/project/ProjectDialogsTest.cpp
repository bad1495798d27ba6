// Select Project and Configure over a real frame and real settings files.
#include "app/KmApp.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <cstring>

using namespace kmtest;

namespace
{

using ProjectDialogs = FrameTest;

bool Enabled(HWND dialog, int id)
{
    return ::IsWindowEnabled(::GetDlgItem(dialog, id)) != FALSE;
}

// As a user's typing does: the text, then the control's notification.
void Type(HWND dialog, int id, const std::string& text, WORD code = EN_CHANGE)
{
    ::SetDlgItemTextA(dialog, id, text.c_str());
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), LPARAM(::GetDlgItem(dialog, id)));
}

// The list's line count, its selection, and the selected line.
std::string ListState(HWND dialog)
{
    HWND list = ::GetDlgItem(dialog, IDC_CONFIG_LIST);
    const LRESULT sel = ::SendMessageA(list, LB_GETCURSEL, 0, 0);
    char line[300] = "";
    ::SendMessageA(list, LB_GETTEXT, WPARAM(sel), LPARAM(line));
    return std::to_string(::SendMessageA(list, LB_GETCOUNT, 0, 0)) + " " + std::to_string(sel) +
           " " + line + (Enabled(dialog, IDC_CONFIG_SET) ? " set" : "");
}

// A typed text is the project's in any case, a list entry only as it stands;
// Change To on the project in another case ends as Cancel, with no question.
TEST_F(ProjectDialogs, SelectButtonsFollowTextAndEntry)
{
    ASSERT_TRUE(Start("-s"));
    struct Row {
        const char* current;
        const char* typed; // null: nothing typed
        const char* entry; // chosen from the list instead
        bool change, exit;
        int press;
    } rows[] = {
        {"", nullptr, nullptr, false, false, IDCANCEL},
        {"", "c:\\x", nullptr, true, false, IDCANCEL},
        {"p", nullptr, nullptr, false, true, IDCANCEL},
        {"p", "P", nullptr, false, true, IDCANCEL},
        {"p", "", nullptr, false, false, IDCANCEL},
        {"p", "c:\\x", nullptr, true, false, IDCANCEL},
        {"p", nullptr, "p", false, true, IDCANCEL},
        {"p", nullptr, "P", true, false, IDOK},
    };
    theApp.recentProjects[0] = "P";
    theApp.recentProjects[1] = "p";
    for (const Row& row : rows) {
        theApp.m_strProjectDir = row.current;
        bool change = false, exit = false;
        m_boxes.Queue(row.press, [&](HWND dialog) {
            if (row.typed)
                Type(dialog, IDC_SELECT_PATH, row.typed, CBN_EDITCHANGE);
            HWND path = ::GetDlgItem(dialog, IDC_SELECT_PATH);
            for (WPARAM i = 0; row.entry && i < 2; ++i) {
                char entry[8] = "";
                ::SendMessageA(path, CB_GETLBTEXT, i, LPARAM(entry));
                if (strcmp(entry, row.entry) == 0)
                    ::SendMessageA(path, CB_SETCURSEL, i, 0);
            }
            if (row.entry)
                ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_SELECT_PATH, CBN_SELCHANGE),
                               LPARAM(path));
            change = Enabled(dialog, IDOK), exit = Enabled(dialog, IDC_SELECT_EXIT);
        });
        Command(ID_PROJECT_SELECT);
        const std::string name = std::string(row.current) + (row.typed ? row.typed : "") + "|" +
                                 (row.entry ? row.entry : "");
        EXPECT_EQ(row.change, change) << name;
        EXPECT_EQ(row.exit, exit) << name;
    }
    EXPECT_EQ(sizeof rows / sizeof *rows, m_boxes.Boxes().size());
    EXPECT_EQ("P", theApp.recentProjects[0].str());
}

// Each change saves the settings left and loads those of the new project,
// with its keys, its menus and its windows; a new directory is made first.
TEST_F(ProjectDialogs, SelectedProjectTakesEffect)
{
    ::CreateDirectoryA(Path("proj").c_str(), nullptr);
    Write("proj\\a.c", "");
    Write("proj\\kelmar.ini", "[Settings]\nTabSize=3\n[Key Bindings]\nFile:New=123,1\n"
                              "[Session]\nEditCount=1\nEdit01=" +
                                  Path("proj\\a.c") + ",0\n");
    Write("g.c", "");
    ASSERT_TRUE(Start(Path("g.c")));
    struct Row {
        const char* typed; // null: Exit Project
        bool create;
        const char *project, *newKey, *window;
        int tabSize;
    } rows[] = {
        {"Proj", false, "proj", "F12", "proj\\a.c", 3},
        {"..\\new\\", true, "new", "Ctrl+N", nullptr, 8},
        {nullptr, false, nullptr, "Ctrl+N", "g.c", 8},
    };
    for (const Row& row : rows) {
        if (row.typed) {
            m_boxes.Queue(IDOK, [&](HWND dialog) {
                Type(dialog, IDC_SELECT_PATH, row.typed, CBN_EDITCHANGE);
            });
            if (row.create)
                m_boxes.Queue({IDOK});
        } else {
            m_boxes.Queue({IDC_SELECT_EXIT});
        }
        Command(ID_PROJECT_SELECT);
        const std::string dir = row.project ? FullLower(row.project) : "";
        EXPECT_EQ(dir, theApp.m_strProjectDir.str());
        char current[MAX_PATH];
        ::GetCurrentDirectoryA(MAX_PATH, current);
        EXPECT_EQ(row.project ? dir + "\\" : FullLower(""), Lower(current) + "\\");
        std::set<std::string> windows;
        if (row.window)
            windows.insert(FullLower(row.window));
        EXPECT_EQ(windows, ChildCaptions()) << dir;
        EXPECT_EQ(row.tabSize, theApp.tabSize) << dir;
        char text[40] = "";
        ::GetMenuStringA(::GetMenu(m_frameWnd), ID_FILE_NEW, text, sizeof text, MF_BYCOMMAND);
        EXPECT_EQ(std::string("&New\t") + row.newKey, text) << dir;
    }
    EXPECT_EQ(FullLower("new"), theApp.recentProjects[0].str());
    EXPECT_EQ(FullLower("proj"), theApp.recentProjects[1].str());
}

// Set stores at once and Close the target fields; all of it reaches the
// project's kelmar.ini and comes back at the next start, where a key of the
// user's own is no longer listed. Escape keeps the fields, "=" is refused.
TEST_F(ProjectDialogs, ConfigurationIsSavedAndReadBack)
{
    ::CreateDirectoryA(Path("proj").c_str(), nullptr);
    const std::string start = "-d " + Path("proj");
    ASSERT_TRUE(Start(start));
    std::vector<std::string> seen;
    auto note = [&](HWND dialog) { seen.push_back(ListState(dialog)); };
    m_boxes.Queue(IDOK, [&](HWND dialog) {
        note(dialog);
        Type(dialog, IDC_CONFIG_OPTION, "LinkArgs");
        note(dialog);
        for (const char* pair : {"NewKey=v", "Builder=mk"}) {
            Type(dialog, IDC_CONFIG_OPTION, std::string(pair, strcspn(pair, "=")));
            Type(dialog, IDC_CONFIG_SETTING, strchr(pair, '=') + 1);
            ::SendMessageA(dialog, WM_COMMAND, IDC_CONFIG_SET, 0);
            note(dialog);
        }
        Type(dialog, IDC_CONFIG_OPTION, "");
        note(dialog);
        ::SendMessageA(::GetDlgItem(dialog, IDC_CONFIG_ENV), CB_SETCURSEL, 2, 0);
        Type(dialog, IDC_CONFIG_ENV, "", CBN_SELCHANGE);
        note(dialog);
        ::SetDlgItemTextA(dialog, IDC_CONFIG_TARGET, "app.exe");
        ::CheckDlgButton(dialog, IDC_CONFIG_DEBUG, BST_CHECKED);
    });
    Command(ID_PROJECT_CONFIGURE);
    m_boxes.Queue(BoxAnswerer::kLeaveOpen, [&](HWND dialog) { // Escape, which has no button
        ::SetDlgItemTextA(dialog, IDC_CONFIG_TARGET, "other.exe");
        ::PostMessageA(::GetDlgItem(dialog, IDC_CONFIG_OPTION), WM_CHAR, '=', 0);
        ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    m_boxes.Queue({IDOK});
    Command(ID_PROJECT_CONFIGURE);
    ASSERT_TRUE(CloseFrame());
    EXPECT_EQ("'=' not allowed here", m_boxes.Texts().back());
    const std::string ini = Read("proj\\kelmar.ini");
    for (const char* line :
         {"Builder=mk", "NewKey=v", "Environment=Zortech C", "Target=app.exe", "DebugBuild=1"})
        EXPECT_NE(std::string::npos, ini.find(line)) << line << "\n" << ini;
    ASSERT_TRUE(Start(start));
    m_boxes.Queue(IDOK, [&](HWND dialog) {
        note(dialog);
        ::SendMessageA(::GetDlgItem(dialog, IDC_CONFIG_ENV), CB_SETCURSEL, 0, 0);
        Type(dialog, IDC_CONFIG_ENV, "", CBN_SELCHANGE);
        Type(dialog, IDC_CONFIG_OPTION, "Builder");
        note(dialog);
        seen.push_back(WindowText(::GetDlgItem(dialog, IDC_CONFIG_TARGET)));
    });
    Command(ID_PROJECT_CONFIGURE);
    const std::vector<std::string> expected = {"28 0 Compiler=cl386.exe /nologo /D_X86_=1",
                                               "28 5 LinkArgs=-subsystem:windows "
                                               "-entry:WinMainCRTStartup set",
                                               "29 28 NewKey=v set",
                                               "29 14 Builder=mk set",
                                               "29 -1 ",
                                               "28 0 Compiler=ztc.com",
                                               "28 0 Compiler=ztc.com",
                                               "28 14 Builder=mk set",
                                               "app.exe"};
    EXPECT_EQ(expected, seen);
}

} // namespace
