// What the window benchmarks share: a clock, a pump, C-like source text, a
// file writer, and a watch on message boxes that answers them.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace bench
{

double NowMs();
void PumpUntilIdle();
// C-like lines of varying length with the given line end, up to size bytes.
std::string MakeSource(size_t size, const char* eol);
bool WriteAll(const std::string& path, const std::string& text);

// While it lives, every message box is noted and answered with `answer`.
class BoxWatch
{
  public:
    explicit BoxWatch(int answer);
    ~BoxWatch();
    std::vector<std::string> texts;
    int answer;

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    HHOOK m_hook;
};

// The application started on "-s", as a user's start would make it; false
// if the frame did not come up.
bool StartApplication();
void EndApplication();

} // namespace bench
