// The Tools popup built from the tool list, with the keys bound to tools.
#include "app/KmApp.h"
#include "app/MenuRules.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "tools/ToolsDialog.h"

namespace
{

using kmtest::FrameTest;

std::vector<std::string> ToolItems(HMENU popup)
{
    std::vector<std::string> items;
    for (UINT id = ID_TOOL_FIRST; id <= ID_TOOL_LAST; ++id) {
        char text[80] = "";
        if (::GetMenuState(popup, id, MF_BYCOMMAND) == static_cast<UINT>(-1))
            continue;
        ::GetMenuStringA(popup, id, text, sizeof text, MF_BYCOMMAND);
        items.push_back(text);
    }
    return items;
}

using ToolsMenu = FrameTest;

TEST_F(ToolsMenu, PopupFollowsTheListAndTheKeys)
{
    // The section's key names beyond 256 bytes go unseen: commands alone here.
    std::string twelve = "[Tools]\nToolCount=12\n";
    for (char n = '0'; n <= '9'; ++n)
        twelve += std::string("ToolCommand") + n + "=p.exe\n";
    struct Row {
        std::string ini;
        std::vector<std::string> items;
    } rows[] = {
        {"", {"&Dialog Editor", "&Image Editor", "&Calculator"}},
        {"[Tools]\nToolCount=5\nToolCommand0=a\nToolMenuText0=A\nToolCommand1=b\nToolMenuText1="
         "B\nToolCommand2=c\nToolMenuText2=C\n"
         "ToolCommand3=d\nToolMenuText3=D\n[Key Bindings]\ntool:3=49,9\nTool:4=50,9\n",
         {"A", "B", "C", "D\tCtrl+1"}},
        {twelve, std::vector<std::string>(10)},
    };
    for (const Row& row : rows) {
        Write("kelmar.ini", row.ini);
        ASSERT_TRUE(Start("-s"));
        EXPECT_EQ(row.items, ToolItems(OpenPopup(kNoFileWindowPopup))) << row.ini;
        Command(ID_TOOL_FIRST + static_cast<UINT>(row.items.size())); // beyond: nothing
        ASSERT_TRUE(CloseFrame());
    }
}

// The confirmed text comes behind the fixed arguments; Cancel runs nothing.
TEST_F(ToolsMenu, PromptAsksWithTheCommandAsTitle)
{
    Write("t.bat", "@echo %*> out.txt\r\n");
    Write("kelmar.ini",
          "[Tools]\nToolCount=1\nToolCommand0=t.bat\nToolArguments0=x\nToolFlags0=10\n");
    ASSERT_TRUE(Start("-s"));
    m_boxes.Queue({IDCANCEL});
    Command(ID_TOOL_FIRST);
    m_boxes.Queue({IDOK});
    Command(ID_TOOL_FIRST);
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_EQ("t.bat", m_boxes.Boxes()[1].caption);
    EXPECT_EQ("x", m_boxes.Boxes()[1].field);
    EXPECT_TRUE(kmtest::PumpUntil([&] { return Read("out.txt") == "xx\r\n"; }, 10000))
        << Read("out.txt");
}

// Run asks again after a failure; the program ends at the first blank.
TEST_F(ToolsMenu, RunSplitsTheLineAndAsksAgainUntilAProgramStarts)
{
    ASSERT_TRUE(Start("-s"));
    auto typed = [](const char* line) {
        return [line](HWND box) { ::SetDlgItemTextA(box, IDC_RUN_COMMAND, line); };
    };
    m_boxes.Queue(IDOK, typed("nosuch.exe x"));
    m_boxes.Queue({IDOK});
    m_boxes.Queue(IDOK, typed("cmd.exe   /c echo r> run.txt"));
    m_boxes.Queue({IDCANCEL});
    Command(ID_TOOL_RUN);
    Command(ID_TOOL_RUN);
    const auto& boxes = m_boxes.Boxes();
    ASSERT_EQ(4u, boxes.size());
    EXPECT_EQ("Cannot open\n'nosuch.exe'", boxes[1].text);
    EXPECT_EQ("nosuch.exe x", boxes[2].field);
    EXPECT_EQ("cmd.exe /c echo r> run.txt", boxes[3].field);
    EXPECT_TRUE(kmtest::PumpUntil([&] { return Read("run.txt") == "r\r\n"; }, 10000));
}

// Moved, stored by a change of selection and deleted in the dialog: these
// stay after Cancel, the last unstored edit doesn't.
TEST_F(ToolsMenu, DialogEditsReachThePopup)
{
    Write("t.bat", "");
    Write("kelmar.ini",
          "[Tools]\nToolCount=3\nToolCommand0=t.bat\nToolMenuText0=A\n"
          "ToolCommand1=t.bat\nToolMenuText1=B\nToolCommand2=t.bat\nToolMenuText2=C\n");
    ASSERT_TRUE(Start("-s"));
    CToolList copy = theApp.tools;
    std::string enabled;
    m_boxes.Queue(IDCANCEL, [&](HWND dialog) {
        auto select = [dialog](int row) {
            ::SendDlgItemMessageA(dialog, IDC_TOOLS_LIST, LB_SETCURSEL, static_cast<WPARAM>(row),
                                  0);
            ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_TOOLS_LIST, LBN_SELCHANGE),
                           reinterpret_cast<LPARAM>(::GetDlgItem(dialog, IDC_TOOLS_LIST)));
        };
        auto click = [dialog](int id) { ::SendMessageA(dialog, WM_COMMAND, id, 0); };
        select(2);
        click(IDC_TOOLS_UP); // C B, C current
        ::SetDlgItemTextA(dialog, IDC_TOOLS_MENUTEXT, "&Zed");
        select(0);               // stores &Zed
        click(IDC_TOOLS_DELETE); // A goes, &Zed current
        for (int id : {IDC_TOOLS_UP, IDC_TOOLS_DOWN, IDC_TOOLS_NEW})
            enabled += ::IsWindowEnabled(::GetDlgItem(dialog, id)) ? '1' : '0';
        ::SetDlgItemTextA(dialog, IDC_TOOLS_MENUTEXT, "lost");
    });
    CToolsDialog dialog(m_frameWnd, &copy);
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    theApp.tools = copy;
    theApp.toolsDirty = 1;
    EXPECT_EQ("011", enabled);
    EXPECT_EQ((std::vector<std::string>{"&Zed", "B"}), ToolItems(OpenPopup(kNoFileWindowPopup)));
}

} // namespace
