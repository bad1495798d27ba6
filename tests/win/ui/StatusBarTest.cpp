// The status bar in a window of its own: panes as the frame lays them out,
// texts, the clock, Caps and Num, and the state the bars share.
#include "ui/StatusBar.h"
#include "resources/KmIds.h"
#include "ui/StatusPanes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

const unsigned kMissingId = 4242; // no string has this number

LRESULT CALLBACK ParentProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefWindowProcA(wnd, message, wParam, lParam);
}

// One visible top-level window holds the parents of the bars: a top-level
// window under wine takes seconds to go away, a child doesn't.
HWND Host()
{
    static HWND host = nullptr;
    if (!host) {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = ParentProc;
        wc.hInstance = ::GetModuleHandleA(nullptr);
        wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = "StatusBarTestParent";
        ::RegisterClassA(&wc);
        host = ::CreateWindowExA(0, wc.lpszClassName, "Status bar test",
                                 WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000, 400, nullptr,
                                 nullptr, wc.hInstance, nullptr);
    }
    return host;
}

HWND CreateParent()
{
    return ::CreateWindowExA(0, "StatusBarTestParent", "", WS_CHILD | WS_VISIBLE, 0, 0, 640, 200,
                             Host(), nullptr, ::GetModuleHandleA(nullptr), nullptr);
}

// Dispatches messages until done() holds or the time runs out; whether it held.
template <typename Done> bool PumpUntil(Done done, DWORD milliseconds)
{
    const DWORD start = ::GetTickCount();
    for (;;) {
        MSG msg;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
        if (done())
            return true;
        const DWORD spent = ::GetTickCount() - start;
        if (spent >= milliseconds)
            return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - spent, QS_ALLINPUT);
    }
}

void Pump(DWORD milliseconds)
{
    PumpUntil([] { return false; }, milliseconds);
}

std::string LoadText(unsigned id)
{
    char text[128] = "";
    ::LoadStringA(::GetModuleHandleA(nullptr), id, text, sizeof text);
    return text;
}

std::string WindowText(HWND wnd)
{
    char text[512] = "";
    ::GetWindowTextA(wnd, text, sizeof text);
    return text;
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

bool HasUpdate(HWND wnd)
{
    return ::GetUpdateRect(wnd, nullptr, FALSE) != 0;
}

void SetLockKey(int key, bool on)
{
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[key] = on ? (keys[key] | 1) : (keys[key] & ~1);
    ::SetKeyboardState(keys);
}

class StatusBarTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(CKmStatusBar::BarCount(), 0);
        parent = CreateParent();
        ASSERT_NE(parent, nullptr);
        ASSERT_TRUE(bar.Create(parent));
        RECT client;
        ::GetClientRect(parent, &client);
        EXPECT_EQ(bar.Resize(client.right, client.bottom), CKmStatusBar::Height());
    }

    void TearDown() override
    {
        bar.Destroy();
        ::DestroyWindow(parent);
    }

    // The frame's panes in the frame's order, with the program's strings.
    void AddFramePanes()
    {
        lineCol = bar.AddPositionPane();
        bar.SetNextGap(2);
        insert = bar.AddTogglePane(LoadText(IDS_PANE_INS).c_str(), LoadText(IDS_PANE_OVR).c_str());
        caps = bar.AddCapsPane(LoadText(IDS_PANE_CAPS).c_str());
        num = bar.AddNumPane(LoadText(IDS_PANE_NUM).c_str());
        align = bar.AddChoicePane(LoadText(IDS_PANE_ALIGN).c_str());
        bar.SetNextGap(2);
        edit = bar.AddTogglePane(LoadText(IDS_PANE_EDIT).c_str(), LoadText(IDS_PANE_READ).c_str());
        clean = bar.AddTogglePane(LoadText(IDS_PANE_CLEAN).c_str(),
                                  LoadText(IDS_PANE_MODIFIED).c_str());
        autoSave = bar.AddTogglePane(LoadText(IDS_PANE_NOAUTOSAVE).c_str(),
                                     LoadText(IDS_AUTOSAVE).c_str());
    }

    const RECT& PaneRect(int index)
    {
        static const RECT none = {0, 0, 0, 0};
        CStatusPane* pane = bar.GetPane(index);
        EXPECT_NE(pane, nullptr) << "pane " << index;
        return pane ? pane->m_rcPane : none;
    }

    std::string PaneText(int index)
    {
        CStatusPane* pane = bar.GetPane(index);
        EXPECT_NE(pane, nullptr) << "pane " << index;
        return pane ? pane->Text() : std::string();
    }

    HWND parent = nullptr;
    CKmStatusBar bar;
    int lineCol = -1, insert = -1, caps = -1, num = -1, align = -1, edit = -1, clean = -1,
        autoSave = -1;
};

TEST_F(StatusBarTest, FramePanesGetTheirIndexesAndGaps)
{
    AddFramePanes();
    EXPECT_EQ(lineCol, 0);
    EXPECT_EQ(insert, 1);
    EXPECT_EQ(caps, 2);
    EXPECT_EQ(num, 3);
    EXPECT_EQ(align, 4);
    EXPECT_EQ(edit, 5);
    EXPECT_EQ(clean, 6);
    EXPECT_EQ(autoSave, 7);

    EXPECT_EQ(PaneRect(0).left, 10);
    // SetNextGap(2) puts 15 pixels in front of the insert and edit panes,
    // every other pane stands 5 behind its neighbour.
    const int gaps[8] = {0, 15, 5, 5, 5, 15, 5, 5};
    for (int i = 0; i < 8; ++i) {
        const RECT& rc = PaneRect(i);
        EXPECT_EQ(rc.top, 3) << "pane " << i;
        EXPECT_EQ(rc.bottom, CKmStatusBar::Height() - 2) << "pane " << i;
        if (i > 0) {
            EXPECT_EQ(rc.left, PaneRect(i - 1).right + gaps[i]) << "pane " << i;
        }
        const RECT& text = bar.GetPane(i)->m_rcText;
        EXPECT_EQ(text.left, rc.left + 1);
        EXPECT_EQ(text.top, rc.top + 1);
    }
}

TEST_F(StatusBarTest, PanesAreAsWideAsTheirWidestText)
{
    AddFramePanes();
    // Toggles: the wider of the two texts, whichever state shows.
    EXPECT_EQ(Width(PaneRect(clean)), BarFontWidth("Modified") + 1);
    EXPECT_EQ(Width(PaneRect(autoSave)), BarFontWidth("Auto-save") + 1);
    EXPECT_EQ(Width(PaneRect(caps)), BarFontWidth("Caps") + 1);
    // Choices: the widest part of the list.
    EXPECT_EQ(Width(PaneRect(align)), BarFontWidth("Indent") + 1);
    // The position pane is measured in the window's own font, not the bar's.
    EXPECT_GT(Width(PaneRect(lineCol)), BarFontWidth("1234567 : 1"));
}

TEST_F(StatusBarTest, ElevenPanesAtMost)
{
    for (int i = 0; i < 11; ++i)
        EXPECT_EQ(bar.AddTogglePane("a", "b"), i);
    EXPECT_EQ(bar.AddTogglePane("a", "b"), -1);
    EXPECT_EQ(bar.AddPositionPane(), -1);
    EXPECT_EQ(bar.AddChoicePane("x,y"), -1);
    EXPECT_EQ(bar.AddCapsPane("Caps"), -1);
    EXPECT_EQ(bar.m_nPanes, 11);
}

TEST_F(StatusBarTest, NextGapCountsInFivesAndIgnoresNegatives)
{
    bar.AddTogglePane("a", "b");
    bar.SetNextGap(-1);
    bar.AddTogglePane("a", "b");
    bar.SetNextGap(0);
    bar.AddTogglePane("a", "b");
    bar.SetNextGap(4);
    bar.AddTogglePane("a", "b");
    bar.AddTogglePane("a", "b");
    EXPECT_EQ(PaneRect(1).left - PaneRect(0).right, 5);
    EXPECT_EQ(PaneRect(2).left - PaneRect(1).right, 5);
    EXPECT_EQ(PaneRect(3).left - PaneRect(2).right, 25);
    EXPECT_EQ(PaneRect(4).left - PaneRect(3).right, 5);
}

TEST_F(StatusBarTest, TextFromTheStringTable)
{
    bar.SetTextId(IDS_IDLE, 0);
    EXPECT_TRUE(bar.m_bTextShown);
    EXPECT_FALSE(LoadText(IDS_IDLE).empty());
    EXPECT_EQ(WindowText(bar.GetHwnd()), LoadText(IDS_IDLE));

    bar.SetTextId(kMissingId, 0);
    EXPECT_EQ(WindowText(bar.GetHwnd()), "No resource string 4242");

    bar.SetTextId(0, 0);
    EXPECT_FALSE(bar.m_bTextShown);
    EXPECT_EQ(WindowText(bar.GetHwnd()), "");
}

TEST_F(StatusBarTest, TimedTextGoesAwayAfterItsTime)
{
    const DWORD start = ::GetTickCount();
    bar.SetText("Saved", 1);
    EXPECT_TRUE(bar.m_bTextShown);
    ASSERT_TRUE(PumpUntil([&] { return !bar.m_bTextShown; }, 3000));
    EXPECT_GE(::GetTickCount() - start, 900u);
    EXPECT_EQ(WindowText(bar.GetHwnd()), "");
}

TEST_F(StatusBarTest, UntimedTextStopsARunningTimer)
{
    bar.SetText("Saved", 1);
    bar.SetText("Stays", 0);
    Pump(1500);
    EXPECT_TRUE(bar.m_bTextShown);
    EXPECT_EQ(WindowText(bar.GetHwnd()), "Stays");
}

// Renders the bar's client area into a bitmap, through WM_PRINTCLIENT.
std::vector<DWORD> Render(HWND wnd)
{
    RECT client;
    ::GetClientRect(wnd, &client);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC dc = ::CreateCompatibleDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ::SendMessageA(wnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    ::GdiFlush();
    const DWORD* pixels = static_cast<const DWORD*>(bits);
    std::vector<DWORD> copy(pixels, pixels + client.right * client.bottom);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(bitmap);
    return copy;
}

TEST_F(StatusBarTest, LongTextIsCutAt127Characters)
{
    std::string text;
    for (int i = 0; i < 200; ++i)
        text += static_cast<char>('a' + i % 26);
    // Wide enough for every character of it.
    bar.Resize(BarFontWidth(text) + 40, 300);

    bar.SetText(text.c_str(), 0);
    EXPECT_EQ(WindowText(bar.GetHwnd()), text); // kept whole, cut when painted
    const std::vector<DWORD> whole = Render(bar.GetHwnd());
    bar.SetText(text.substr(0, 127).c_str(), 0);
    const std::vector<DWORD> cut = Render(bar.GetHwnd());
    bar.SetText(text.substr(0, 126).c_str(), 0);
    const std::vector<DWORD> shorter = Render(bar.GetHwnd());
    EXPECT_TRUE(whole == cut);
    EXPECT_FALSE(whole == shorter);
}

TEST_F(StatusBarTest, ChoiceIgnoresAnIndexOutOfRange)
{
    AddFramePanes();
    EXPECT_EQ(PaneText(align), " ");
    bar.SetPaneChoice(align, 2);
    EXPECT_EQ(PaneText(align), "Indent");
    bar.SetPaneChoice(align, 3);
    EXPECT_EQ(PaneText(align), "Indent");
    bar.SetPaneChoice(align, -1);
    EXPECT_EQ(PaneText(align), "Indent");
    bar.SetPaneChoice(align, 1);
    EXPECT_EQ(PaneText(align), "Align");

    ::ValidateRect(bar.GetHwnd(), nullptr);
    bar.SetPaneChoice(align, 1);
    EXPECT_FALSE(HasUpdate(bar.GetHwnd()));
    bar.SetPaneChoice(align, 0);
    EXPECT_TRUE(HasUpdate(bar.GetHwnd()));

    // Calls for other kinds of pane or bad indexes change nothing.
    bar.SetPaneState(align, true);
    bar.SetPaneChoice(insert, 1);
    bar.SetPaneChoice(42, 1);
    EXPECT_EQ(PaneText(align), " ");
    EXPECT_EQ(PaneText(insert), "Ins");
}

TEST_F(StatusBarTest, EmptyChoiceListHasNoChoices)
{
    const int index = bar.AddChoicePane("");
    ASSERT_GE(index, 0);
    EXPECT_EQ(PaneText(index), "");
    bar.SetPaneChoice(index, 0);
    EXPECT_EQ(PaneText(index), "");
    const int inner = bar.AddChoicePane("a,,b");
    bar.SetPaneChoice(inner, 2);
    EXPECT_EQ(PaneText(inner), "b");
    bar.SetPaneChoice(inner, 1);
    EXPECT_EQ(PaneText(inner), "");
}

TEST_F(StatusBarTest, PositionPaneShowsLineAndColumn)
{
    AddFramePanes();
    EXPECT_EQ(PaneText(lineCol), "0 : 0");
    bar.SetPanePosition(lineCol, 1234567, 1234);
    EXPECT_EQ(PaneText(lineCol), "1234567 : 1234");
    // A minimised child reports -1 and 0.
    bar.SetPanePosition(lineCol, -1, 0);
    EXPECT_EQ(PaneText(lineCol), "-1 : 0");

    ::ValidateRect(bar.GetHwnd(), nullptr);
    bar.SetPanePosition(lineCol, -1, 0);
    EXPECT_FALSE(HasUpdate(bar.GetHwnd()));
    bar.SetPanePosition(lineCol, -1, 1);
    EXPECT_TRUE(HasUpdate(bar.GetHwnd()));
    ::ValidateRect(bar.GetHwnd(), nullptr);
    bar.SetPanePosition(lineCol, 2, 1);
    EXPECT_TRUE(HasUpdate(bar.GetHwnd()));
}

TEST_F(StatusBarTest, TogglesSwitchBetweenTheirTexts)
{
    AddFramePanes();
    EXPECT_EQ(PaneText(edit), "Edit");
    bar.SetPaneState(edit, true);
    EXPECT_EQ(PaneText(edit), "Read");
    bar.TogglePane(edit);
    EXPECT_EQ(PaneText(edit), "Edit");
    bar.TogglePane(edit);
    EXPECT_EQ(PaneText(edit), "Read");
    bar.SetPaneState(edit, false);
    EXPECT_EQ(PaneText(edit), "Edit");
    EXPECT_EQ(PaneText(autoSave), " "); // off at the start
}

TEST_F(StatusBarTest, CapsAndNumFollowTheKeysOnRefresh)
{
    SetLockKey(VK_CAPITAL, true);
    SetLockKey(VK_NUMLOCK, false);
    AddFramePanes();
    EXPECT_EQ(PaneText(caps), "Caps");
    EXPECT_EQ(PaneText(num), "");

    SetLockKey(VK_CAPITAL, false);
    SetLockKey(VK_NUMLOCK, true);
    EXPECT_EQ(PaneText(caps), "Caps"); // unchanged until asked
    bar.RefreshLocks();
    EXPECT_EQ(PaneText(caps), "");
    EXPECT_EQ(PaneText(num), "Num");

    SetLockKey(VK_NUMLOCK, false);
    bar.RefreshLocks();
    EXPECT_EQ(PaneText(num), "");

    // A second Caps pane is not added.
    EXPECT_EQ(bar.AddCapsPane("CAPS"), caps);
    EXPECT_EQ(bar.AddNumPane("NUM"), num);
    EXPECT_EQ(bar.m_nPanes, 8);
}

void PressKey(WORD key)
{
    INPUT input[2] = {};
    input[0].type = input[1].type = INPUT_KEYBOARD;
    input[0].ki.wVk = input[1].ki.wVk = key;
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    ::SendInput(2, input, sizeof(INPUT));
}

TEST_F(StatusBarTest, KeyboardHookFollowsCapsLock)
{
    AddFramePanes();
    ::SetForegroundWindow(Host());
    ::SetFocus(parent);
    const bool before = (::GetKeyState(VK_CAPITAL) & 1) != 0;
    EXPECT_EQ(PaneText(caps), before ? "Caps" : "");
    PressKey(VK_CAPITAL);
    const bool turned = PumpUntil([&] { return PaneText(caps) == (before ? "" : "Caps"); }, 2000);
    PressKey(VK_CAPITAL);
    EXPECT_TRUE(turned);
    EXPECT_TRUE(PumpUntil([&] { return PaneText(caps) == (before ? "Caps" : ""); }, 2000));
}

TEST(ClockFormat, TwelveHourForm)
{
    CClockPane clock(":", 0, "am", "pm");
    EXPECT_EQ(clock.FormatTime(12, 5), "12:05 pm");
    EXPECT_EQ(clock.FormatTime(0, 5), "12:05 am");
    EXPECT_EQ(clock.FormatTime(11, 59), "11:59 am");
    EXPECT_EQ(clock.FormatTime(13, 0), "1:00 pm");
    EXPECT_EQ(clock.FormatTime(23, 59), "11:59 pm");
}

TEST(ClockFormat, TwentyFourHourForm)
{
    CClockPane clock(":", 1, "am", "pm");
    EXPECT_EQ(clock.FormatTime(0, 5), "0:05");
    EXPECT_EQ(clock.FormatTime(12, 5), "12:05");
    EXPECT_EQ(clock.FormatTime(23, 59), "23:59");
}

TEST(ClockFormat, SeparatorAndSuffixesAsConfigured)
{
    CClockPane empty(".", 0, "", "PM");
    EXPECT_EQ(empty.FormatTime(9, 30), "9.30 "); // the blank stays
    EXPECT_EQ(empty.FormatTime(21, 30), "9.30 PM");
    // One character of separator, four of each suffix.
    CClockPane longer("::", 0, "morning", "evening");
    EXPECT_EQ(longer.FormatTime(8, 1), "8:01 morn");
    EXPECT_EQ(longer.FormatTime(20, 1), "8:01 even");
}

TEST_F(StatusBarTest, ClockKeepsItsRightMarginAndThePanes)
{
    AddFramePanes();
    std::vector<RECT> before;
    for (int i = 0; i < 8; ++i)
        before.push_back(PaneRect(i));

    bar.ShowClock();
    ASSERT_NE(bar.m_pClock, nullptr);
    EXPECT_EQ(CKmStatusBar::ClockCount(), 1);
    RECT client;
    ::GetClientRect(bar.GetHwnd(), &client);
    const RECT first = bar.m_pClock->m_rcPane;
    EXPECT_EQ(first.right, client.right - 10);
    EXPECT_EQ(first.top, 3);
    EXPECT_EQ(first.bottom, CKmStatusBar::Height() - 2);
    EXPECT_GE(Width(first), BarFontWidth("23:59"));

    bar.ShowClock(); // a second clock is not made
    EXPECT_EQ(CKmStatusBar::ClockCount(), 1);

    bar.Resize(900, 300);
    EXPECT_EQ(bar.m_pClock->m_rcPane.right, 890);
    EXPECT_EQ(Width(bar.m_pClock->m_rcPane), Width(first));
    bar.Resize(500, 300);
    EXPECT_EQ(bar.m_pClock->m_rcPane.right, 490);

    bar.HideClock();
    EXPECT_EQ(bar.m_pClock, nullptr);
    EXPECT_EQ(CKmStatusBar::ClockCount(), 0);
    bar.ShowClock();
    EXPECT_EQ(bar.m_pClock->m_rcPane.right, 490);
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(::EqualRect(&before[i], &PaneRect(i))) << "pane " << i;
    }
}

TEST(StatusBarLife, DestroyWithoutAWindowFails)
{
    CKmStatusBar bar;
    EXPECT_FALSE(bar.Exists());
    EXPECT_FALSE(bar.Destroy());
    EXPECT_EQ(bar.Resize(100, 100), 0);
    bar.SetText("nothing", 5); // does nothing without a window
    EXPECT_FALSE(bar.m_bTextShown);
    EXPECT_EQ(bar.AddPositionPane(), -1);
}

TEST(StatusBarLife, BarsShareTheirStateAndTheLastFreesIt)
{
    ASSERT_EQ(CKmStatusBar::BarCount(), 0);
    HWND first = CreateParent();
    HWND second = CreateParent();
    auto one = std::make_unique<CKmStatusBar>();
    auto two = std::make_unique<CKmStatusBar>();
    ASSERT_TRUE(one->Create(first));
    const HFONT font = CKmStatusBar::Font();
    ASSERT_NE(font, nullptr);
    EXPECT_TRUE(CKmStatusBar::HookSet());
    const int height = CKmStatusBar::Height();
    EXPECT_GT(height, 9);
    const HPEN shadow = CKmStatusBar::ShadowPen();

    ASSERT_TRUE(two->Create(second));
    EXPECT_EQ(CKmStatusBar::BarCount(), 2);
    EXPECT_EQ(CKmStatusBar::Font(), font);
    EXPECT_EQ(two->Resize(300, 200), height);
    one->ShowClock();
    two->ShowClock();
    EXPECT_EQ(CKmStatusBar::ClockCount(), 2);

    EXPECT_TRUE(one->Destroy());
    EXPECT_FALSE(one->Exists());
    EXPECT_FALSE(::IsWindow(one->GetHwnd()));
    EXPECT_EQ(CKmStatusBar::BarCount(), 1);
    EXPECT_EQ(CKmStatusBar::ClockCount(), 1);
    EXPECT_EQ(::GetObjectType(font), static_cast<DWORD>(OBJ_FONT));
    EXPECT_TRUE(CKmStatusBar::HookSet());
    EXPECT_FALSE(one->Destroy());

    HWND wnd = two->GetHwnd();
    EXPECT_TRUE(two->Destroy());
    EXPECT_FALSE(::IsWindow(wnd));
    EXPECT_EQ(CKmStatusBar::BarCount(), 0);
    EXPECT_EQ(CKmStatusBar::ClockCount(), 0);
    EXPECT_EQ(CKmStatusBar::Font(), nullptr);
    EXPECT_EQ(::GetObjectType(font), 0u);
    EXPECT_EQ(::GetObjectType(shadow), 0u);
    EXPECT_FALSE(CKmStatusBar::HookSet());

    // A new first bar builds them again.
    ASSERT_TRUE(one->Create(first));
    EXPECT_NE(CKmStatusBar::Font(), nullptr);
    EXPECT_EQ(CKmStatusBar::Height(), height);
    EXPECT_TRUE(one->Destroy());
    ::DestroyWindow(first);
    ::DestroyWindow(second);
}

TEST(StatusBarLife, WindowGoingByItselfIsNoticed)
{
    HWND parent = CreateParent();
    CKmStatusBar bar;
    ASSERT_TRUE(bar.Create(parent));
    bar.AddPositionPane();
    bar.ShowClock();
    bar.SetText("gone soon", 1);
    ::DestroyWindow(parent);
    EXPECT_TRUE(bar.m_bDestroyed);
    bar.SetText("nobody sees this", 0);
    bar.SetPanePosition(0, 5, 5);
    EXPECT_TRUE(bar.Destroy());
    EXPECT_EQ(CKmStatusBar::BarCount(), 0);
    EXPECT_EQ(CKmStatusBar::ClockCount(), 0);
    EXPECT_FALSE(CKmStatusBar::HookSet());
}

} // namespace
