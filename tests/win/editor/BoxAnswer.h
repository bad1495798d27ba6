// Answers the program's message boxes as a user would: a thread hook sees
// each box become active, reads its text and presses a button of it.
#pragma once
#include <windows.h>

#include <deque>
#include <string>
#include <vector>

class BoxAnswerer
{
  public:
    struct Box {
        std::string text;    // the text of the box, as shown
        std::string buttons; // the buttons it has: O(K), C(ancel), Y(es), N(o)
        int pressed;         // the id of the button that was pressed
    };

    BoxAnswerer();
    ~BoxAnswerer();
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    // The buttons for the next boxes, in order. A box for which none is
    // queued, or that lacks the queued button, gets No, else Cancel, else
    // OK.
    void Queue(int button) { m_queue.push_back(button); }
    void Clear()
    {
        m_queue.clear();
        boxes.clear();
    }

    std::vector<Box> boxes;

  private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box);

    HHOOK m_hook = nullptr;
    HWND m_lastBox = nullptr;
    std::deque<int> m_queue;
};

// Dispatches what is queued for this thread until nothing has come for a
// little while.
void PumpUntilIdle();
