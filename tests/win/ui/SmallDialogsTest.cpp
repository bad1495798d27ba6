// Global Settings' numbers and one Apply's effects, the number field and
// the wheel of Goto Line, the centring, System Metrics and About.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/MenuRules.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"
#include "ui/ToolItems.h"

namespace
{

using SmallDialogs = kmtest::EditWindowTest;

std::string Item(HWND box, int id)
{
    return kmtest::WindowText(::GetDlgItem(box, id));
}

TEST_F(SmallDialogs, GlobalSettingsNumbersAndApply)
{
    const unsigned long start = theApp.flags, S = KF_NOSTATUSBAR, P = KF_NOPROJECT, C = KF_NOCLOCK,
                        A = KF_ALIGN, B = KF_BACKUP, U = KF_AUTOSAVE, I = KF_INDENT,
                        H = KF_NOHSCROLL, T = KF_NOTOOLBAR;
    const char* refusals[] = {"", "Tab size must be greater than 1",
                              "Indent size must be greater than 1"};
    const struct {
        const char *tab, *indent;
        std::vector<int> clicked;
        int refusal;
        const char* sizes;   // tab and indent after the dialog
        unsigned long flags; // those changed since the start
    } rows[] = {
        // clang-format off
        {"990", "3", {}, 0, "99 3", 0},
        {"", "", {IDC_GS_STATUSBAR}, 1, "99 3", 0},
        {"1", "9", {}, 1, "99 3", 0},
        {"5", "1", {}, 2, "99 3", 0},
        {"07", "02", {IDC_GS_STATUSBAR, IDC_GS_PROJECT, IDC_GS_CLOCK, IDC_GS_TOOLBAR}, 0, "7 2", S|P|C|T},
        {"8", "4", {IDC_GS_ALIGN, IDC_GS_BACKUP, IDC_GS_CONFIRM}, 0, "8 4", S|P|C|T|A|B|U},
        {"8", "4", {IDC_GS_INDENT, IDC_GS_STATUSBAR, IDC_GS_HSCROLL, IDC_GS_TOOLBAR}, 0, "8 4", P|C|B|U|I|H},
        {"8", "4", {IDC_GS_ALIGN, IDC_GS_PROJECT}, 0, "8 4", C | B | U | A | H},
    }; // clang-format on
    for (const auto& row : rows) {
        m_boxes.Clear();
        HWND settings = nullptr;
        m_boxes.Queue(IDOK, [&](HWND box) {
            settings = box;
            ::SetDlgItemTextA(box, IDC_GS_TABSIZE, row.tab);
            ::SetDlgItemTextA(box, IDC_GS_SHIFTWIDTH, row.indent);
            for (int id : row.clicked)
                ::SendMessageA(::GetDlgItem(box, id), BM_CLICK, 0, 0);
        });
        if (row.refusal)
            m_boxes.Queue(IDOK, [&](HWND) { ::PostMessageA(settings, WM_COMMAND, IDCANCEL, 0); });
        Command(ID_SET_GLOBAL);
        EXPECT_EQ(refusals[row.refusal], m_boxes.Boxes().size() > 1 ? m_boxes.Boxes()[1].text : "");
        EXPECT_EQ(row.sizes,
                  std::to_string(theApp.tabSize) + " " + std::to_string(theApp.shiftWidth));
        EXPECT_EQ(row.flags, theApp.flags ^ start) << row.tab;
        EXPECT_EQ(!(theApp.flags & KF_NOSTATUSBAR), theApp.statusBar.Exists());
        EXPECT_EQ(!(theApp.flags & KF_NOTOOLBAR), theApp.toolBar.Exists());
        bool buildButton = false; // the project buttons come and go with the bar
        for (int i = 0; theApp.toolBar.Exists() && i < theApp.toolBar.GetCount(); ++i)
            buildButton |= theApp.toolBar.GetItem(i)->m_nId == ID_PROJECT_BUILD;
        EXPECT_EQ(theApp.toolBar.Exists() && !(theApp.flags & KF_NOPROJECT), buildButton);
        BOOL maximized = FALSE;
        ::SendMessageA(MdiClient(), WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized));
        const UINT project = POPUP_PROJECT + (maximized ? 1 : 0);
        EXPECT_EQ((theApp.flags & KF_NOPROJECT) != 0,
                  (::GetMenuState(::GetMenu(m_frameWnd), project, MF_BYPOSITION) & MF_GRAYED) != 0);
    }
}

// Page Setup's answers wait in the settings dialog until Apply writes them.
TEST_F(SmallDialogs, PageSetupIsWrittenOnApplyOnly)
{
    for (int answer : {IDCANCEL, IDOK}) {
        m_boxes.Clear();
        m_boxes.Queue(answer,
                      [](HWND box) { ::PostMessageA(box, WM_COMMAND, IDC_GS_PAGESETUP, 0); });
        m_boxes.Queue(IDOK, [](HWND page) { ::SetDlgItemTextA(page, IDC_PAGE_HEADER, "H &p"); });
        Command(ID_SET_GLOBAL);
        CString header;
        theApp.GetSetting(SECTION_SETTINGS, "PageHeader", header);
        EXPECT_EQ(answer == IDOK ? "H &p" : "", std::string(header.c_str())) << answer;
    }
}

// The wheel counts from the line proposed; typing does not move it.
TEST_F(SmallDialogs, GotoLineFieldAndWheel)
{
    std::string text;
    for (int i = 0; i < 40; ++i)
        text += "line\r\n";
    SetText(text, 0);
    const struct {
        const char* typed;
        int wheelAt;       // 0: left alone
        UINT code, clicks; // scroll code sent to the wheel
        long line;         // where the caret lands, zero-based
    } rows[] = {
        {"007", 0, SB_LINEUP, 0, 6}, {"12", 32767, SB_LINEUP, 1, 11}, {"12", 9, SB_LINEUP, 2, 10},
        {"3", 1, SB_LINEDOWN, 1, 2}, {"30", 5, SB_LINEDOWN, 3, 1},    {"30", 5, SB_PAGEUP, 1, 29},
    };
    for (const auto& row : rows) {
        std::string afterLetter;
        m_boxes.Queue(IDOK, [&](HWND box) {
            HWND field = ::GetDlgItem(box, IDC_LINENUMBER),
                 wheel = ::GetDlgItem(box, IDC_LINEWHEEL);
            ::SetWindowTextA(field, "4");
            ::SendMessageA(field, WM_CHAR, 'x', 0);
            afterLetter = kmtest::WindowText(field);
            ::SetWindowTextA(field, row.typed);
            if (row.wheelAt)
                ::SetScrollPos(wheel, SB_VERT, row.wheelAt, FALSE);
            for (UINT i = 0; i < row.clicks; ++i)
                ::SendMessageA(wheel, WM_VSCROLL, row.code, 0);
        });
        Command(ID_SEARCH_GOTOLINE);
        EXPECT_EQ("4", afterLetter);
        EXPECT_EQ(row.line, kmtest::CaretOf(m_editor->m_hWnd).line) << row.typed;
    }
    // Over a frame smaller than itself a dialog keeps 6 and 18 pixels in.
    ::MoveWindow(m_frameWnd, 100, 100, 120, 60, TRUE);
    RECT box = {}, frame = {};
    m_boxes.Queue(IDCANCEL, [&](HWND dialog) { ::GetWindowRect(dialog, &box); });
    Command(ID_SEARCH_GOTOLINE);
    ::GetWindowRect(m_frameWnd, &frame);
    EXPECT_EQ(frame.left + 6, box.left);
    EXPECT_EQ(frame.top + 18, box.top);
}

TEST_F(SmallDialogs, SystemMetricsAndAbout)
{
    std::vector<std::string> seen;
    m_boxes.Queue(IDCANCEL, [&](HWND box) {
        HWND list = ::GetDlgItem(box, IDC_SM_LIST);
        seen.push_back(Item(box, IDC_SM_TEXT) + "|" + Item(box, IDC_SM_VALUE));
        ::SendMessageA(list, LB_SETCURSEL, 26, 0);
        ::SendMessageA(box, WM_COMMAND, MAKEWPARAM(IDC_SM_LIST, LBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(list));
        seen.push_back(Item(box, IDC_SM_TEXT) + "|" + Item(box, IDC_SM_VALUE));
    });
    m_boxes.Queue(IDOK, [&](HWND box) {
        seen.push_back(Item(box, IDC_ABOUT_TITLE) + "|" + Item(box, IDC_ABOUT_RELEASE));
        seen.push_back(Item(box, IDC_ABOUT_MEMORY).substr(0, 15));
    });
    Command(ID_TOOL_SYSMETRICS);
    Command(ID_HELP_ABOUT);
    EXPECT_EQ((std::vector<std::string>{"Width of window frame that cannot be sized.|" +
                                            std::to_string(::GetSystemMetrics(SM_CXBORDER)),
                                        "Width of screen.|" +
                                            std::to_string(::GetSystemMetrics(SM_CXSCREEN)),
                                        "Kelmar Workbench|Release 1.54", "\tTotal Memory:\t"}),
              seen);
}

} // namespace
