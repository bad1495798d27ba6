#include "WinTestSupport.h"

namespace kmtest
{

namespace
{

// The static control that holds a message box's text.
const int kMessageTextId = 0xFFFF;
const char kAnsweredProp[] = "KmTestAnswered";

MessageBoxAnswerer* g_answerer = nullptr;

// Takes the messages waiting now; false when WM_QUIT came, which goes back
// into the queue.
bool DispatchWaiting()
{
    MSG msg;
    while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(msg.wParam));
            return false;
        }
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
    return true;
}

std::string WindowText(HWND wnd)
{
    if (!wnd)
        return std::string();
    const int length = ::GetWindowTextLengthA(wnd);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    text.resize(static_cast<size_t>(::GetWindowTextA(wnd, &text[0], length + 1)));
    return text;
}

bool IsDialog(HWND wnd)
{
    char name[16] = "";
    ::GetClassNameA(wnd, name, sizeof name);
    return lstrcmpA(name, "#32770") == 0;
}

} // namespace

void PumpUntilIdle(DWORD settleMs, DWORD limitMs)
{
    const DWORD start = ::GetTickCount();
    while (DispatchWaiting() && ::GetTickCount() - start < limitMs) {
        if (::MsgWaitForMultipleObjects(0, nullptr, FALSE, settleMs, QS_ALLINPUT) == WAIT_TIMEOUT)
            break;
    }
}

bool PumpUntil(const std::function<bool()>& done, DWORD limitMs)
{
    const DWORD start = ::GetTickCount();
    for (;;) {
        const bool quit = !DispatchWaiting();
        if (done())
            return true;
        const DWORD spent = ::GetTickCount() - start;
        if (quit || spent >= limitMs)
            return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, limitMs - spent, QS_ALLINPUT);
    }
}

MessageBoxAnswerer::MessageBoxAnswerer()
    : m_hook(::SetWindowsHookExA(WH_CBT, CbtProc, nullptr, ::GetCurrentThreadId()))
{
    g_answerer = this;
}

MessageBoxAnswerer::~MessageBoxAnswerer()
{
    if (m_hook)
        ::UnhookWindowsHookEx(m_hook);
    if (g_answerer == this)
        g_answerer = nullptr;
}

void MessageBoxAnswerer::Answer(std::initializer_list<int> buttonIds)
{
    m_answers.insert(m_answers.end(), buttonIds);
}

std::vector<std::string> MessageBoxAnswerer::Texts() const
{
    std::vector<std::string> texts;
    for (const Box& box : m_boxes)
        texts.push_back(box.text);
    return texts;
}

LRESULT CALLBACK MessageBoxAnswerer::CbtProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_answerer) {
        HWND wnd = reinterpret_cast<HWND>(wParam);
        if (IsDialog(wnd))
            g_answerer->Press(wnd);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

// The answer is posted: the dialog is still being set up when it first
// becomes active, and its own loop takes the command once it runs. Only
// then is its default button known, so Enter goes in for a missing answer.
// A dialog that is activated again before then keeps the answer it has.
void MessageBoxAnswerer::Press(HWND dialog)
{
    if (::GetPropA(dialog, kAnsweredProp))
        return;
    ::SetPropA(dialog, kAnsweredProp, reinterpret_cast<HANDLE>(1));

    Box box;
    box.caption = WindowText(dialog);
    box.text = WindowText(::GetDlgItem(dialog, kMessageTextId));
    if (m_answers.empty()) {
        box.pressed = 0;
        ++m_unexpected;
        ::PostMessageA(dialog, WM_KEYDOWN, VK_RETURN, 1);
    } else {
        box.pressed = m_answers.front();
        m_answers.pop_front();
        ::PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(box.pressed, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, box.pressed)));
    }
    m_boxes.push_back(box);
}

void RemoveTree(const std::string& dir)
{
    WIN32_FIND_DATAA found;
    HANDLE search = ::FindFirstFileA((dir + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            std::string name = found.cFileName;
            if (name == "." || name == "..")
                continue;
            std::string path = dir + "\\" + name;
            ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(path);
            else
                ::DeleteFileA(path.c_str());
        } while (::FindNextFileA(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryA(dir.c_str());
}

std::string FreshTempDir(const char* stem)
{
    char buffer[MAX_PATH];
    if (!::GetTempPathA(MAX_PATH, buffer))
        return std::string();
    std::string dir = std::string(buffer) + stem + std::to_string(::GetCurrentProcessId());
    RemoveTree(dir);
    if (!::CreateDirectoryA(dir.c_str(), nullptr))
        return std::string();
    char full[MAX_PATH];
    if (!::GetFullPathNameA(dir.c_str(), MAX_PATH, full, nullptr))
        return std::string();
    return full;
}

std::string Lower(std::string text)
{
    for (char& ch : text)
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<char>(ch - 'A' + 'a');
    return text;
}

} // namespace kmtest
