// The status bar in a window of its own: panes as the frame lays them out,
// texts, the clock, Caps and Num, and the state the bars share.
#include "ui/StatusBar.h"
#include "app/KmApp.h"
#include "app/Settings.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "ui/StatusPanes.h"

#include <memory>

using kmtest::PumpUntil;
using kmtest::WindowText;

namespace
{

// One visible top-level window holds the parents of the bars: a top-level
// window under wine takes seconds to go away, a child doesn't.
HWND CreateParent()
{
    static HWND host = nullptr;
    if (!host) {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = ::DefWindowProcA;
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = "StatusBarTestParent";
        ::RegisterClassA(&wc);
        host = ::CreateWindowExA(0, wc.lpszClassName, "Status bar test",
                                 WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000, 400, nullptr,
                                 nullptr, nullptr, nullptr);
    }
    return ::CreateWindowExA(0, "StatusBarTestParent", "", WS_CHILD | WS_VISIBLE, 0, 0, 640, 200,
                             host, nullptr, nullptr, nullptr);
}

int BarFontWidth(const std::string& text)
{
    HDC dc = ::GetDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, CKmStatusBar::Font());
    SIZE size = {0, 0};
    ::GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    ::SelectObject(dc, old);
    ::ReleaseDC(nullptr, dc);
    return size.cx;
}

int Width(const RECT& rc)
{
    return rc.right - rc.left;
}

void SetLockKey(int key, bool on)
{
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[key] = static_cast<BYTE>(on ? keys[key] | 1 : keys[key] & ~1);
    ::SetKeyboardState(keys);
}

class StatusBarTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(0, CKmStatusBar::BarCount());
        parent = CreateParent();
        ASSERT_TRUE(bar.Create(parent));
        RECT client;
        ::GetClientRect(parent, &client);
        EXPECT_EQ(CKmStatusBar::Height(), bar.Resize(client.right, client.bottom));
    }
    void TearDown() override
    {
        bar.Destroy();
        ::DestroyWindow(parent);
    }

    // The frame's panes, as the application adds them, without the clock.
    void AddFramePanes()
    {
        theApp.flags |= KF_NOCLOCK;
        theApp.AddStatusPanes();
        theApp.flags = KF_DEFAULT;
        caps = bar.AddCapsPane(""), num = bar.AddNumPane(""); // the ones there
        lineCol = theApp.paneLineCol, insert = theApp.paneInsert, align = theApp.paneAlign;
        edit = theApp.paneEdit, clean = theApp.paneClean, autoSave = theApp.paneAutoSave;
    }

    RECT PaneRect(int index) { return bar.GetPane(index)->m_rcPane; }
    std::string PaneText(int index) { return bar.GetPane(index)->Text(); }
    // Whether a call asks for painting.
    template <class Call> bool Repaints(Call call)
    {
        ::ValidateRect(bar.GetHwnd(), nullptr);
        call();
        return ::GetUpdateRect(bar.GetHwnd(), nullptr, FALSE) != 0;
    }

    HWND parent = nullptr;
    CKmStatusBar& bar = theApp.statusBar;
    int lineCol = -1, insert = -1, caps = -1, num = -1, align = -1, edit = -1, clean = -1,
        autoSave = -1;
};

TEST_F(StatusBarTest, TextsFromTheStringTableAndTimedTexts)
{
    bar.SetTextId(IDS_IDLE, 0);
    EXPECT_TRUE(bar.m_bTextShown);
    EXPECT_EQ("Kelmar Workbench: edit, search and build", WindowText(bar.GetHwnd()));
    bar.SetTextId(4242, 0);
    EXPECT_EQ("No resource string 4242", WindowText(bar.GetHwnd()));
    bar.SetTextId(0, 0);
    EXPECT_FALSE(bar.m_bTextShown);
    EXPECT_EQ("", WindowText(bar.GetHwnd()));

    bar.SetText("Saved", 1);
    EXPECT_TRUE(bar.m_bTextShown);
    ASSERT_TRUE(PumpUntil([&] { return !bar.m_bTextShown; }, 3000));
    EXPECT_EQ("", WindowText(bar.GetHwnd()));

    bar.SetText("Saved", 1); // an untimed text stops the running timer
    bar.SetText("Stays", 0);
    PumpUntil([] { return false; }, 1500);
    EXPECT_TRUE(bar.m_bTextShown);
    EXPECT_EQ("Stays", WindowText(bar.GetHwnd()));
}

TEST_F(StatusBarTest, ChoicesTogglesAndPositionsShowTheirTexts)
{
    AddFramePanes();
    EXPECT_EQ(" ", PaneText(align));
    EXPECT_EQ(" ", PaneText(autoSave)); // off at the start
    const struct {
        int choice;
        const char* shown;
    } choices[] = {
        {2, "Indent"}, {3, "Indent"}, {-1, "Indent"}, {1, "Align"}}; // out of range: kept
    for (const auto& row : choices) {
        bar.SetPaneChoice(align, row.choice);
        EXPECT_EQ(row.shown, PaneText(align)) << row.choice;
    }
    EXPECT_FALSE(Repaints([&] { bar.SetPaneChoice(align, 1); }));
    EXPECT_TRUE(Repaints([&] { bar.SetPaneChoice(align, 0); }));
    // Calls for other kinds of pane or bad indexes change nothing.
    bar.SetPaneState(align, true);
    bar.SetPaneChoice(insert, 1);
    bar.SetPaneChoice(42, 1);
    EXPECT_EQ(" ", PaneText(align));
    EXPECT_EQ("Ins", PaneText(insert));

    const int inner = bar.AddChoicePane("a,,b");
    bar.SetPaneChoice(inner, 2);
    EXPECT_EQ("b", PaneText(inner));
    bar.SetPaneChoice(inner, 1);
    EXPECT_EQ("", PaneText(inner));

    EXPECT_EQ("Edit", PaneText(edit));
    bar.TogglePane(edit);
    EXPECT_EQ("Read", PaneText(edit));

    EXPECT_EQ("0 : 0", PaneText(lineCol));
    bar.SetPanePosition(lineCol, -1, 0); // a minimised child
    EXPECT_FALSE(Repaints([&] { bar.SetPanePosition(lineCol, -1, 0); }));
    EXPECT_TRUE(Repaints([&] { bar.SetPanePosition(lineCol, -1, 1); }));
    EXPECT_TRUE(Repaints([&] { bar.SetPanePosition(lineCol, 2, 1); }));
}

TEST_F(StatusBarTest, CapsAndNumFollowTheKeysOnRefreshAndThroughTheHook)
{
    SetLockKey(VK_CAPITAL, true);
    SetLockKey(VK_NUMLOCK, false);
    AddFramePanes();
    EXPECT_EQ("Caps", PaneText(caps));
    EXPECT_EQ("", PaneText(num));
    SetLockKey(VK_CAPITAL, false);
    SetLockKey(VK_NUMLOCK, true);
    EXPECT_EQ("Caps", PaneText(caps)); // unchanged until asked
    bar.RefreshLocks();
    EXPECT_EQ("", PaneText(caps));
    EXPECT_EQ("Num", PaneText(num));
    EXPECT_EQ(caps, bar.AddCapsPane("CAPS")); // no second one
    EXPECT_EQ(num, bar.AddNumPane("NUM"));

    ::SetForegroundWindow(::GetParent(parent));
    ::SetFocus(parent);
    INPUT input[2] = {};
    input[0].type = input[1].type = INPUT_KEYBOARD;
    input[0].ki.wVk = input[1].ki.wVk = VK_CAPITAL;
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    for (const char* shown : {"Caps", ""}) {
        ::SendInput(2, input, sizeof(INPUT));
        EXPECT_TRUE(PumpUntil([&] { return PaneText(caps) == shown; })) << shown;
    }
}

TEST(ClockFormat, TwelveAndTwentyFourHourFormsWithTheirSeparatorsAndSuffixes)
{
    const CClockPane twelve(":", 0, "am", "pm"), full(":", 1, "am", "pm");
    const CClockPane blank(".", 0, "", "PM"), longer("::", 0, "morning", "evening");
    const struct {
        const CClockPane& clock;
        int hour, minute;
        const char* shown;
    } rows[] = {
        {twelve, 12, 5, "12:05 pm"}, {twelve, 0, 5, "12:05 am"},   {twelve, 11, 59, "11:59 am"},
        {twelve, 13, 0, "1:00 pm"},  {full, 0, 5, "0:05"},         {full, 23, 59, "23:59"},
        {blank, 9, 30, "9.30 "},     {longer, 20, 1, "8:01 even"},
    };
    for (const auto& row : rows) // one character of separator, four of each suffix
        EXPECT_EQ(row.shown, row.clock.FormatTime(row.hour, row.minute)) << row.shown;
}

// The clock keeps its right margin and leaves the panes where they are. A
// gap counts for the next pane only, a negative one not at all; eleven
// panes at most.
TEST_F(StatusBarTest, FramePanesGetTheirIndexesGapsAndWidthsTheClockItsMarginAndElevenAtMost)
{
    AddFramePanes();
    EXPECT_EQ((std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}),
              (std::vector<int>{lineCol, insert, caps, num, align, edit, clean, autoSave}));
    EXPECT_EQ(10, PaneRect(0).left);
    // SetNextGap(2) puts 15 pixels in front of the insert and edit panes;
    // every other pane stands 5 behind its neighbour.
    const int gaps[8] = {0, 15, 5, 5, 5, 15, 5, 5};
    std::vector<RECT> before;
    for (int i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        const RECT rc = PaneRect(i);
        before.push_back(rc);
        EXPECT_EQ(3, rc.top);
        EXPECT_EQ(CKmStatusBar::Height() - 2, rc.bottom);
        if (i > 0) {
            EXPECT_EQ(PaneRect(i - 1).right + gaps[i], rc.left);
        }
    }
    // As wide as the widest text: of a toggle's two, whichever shows, and
    // of a choice's list.
    EXPECT_EQ(BarFontWidth("Modified") + 1, Width(PaneRect(clean)));
    EXPECT_EQ(BarFontWidth("Auto-save") + 1, Width(PaneRect(autoSave)));
    EXPECT_EQ(BarFontWidth("Caps") + 1, Width(PaneRect(caps)));
    EXPECT_EQ(BarFontWidth("Indent") + 1, Width(PaneRect(align)));
    // The position pane is measured in the window's own font, not the bar's.
    EXPECT_GT(Width(PaneRect(lineCol)), BarFontWidth("1234567 : 1"));

    bar.ShowClock();
    bar.ShowClock(); // a second clock is not made
    ASSERT_NE(nullptr, bar.m_pClock);
    EXPECT_EQ(1, CKmStatusBar::ClockCount());
    const RECT first = bar.m_pClock->m_rcPane;
    EXPECT_EQ(630, first.right);
    EXPECT_GE(Width(first), BarFontWidth("23:59"));
    bar.Resize(500, 300);
    EXPECT_EQ(490, bar.m_pClock->m_rcPane.right);
    EXPECT_EQ(Width(first), Width(bar.m_pClock->m_rcPane));
    bar.HideClock();
    EXPECT_EQ(0, CKmStatusBar::ClockCount());
    bar.ShowClock();
    EXPECT_EQ(490, bar.m_pClock->m_rcPane.right);
    for (int i = 0; i < 8; ++i) {
        const RECT now = PaneRect(i);
        EXPECT_TRUE(::EqualRect(&before[i], &now)) << "pane " << i;
    }

    bar.SetNextGap(4);
    bar.SetNextGap(-1);
    for (int i = 8; i < 11; ++i)
        EXPECT_EQ(i, bar.AddTogglePane("a", "b"));
    EXPECT_EQ(25, PaneRect(8).left - PaneRect(7).right);
    EXPECT_EQ(5, PaneRect(9).left - PaneRect(8).right);
    EXPECT_EQ(-1, bar.AddTogglePane("a", "b"));
    EXPECT_EQ(-1, bar.AddPositionPane());
    EXPECT_EQ(11, bar.m_nPanes);
}

// The bars share one font, pen and keyboard hook: the first bar makes
// them, the last frees them.
TEST(StatusBarLife, BarsShareTheirStateAndTheLastFreesIt)
{
    auto one = std::make_unique<CKmStatusBar>(), two = std::make_unique<CKmStatusBar>();
    EXPECT_FALSE(one->Destroy()); // without a window nothing works
    one->SetText("nothing", 5);
    EXPECT_FALSE(one->m_bTextShown);
    EXPECT_EQ(-1, one->AddPositionPane());

    HWND first = CreateParent(), second = CreateParent();
    ASSERT_TRUE(one->Create(first));
    const HFONT font = CKmStatusBar::Font();
    const HPEN shadow = CKmStatusBar::ShadowPen();
    ASSERT_TRUE(two->Create(second));
    EXPECT_EQ(font, CKmStatusBar::Font());
    for (int index : {0, 10, 11}) // a bar without panes hands out none, even past its table
        EXPECT_EQ(nullptr, two->GetPane(index)) << index;
    one->ShowClock();
    two->ShowClock();
    EXPECT_TRUE(one->Destroy());
    EXPECT_EQ(1, CKmStatusBar::ClockCount());
    EXPECT_EQ(static_cast<DWORD>(OBJ_FONT), ::GetObjectType(font));
    EXPECT_TRUE(CKmStatusBar::HookSet());

    // A bar whose window goes by itself notices it.
    two->SetText("gone soon", 1);
    ::DestroyWindow(second);
    EXPECT_TRUE(two->m_bDestroyed);
    EXPECT_TRUE(two->Destroy());
    EXPECT_EQ(0, CKmStatusBar::BarCount() + CKmStatusBar::ClockCount());
    EXPECT_EQ(0u, ::GetObjectType(font) + ::GetObjectType(shadow));
    EXPECT_FALSE(CKmStatusBar::HookSet());
    ASSERT_TRUE(one->Create(first)); // a new first bar builds them again
    EXPECT_NE(nullptr, CKmStatusBar::Font());
    EXPECT_TRUE(one->Destroy());
    ::DestroyWindow(first);
}

} // namespace
