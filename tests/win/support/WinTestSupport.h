// Helpers for the window tests: pumping the message queue and answering the
// message boxes that the code under test puts up.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace kmtest
{

// Dispatches this thread's messages until the queue has stayed empty for
// settleMs, or limitMs have passed (a fast timer never lets it settle).
// A WM_QUIT met on the way is posted again for the caller's loop.
void PumpUntilIdle(DWORD settleMs = 20, DWORD limitMs = 2000);

// Dispatches messages until done() holds or limitMs have passed; whether it held.
bool PumpUntil(const std::function<bool()>& done, DWORD limitMs = 2000);

// Removes a directory with everything in it, read-only files too.
void RemoveTree(const std::string& dir);

// An empty directory of this process under the temporary directory, named
// from stem; its full path, or an empty string if it could not be made.
std::string FreshTempDir(const char* stem);

// The text with A to Z lower-cased, as window paths are.
std::string Lower(std::string text);

// While it lives, every dialog of class "#32770" that becomes active on this
// thread (message boxes above all) is answered with the next queued button
// id. A box that finds the queue empty gets Enter, its default button, so a
// test never waits for a person; Unexpected() counts those.
class MessageBoxAnswerer
{
  public:
    struct Box {
        std::string caption;
        std::string text; // the message, empty for a dialog without one
        int pressed;      // the button id sent to it, 0 for Enter
    };

    MessageBoxAnswerer();
    ~MessageBoxAnswerer();
    MessageBoxAnswerer(const MessageBoxAnswerer&) = delete;
    MessageBoxAnswerer& operator=(const MessageBoxAnswerer&) = delete;

    // Queues answers: IDYES, IDNO, IDCANCEL, IDOK and the like.
    void Answer(int buttonId) { m_answers.push_back(buttonId); }
    void Answer(std::initializer_list<int> buttonIds);

    const std::vector<Box>& Boxes() const { return m_boxes; }
    std::vector<std::string> Texts() const;
    std::string LastText() const { return m_boxes.empty() ? std::string() : m_boxes.back().text; }
    size_t Pending() const { return m_answers.size(); }
    int Unexpected() const { return m_unexpected; }

  private:
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    void Press(HWND dialog);

    HHOOK m_hook;
    std::deque<int> m_answers;
    std::vector<Box> m_boxes;
    int m_unexpected = 0;
};

} // namespace kmtest
