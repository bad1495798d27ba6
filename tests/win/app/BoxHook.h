// Answers the program's message boxes from inside: a CBT hook of this thread
// sees each box activate, notes its text and presses one of its buttons.
#pragma once
#include <windows.h>

#include <deque>
#include <string>
#include <vector>

class BoxHook
{
  public:
    BoxHook();
    ~BoxHook();
    BoxHook(const BoxHook&) = delete;
    BoxHook& operator=(const BoxHook&) = delete;

    // Buttons for the coming boxes, in order; a box with nothing queued (or
    // without the queued button) gets No, else Cancel, else OK.
    void Queue(int button) { m_answers.push_back(button); }

    std::vector<std::string> texts; // the text of each box seen, in order

  private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box);

    HHOOK m_hook = nullptr;
    HWND m_last = nullptr;
    std::deque<int> m_answers;
};

// Dispatches this thread's messages until nothing has come for a while.
void PumpUntilIdle();
