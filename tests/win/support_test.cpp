// The helpers of the window tests, against real message boxes and a real
// message queue.
#include "support/WinTestSupport.h"

#include <gtest/gtest.h>

namespace
{

using kmtest::MessageBoxAnswerer;

const UINT kChain = WM_APP + 1;

struct Counter {
    int chained = 0;
    int timerTicks = 0;
};
Counter g_counter;

LRESULT CALLBACK CountingProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kChain) {
        ++g_counter.chained;
        if (wParam > 1) // each message posts the next, so the queue refills
            ::PostMessageA(wnd, kChain, wParam - 1, 0);
        return 0;
    }
    if (message == WM_TIMER) {
        ++g_counter.timerTicks;
        return 0;
    }
    return ::DefWindowProcA(wnd, message, wParam, lParam);
}

HWND CreateCountingWindow()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = CountingProc;
    wc.hInstance = ::GetModuleHandleA(nullptr);
    wc.lpszClassName = "KmSupportTestCounter";
    ::RegisterClassA(&wc);
    return ::CreateWindowExA(0, wc.lpszClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             wc.hInstance, nullptr);
}

TEST(MessageBoxAnswerer, CapturesTheTextAndPressesTheQueuedButton)
{
    MessageBoxAnswerer answerer;
    answerer.Answer(IDNO);

    const int result =
        ::MessageBoxA(nullptr, "Save changes to a.c?", "Kelmar", MB_YESNOCANCEL | MB_ICONQUESTION);

    EXPECT_EQ(IDNO, result);
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ("Save changes to a.c?", answerer.Boxes()[0].text);
    EXPECT_EQ("Kelmar", answerer.Boxes()[0].caption);
    EXPECT_EQ(IDNO, answerer.Boxes()[0].pressed);
    EXPECT_EQ(0u, answerer.Pending());
    EXPECT_EQ(0, answerer.Unexpected());
}

TEST(MessageBoxAnswerer, AnswersBoxesInTurn)
{
    MessageBoxAnswerer answerer;
    answerer.Answer({IDYES, IDCANCEL});
    answerer.Answer(IDOK);

    EXPECT_EQ(IDYES, ::MessageBoxA(nullptr, "first", "Kelmar", MB_YESNO));
    EXPECT_EQ(IDCANCEL, ::MessageBoxA(nullptr, "second\nline two", "Kelmar", MB_OKCANCEL));
    EXPECT_EQ(IDOK, ::MessageBoxA(nullptr, "third", "Kelmar", MB_OK | MB_ICONSTOP));

    const std::vector<std::string> expected = {"first", "second\nline two", "third"};
    EXPECT_EQ(expected, answerer.Texts());
    EXPECT_EQ("third", answerer.LastText());
}

TEST(MessageBoxAnswerer, AnswersABoxWithAnOwner)
{
    HWND owner =
        ::CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                          nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(owner);
    MessageBoxAnswerer answerer;
    answerer.Answer(IDRETRY);

    EXPECT_EQ(IDRETRY, ::MessageBoxA(owner, "Printer not ready.", "Print", MB_RETRYCANCEL));
    EXPECT_EQ("Printer not ready.", answerer.LastText());
    ::DestroyWindow(owner);
}

TEST(MessageBoxAnswerer, AnUnexpectedBoxGetsItsDefaultButton)
{
    MessageBoxAnswerer answerer;

    EXPECT_EQ(IDNO, ::MessageBoxA(nullptr, "Overwrite?", "Kelmar", MB_YESNO | MB_DEFBUTTON2));
    EXPECT_EQ(IDOK, ::MessageBoxA(nullptr, "Done.", "Kelmar", MB_OK));
    EXPECT_EQ(2, answerer.Unexpected());
    EXPECT_EQ(0, answerer.Boxes()[0].pressed);
}

TEST(PumpUntilIdle, TakesMessagesThatPostFurtherMessages)
{
    HWND wnd = CreateCountingWindow();
    ASSERT_TRUE(wnd);
    g_counter = Counter();
    ::PostMessageA(wnd, kChain, 50, 0);

    kmtest::PumpUntilIdle();

    EXPECT_EQ(50, g_counter.chained);
    MSG msg;
    EXPECT_FALSE(::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE));
    ::DestroyWindow(wnd);
}

TEST(PumpUntilIdle, EndsWithinItsLimitWhileATimerRuns)
{
    HWND wnd = CreateCountingWindow();
    ASSERT_TRUE(wnd);
    g_counter = Counter();
    ::SetTimer(wnd, 1, 10, nullptr);

    const DWORD start = ::GetTickCount();
    kmtest::PumpUntilIdle(200, 300);
    const DWORD spent = ::GetTickCount() - start;

    EXPECT_GE(spent, 290u);
    EXPECT_LT(spent, 1000u);
    EXPECT_GT(g_counter.timerTicks, 5);
    ::KillTimer(wnd, 1);
    ::DestroyWindow(wnd);
}

TEST(PumpUntilIdle, LeavesAQuitForTheCallersLoop)
{
    ::PostQuitMessage(3);

    kmtest::PumpUntilIdle();

    MSG msg;
    ASSERT_TRUE(::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(static_cast<UINT>(WM_QUIT), msg.message);
    EXPECT_EQ(3u, msg.wParam);
}

TEST(PumpUntil, StopsWhenTheConditionHolds)
{
    HWND wnd = CreateCountingWindow();
    ASSERT_TRUE(wnd);
    g_counter = Counter();
    ::SetTimer(wnd, 1, 10, nullptr);

    EXPECT_TRUE(kmtest::PumpUntil([] { return g_counter.timerTicks >= 3; }, 2000));
    EXPECT_FALSE(kmtest::PumpUntil([] { return false; }, 50));
    ::KillTimer(wnd, 1);
    ::DestroyWindow(wnd);
}

} // namespace
