// Select Project and Configure over a real frame and real settings files.
#include "app/KmApp.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "ui/ToolItems.h"

using namespace kmtest;

namespace
{

using ProjectDialogs = FrameTest;

const auto Enabled = [](HWND d, int id) { return ::IsWindowEnabled(::GetDlgItem(d, id)); };

// As a user does: the text, or for CBN_SELCHANGE the entry its digit
// gives, then the control's notification.
void Type(HWND dialog, int id, const char* text, WORD code = EN_CHANGE)
{
    HWND control = ::GetDlgItem(dialog, id);
    if (code == CBN_SELCHANGE)
        ::SendMessageA(control, CB_SETCURSEL, WPARAM(*text - '0'), 0);
    else
        ::SetWindowTextA(control, text);
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), LPARAM(control));
}

// The list's line count, its selection and the selected line, and Set.
std::string ListState(HWND dialog)
{
    HWND list = ::GetDlgItem(dialog, IDC_CONFIG_LIST);
    const LRESULT sel = ::SendMessageA(list, LB_GETCURSEL, 0, 0);
    char line[300] = "";
    ::SendMessageA(list, LB_GETTEXT, WPARAM(sel), LPARAM(line));
    return std::to_string(::SendMessageA(list, LB_GETCOUNT, 0, 0)) + " " + std::to_string(sel) +
           " " + line + (Enabled(dialog, IDC_CONFIG_SET) ? " set|" : "|");
}

// A typed text is the project's in any case, a list entry only as it stands;
// Change To on the project in another case ends as Cancel, with no question.
TEST_F(ProjectDialogs, SelectButtonsFollowTextAndEntry)
{
    ASSERT_TRUE(Start("-s"));
    const char* rows[][2] = {{"", nullptr}, {"", "c:\\x"},  {"p", nullptr}, {"p", "P"},
                             {"p", ""},     {"p", "c:\\x"}, {"P", "0"},     {"p", "0"}};
    theApp.recentProjects[0] = "P";
    std::string seen; // Change To and Exit Project enabled: C and E
    for (const auto& row : rows) {
        theApp.m_strProjectDir = row[0];
        m_boxes.Queue(IDOK, [&](HWND dialog) {
            if (row[1])
                Type(dialog, IDC_SELECT_PATH, row[1],
                     *row[1] == '0' ? CBN_SELCHANGE : CBN_EDITCHANGE);
            seen += std::string(Enabled(dialog, IDOK) ? "C" : "-") +
                    (Enabled(dialog, IDC_SELECT_EXIT) ? "E " : "- ");
            if (!Enabled(dialog, IDOK))
                ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        if (row[1] && *row[1] == 'c')
            m_boxes.Queue({IDCANCEL}); // the question to make c:\x, refused
        Command(ID_PROJECT_SELECT);
    }
    EXPECT_EQ("-- C- -E -E -- C- -E C- ", seen);
    EXPECT_EQ("P", theApp.recentProjects[0].str());
}

// Each change saves the settings left and loads those of the new project,
// with its keys, its menus and its windows; a new directory is made first.
// Leaving a project goes back to the global file's directory.
TEST_F(ProjectDialogs, SelectedProjectTakesEffect)
{
    ::CreateDirectoryA(Path("proj").c_str(), nullptr);
    Write("proj\\a.c", "");
    Write("proj\\kelmar.ini", "[Settings]\nTabSize=3\nFlags=101\n[Key Bindings]\nFile:New=123,1\n"
                              "[Session]\nEditCount=1\nEdit01=a.c\n");
    ASSERT_TRUE(Start(""));
    auto type = [](const char* text) { // relative to the current directory
        return [=](HWND dialog) { Type(dialog, IDC_SELECT_PATH, text, CBN_EDITCHANGE); };
    };
    m_boxes.Queue(IDOK, type("Proj"));
    m_boxes.Queue(IDOK, type("..\\new\\"));
    m_boxes.Queue({IDOK, IDC_SELECT_EXIT}); // to make new, then to leave
    m_boxes.Queue(IDOK, type("Proj"));
    auto local = [&](std::string path) { // the path in the test's directory
        path = Lower(path);
        return path == Lower(m_dir) ? "." : path.substr(std::min(path.size(), m_dir.size() + 1));
    };
    auto buildButton = [] { // '-' without a tool bar, 'B' alive, 'b' etched
        for (int i = 0; theApp.toolBar.Exists() && i < theApp.toolBar.GetCount(); ++i)
            if (theApp.toolBar.GetItem(i)->m_nId == ID_PROJECT_BUILD)
                return theApp.toolBar.GetItem(i)->m_bEnabled ? "B" : "b";
        return "-";
    };
    // The project, the current directory, the windows, TabSize, New's key,
    // the status bar and the tool bar's Build button.
    for (const char* expected : {"proj proj proj\\a.c 3 &New\tF120-", "new new  8 &New\tCtrl+N1B",
                                 " .  8 &New\tCtrl+N1b", "proj proj proj\\a.c 3 &New\tF120-"}) {
        Command(ID_PROJECT_SELECT);
        char current[MAX_PATH], key[40] = "";
        ::GetCurrentDirectoryA(MAX_PATH, current);
        ::GetMenuStringA(::GetMenu(m_frameWnd), ID_FILE_NEW, key, sizeof key, MF_BYCOMMAND);
        std::string seen = local(theApp.m_strProjectDir.str()) + " " + local(current) + " ";
        for (const std::string& caption : ChildCaptions())
            seen += local(caption);
        EXPECT_EQ(expected, seen + " " + std::to_string(theApp.tabSize) + " " + key +
                                std::to_string(theApp.statusBar.Exists()) + buildButton());
    }
    EXPECT_EQ("proj new",
              local(theApp.recentProjects[0].str()) + " " + local(theApp.recentProjects[1].str()));
}

// Set stores at once and Close the target fields; all of it reaches the
// project's kelmar.ini and comes back at the next start, where a key of the
// user's own is no longer listed. Escape keeps the fields, "=" is refused.
TEST_F(ProjectDialogs, ConfigurationIsSavedAndReadBack)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("proj").c_str(), nullptr));
    const std::string start = "-d " + Path("proj");
    ASSERT_TRUE(Start(start));
    std::string seen;
    m_boxes.Queue(IDOK, [&](HWND dialog) {
        seen += ListState(dialog);
        for (const char* step : {"LinkArgs", "NewKey=v", "Builder=mk", ""}) {
            Type(dialog, IDC_CONFIG_OPTION, std::string(step, strcspn(step, "=")).c_str());
            if (strchr(step, '=')) {
                Type(dialog, IDC_CONFIG_SETTING, strchr(step, '=') + 1);
                ::SendMessageA(dialog, WM_COMMAND, IDC_CONFIG_SET, 0);
            }
            seen += ListState(dialog);
        }
        Type(dialog, IDC_CONFIG_ENV, "2", CBN_SELCHANGE);
        seen += ListState(dialog);
        ::SetDlgItemTextA(dialog, IDC_CONFIG_TARGET, "app.exe");
        ::CheckDlgButton(dialog, IDC_CONFIG_DEBUG, BST_CHECKED);
    });
    Command(ID_PROJECT_CONFIGURE);
    ASSERT_TRUE(CloseFrame());
    EXPECT_NE(std::string::npos, Read("proj\\kelmar.ini").find("\nNewKey=v\r\n"));
    ASSERT_TRUE(Start(start));
    m_boxes.Queue(BoxAnswerer::kLeaveOpen, [&](HWND dialog) { // left by Escape, with no button
        seen += ListState(dialog);
        Type(dialog, IDC_CONFIG_ENV, "0", CBN_SELCHANGE);
        Type(dialog, IDC_CONFIG_OPTION, "Builder");
        seen += ListState(dialog) + WindowText(::GetDlgItem(dialog, IDC_CONFIG_TARGET)) +
                std::to_string(::IsDlgButtonChecked(dialog, IDC_CONFIG_DEBUG));
        ::SetDlgItemTextA(dialog, IDC_CONFIG_TARGET, "other.exe");
        ::PostMessageA(::GetDlgItem(dialog, IDC_CONFIG_OPTION), WM_CHAR, '=', 0);
        ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    m_boxes.Queue({IDOK});
    Command(ID_PROJECT_CONFIGURE);
    EXPECT_EQ("'=' not allowed here", m_boxes.Texts().back());
    CString target;
    theApp.GetProjectSetting(IDS_KEY_TARGET, target);
    EXPECT_EQ("28 0 Compiler=cl386.exe /nologo /D_X86_=1|28 5 LinkArgs=-subsystem:windows "
              "-entry:WinMainCRTStartup set|29 28 NewKey=v set|29 14 Builder=mk set|29 -1 |"
              "28 0 Compiler=ztc.com|28 0 Compiler=ztc.com|28 14 Builder=mk set|app.exe1app.exe",
              seen + target.str());
}

} // namespace
