// The kit against real message boxes and a real message queue.
#include "support/WinTestSupport.h"

namespace
{

using kmtest::BoxAnswerer;

const UINT kChain = WM_APP + 1;
int g_chained = 0, g_ticks = 0;

LRESULT CALLBACK CountingProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kChain && ++g_chained && wParam > 1) // each posts the next
        ::PostMessageA(wnd, kChain, wParam - 1, 0);
    g_ticks += message == WM_TIMER;
    return ::DefWindowProcA(wnd, message, wParam, lParam);
}

HWND CountingWindow()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = CountingProc;
    wc.lpszClassName = "KmSupportTestCounter";
    ::RegisterClassA(&wc);
    g_chained = g_ticks = 0;
    return ::CreateWindowExA(0, wc.lpszClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                             nullptr);
}

TEST(BoxAnswerer, PressesTheQueuedButtonsInTurnAndRecordsEachBox)
{
    HWND owner = ::CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                   300, 200, nullptr, nullptr, nullptr, nullptr);
    BoxAnswerer answerer;
    answerer.Queue({IDNO, IDCANCEL, IDRETRY});
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "Save a.c?", "Kelmar", MB_YESNOCANCEL));
    EXPECT_EQ(IDCANCEL, ::MessageBoxA(nullptr, "two\nlines", "Other", MB_OKCANCEL));
    EXPECT_EQ(IDRETRY, ::MessageBoxA(owner, "Not ready.", "Print", MB_RETRYCANCEL));
    ASSERT_EQ(3u, answerer.Boxes().size());
    EXPECT_EQ((std::vector<std::string>{"Save a.c?", "two\nlines", "Not ready."}),
              answerer.Texts());
    EXPECT_EQ("Kelmar", answerer.Boxes()[0].caption);
    EXPECT_EQ("Other", answerer.Boxes()[1].caption);
    EXPECT_EQ("CYN", answerer.Boxes()[0].buttons);
    EXPECT_EQ("OC", answerer.Boxes()[1].buttons);
    EXPECT_EQ(IDCANCEL, answerer.Boxes()[1].pressed);
    EXPECT_EQ(0, answerer.Unexpected());
    EXPECT_EQ(0u, answerer.Pending());
    ::DestroyWindow(owner);
}

TEST(BoxAnswerer, AnUnexpectedBoxGetsTheFirstButtonOfThePolicyAndIsCounted)
{
    BoxAnswerer answerer;
    EXPECT_EQ(IDCANCEL, ::MessageBoxA(nullptr, "a", "Kelmar", MB_YESNOCANCEL));
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "b", "Kelmar", MB_YESNO));
    EXPECT_EQ(IDOK, ::MessageBoxA(nullptr, "c", "Kelmar", MB_OK));
    answerer.Queue({IDYES}); // a button the box lacks
    EXPECT_EQ(IDOK, ::MessageBoxA(nullptr, "d", "Kelmar", MB_OK));
    answerer.WhenUnexpected({IDNO, IDOK});
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "e", "Kelmar", MB_YESNOCANCEL));
    EXPECT_EQ(5, answerer.Unexpected());
    EXPECT_FALSE(answerer.Boxes()[3].expected);
    answerer.Clear();
    EXPECT_EQ(0, answerer.Unexpected());
}

TEST(Pump, TakesChainsOfMessagesAndStopsOnACondition)
{
    HWND wnd = CountingWindow();
    ::PostMessageA(wnd, kChain, 50, 0);
    EXPECT_FALSE(kmtest::PumpUntilIdle());
    EXPECT_EQ(50, g_chained);
    MSG msg;
    EXPECT_FALSE(::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE));

    ::SetTimer(wnd, 1, 10, nullptr);
    EXPECT_TRUE(kmtest::PumpUntil([] { return g_ticks >= 3; }));
    EXPECT_FALSE(kmtest::PumpUntil([] { return false; }, 50));
    ::DestroyWindow(wnd);
}

TEST(Pump, TakesAQuitOutAndSaysSo)
{
    ::PostQuitMessage(3);
    EXPECT_TRUE(kmtest::PumpUntilIdle());
    MSG msg;
    EXPECT_FALSE(::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_FALSE(kmtest::PumpUntilIdle());
}

} // namespace
