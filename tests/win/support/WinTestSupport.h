// The kit of the window tests: one pump, one message-box answerer, file
// helpers, and the frame fixture that starts the application in-process.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

class CKmFrame;

namespace kmtest
{

// Runs the program's own loop (keys through PreTranslateMessage) until the
// queue has stayed empty for settleMs, or limitMs have passed. A WM_QUIT is
// taken out, since no loop here ends on it; whether one came.
bool PumpUntilIdle(DWORD settleMs = 20, DWORD limitMs = 2000);
// The same loop until done() holds or limitMs have passed; whether it held.
bool PumpUntil(const std::function<bool()>& done, DWORD limitMs = 2000);

// While it lives, a CBT hook of this thread answers every modal dialog of
// class "#32770" that becomes active (message boxes above all; a modeless
// dialog, whose owner stays enabled or which the program made without an
// owner, is left to the test): with the next queued button, or, for a box
// with nothing queued or without the queued button, with the first of the
// unexpected order that it has, counted as unexpected. The default order
// refuses: Cancel, else No, else OK.
class BoxAnswerer
{
  public:
    struct Box {
        std::string caption, text;
        std::string field;   // what its first edit control held
        std::string buttons; // which of OK, Cancel, Yes, No it has: "O", "C", "Y", "N"
        int pressed;         // the id of the button pressed
        bool expected;       // whether a queued answer fitted it
    };

    BoxAnswerer();
    ~BoxAnswerer();
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    void Queue(std::initializer_list<int> buttons)
    {
        for (int button : buttons)
            m_queue.push_back({button, nullptr});
    }
    // Queued for a dialog that is to stay open: it is recorded, not answered.
    static constexpr int kLeaveOpen = -1;
    // A dialog's fields filled by fill before the button is pressed.
    void Queue(int button, std::function<void(HWND)> fill) { m_queue.push_back({button, fill}); }
    void WhenUnexpected(std::initializer_list<int> order) { m_order = order; }
    void Clear() { m_queue.clear(), m_boxes.clear(); }

    const std::vector<Box>& Boxes() const { return m_boxes; }
    std::vector<std::string> Texts() const;
    int Unexpected() const
    {
        return static_cast<int>(std::count_if(m_boxes.begin(), m_boxes.end(),
                                              [](const Box& box) { return !box.expected; }));
    }

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box);

    HHOOK m_hook;
    std::deque<std::pair<int, std::function<void(HWND)>>> m_queue;
    std::vector<int> m_order = {IDCANCEL, IDNO, IDOK};
    std::vector<Box> m_boxes;
};

std::string Lower(std::string text);
std::string WindowText(HWND wnd);
void RemoveTree(const std::string& dir);
std::string ReadFileBytes(const std::string& path); // "<missing>" when it can't be read
void WriteFileBytes(const std::string& path, const std::string& bytes);
bool Exists(const std::string& path);
// The clipboard's text, "<none>" when it holds none; null empties it.
std::string ClipboardText();
void SetClipboardText(const char* text);

// The place of a window in the client area of another.
RECT Place(HWND wnd, HWND in);

// A fresh directory of its own, current while the test runs and holding
// an empty kelmar.ini that a start reads and a close writes, and the
// application ready to start on a command line in it. TearDown closes the
// frame as a user would (questions answered No) and fails the test for
// every box that came unexpected before.
class FrameTest : public ::testing::Test
{
  protected:
    void SetUp() override;
    void TearDown() override;

    // theApp.InitInstance on this command line; its result.
    bool Start(const std::string& commandLine = "-s");
    // Whether the frame ended on WM_CLOSE and told the loop to quit.
    bool CloseFrame();

    std::string Path(const std::string& name) const { return m_dir + "\\" + name; }
    std::string FullLower(const std::string& name) const; // as captions show it
    void Write(const std::string& name, const std::string& bytes) const
    {
        WriteFileBytes(Path(name), bytes);
    }
    std::string Read(const std::string& name) const { return ReadFileBytes(Path(name)); }

    HWND MdiClient() const;
    std::vector<HWND> Children() const; // front first, without icon titles
    std::set<std::string> ChildCaptions() const;
    HWND ChildByCaption(const std::string& caption) const;
    // Sends a command to the frame and pumps.
    void Command(UINT id);
    // The popup at a position of the menu without a maximised child's
    // system menu in front, after the frame has set its states.
    HMENU OpenPopup(int position);
    HMENU OpenPopupAt(int shownPosition);
    static bool Grayed(HMENU menu, UINT id);
    static bool Checked(HMENU menu, UINT id);

    BoxAnswerer m_boxes;
    CKmFrame* m_frame = nullptr;
    HWND m_frameWnd = nullptr;
    std::string m_dir;

  private:
    std::string m_commandLine; // theApp keeps only the pointer
    std::string m_oldDir;
};

// Zero-based line and column of the caret in an editor window.
struct CaretPlace {
    long line, column;
    bool operator==(const CaretPlace& o) const { return line == o.line && column == o.column; }
};
CaretPlace CaretOf(HWND child);
// An edit control's own text block, to its NUL.
std::string EditBlock(HWND edit);

} // namespace kmtest
