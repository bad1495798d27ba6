// The kit against real message boxes and a real message queue.
#include "support/WinTestSupport.h"

namespace
{

TEST(BoxAnswerer, PressesTheQueuedButtonsThenThePolicyAndCountsTheUnexpected)
{
    kmtest::BoxAnswerer answerer;
    answerer.Queue({IDNO, IDRETRY});
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "Save a.c?", "Kelmar", MB_YESNOCANCEL));
    EXPECT_EQ(IDRETRY, ::MessageBoxA(nullptr, "two\nlines", "Print", MB_RETRYCANCEL));
    EXPECT_EQ(IDCANCEL, ::MessageBoxA(nullptr, "c", "Kelmar", MB_YESNOCANCEL)); // none queued
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "d", "Kelmar", MB_YESNO));
    answerer.Queue({IDYES}); // a button the box lacks
    EXPECT_EQ(IDOK, ::MessageBoxA(nullptr, "e", "Kelmar", MB_OK));
    answerer.WhenUnexpected({IDNO, IDOK});
    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "f", "Kelmar", MB_YESNOCANCEL));
    EXPECT_EQ((std::vector<std::string>{"Save a.c?", "two\nlines", "c", "d", "e", "f"}),
              answerer.Texts());
    EXPECT_EQ("Print", answerer.Boxes()[1].caption);
    EXPECT_EQ("CYN", answerer.Boxes()[0].buttons);
    EXPECT_EQ(4, answerer.Unexpected());
    answerer.Clear();
    EXPECT_EQ(0, answerer.Unexpected());
}

const UINT kChain = WM_APP + 1;
int g_chained = 0;

LRESULT CALLBACK ChainProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kChain && ++g_chained && wParam > 1) // each posts the next
        ::PostMessageA(wnd, kChain, wParam - 1, 0);
    return ::DefWindowProcA(wnd, message, wParam, lParam);
}

TEST(Pump, TakesChainsOfMessagesStopsOnAConditionAndTakesAQuitOut)
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = ChainProc;
    wc.lpszClassName = "KmSupportTestChain";
    ::RegisterClassA(&wc);
    HWND wnd = ::CreateWindowExA(0, wc.lpszClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                 nullptr, nullptr);
    ::PostMessageA(wnd, kChain, 50, 0);
    EXPECT_FALSE(kmtest::PumpUntilIdle());
    EXPECT_EQ(50, g_chained);
    ::PostMessageA(wnd, kChain, 3, 0);
    EXPECT_TRUE(kmtest::PumpUntil([] { return g_chained == 53; }));
    EXPECT_FALSE(kmtest::PumpUntil([] { return false; }, 50));
    ::PostQuitMessage(3);
    EXPECT_TRUE(kmtest::PumpUntilIdle());
    EXPECT_FALSE(kmtest::PumpUntilIdle()); // taken out
    ::DestroyWindow(wnd);
}

} // namespace
