#include "BoxAnswer.h"

namespace
{

BoxAnswerer* g_answerer = nullptr;

std::string ClassOf(HWND wnd)
{
    char name[64] = "";
    ::GetClassNameA(wnd, name, sizeof name);
    return name;
}

std::string TextOf(HWND wnd)
{
    int length = ::GetWindowTextLengthA(wnd);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    text.resize(static_cast<size_t>(::GetWindowTextA(wnd, &text[0], length + 1)));
    return text;
}

// The message of a box: its one static control that is no icon.
BOOL CALLBACK FindMessage(HWND child, LPARAM lParam)
{
    const LONG_PTR style = ::GetWindowLongPtrA(child, GWL_STYLE);
    if (ClassOf(child) == "Static" && (style & SS_TYPEMASK) != SS_ICON) {
        std::string text = TextOf(child);
        if (!text.empty()) {
            *reinterpret_cast<std::string*>(lParam) = text;
            return FALSE;
        }
    }
    return TRUE;
}

} // namespace

BoxAnswerer::BoxAnswerer()
{
    g_answerer = this;
    m_hook = ::SetWindowsHookExA(WH_CBT, HookProc, nullptr, ::GetCurrentThreadId());
}

BoxAnswerer::~BoxAnswerer()
{
    if (m_hook)
        ::UnhookWindowsHookEx(m_hook);
    if (g_answerer == this)
        g_answerer = nullptr;
}

LRESULT CALLBACK BoxAnswerer::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_answerer) {
        HWND wnd = reinterpret_cast<HWND>(wParam);
        if (ClassOf(wnd) == "#32770")
            g_answerer->Answer(wnd);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void BoxAnswerer::Answer(HWND box)
{
    if (box == m_lastBox && ::IsWindow(box))
        return; // activated again while the answer is on its way
    m_lastBox = box;

    Box seen;
    ::EnumChildWindows(box, FindMessage, reinterpret_cast<LPARAM>(&seen.text));
    const struct {
        int id;
        char letter;
    } kinds[] = {{IDOK, 'O'}, {IDCANCEL, 'C'}, {IDYES, 'Y'}, {IDNO, 'N'}};
    for (const auto& kind : kinds)
        if (::GetDlgItem(box, kind.id))
            seen.buttons += kind.letter;

    int wanted = 0;
    if (!m_queue.empty()) {
        wanted = m_queue.front();
        m_queue.pop_front();
    }
    seen.pressed = 0;
    for (int id : {wanted, IDNO, IDCANCEL, IDOK}) {
        if (id && ::GetDlgItem(box, id)) {
            seen.pressed = id;
            break;
        }
    }
    boxes.push_back(seen);
    ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(seen.pressed, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box, seen.pressed)));
}

void PumpUntilIdle()
{
    int quiet = 0;
    while (quiet < 3) {
        MSG msg;
        bool any = false;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            any = true;
            if (msg.message == WM_QUIT)
                continue; // the frame's end; nothing here runs a loop
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
        quiet = any ? 0 : quiet + 1;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
}
