#include "BoxHook.h"

namespace
{

BoxHook* g_hook = nullptr;

bool IsDialog(HWND wnd)
{
    char name[16] = "";
    ::GetClassNameA(wnd, name, sizeof name);
    return lstrcmpA(name, "#32770") == 0;
}

// The text of a message box is its static control with id 0xFFFF.
std::string BoxText(HWND box)
{
    char text[1024] = "";
    ::GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    return text;
}

} // namespace

BoxHook::BoxHook()
{
    g_hook = this;
    m_hook = ::SetWindowsHookExA(WH_CBT, HookProc, nullptr, ::GetCurrentThreadId());
}

BoxHook::~BoxHook()
{
    if (m_hook)
        ::UnhookWindowsHookEx(m_hook);
    g_hook = nullptr;
}

LRESULT CALLBACK BoxHook::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_hook && IsDialog(reinterpret_cast<HWND>(wParam)))
        g_hook->Answer(reinterpret_cast<HWND>(wParam));
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void BoxHook::Answer(HWND box)
{
    if (box == m_last && ::IsWindow(box))
        return; // activated again before the answer arrived
    m_last = box;
    texts.push_back(BoxText(box));
    int wanted = 0;
    if (!m_answers.empty()) {
        wanted = m_answers.front();
        m_answers.pop_front();
    }
    for (int id : {wanted, IDNO, IDCANCEL, IDOK}) {
        HWND button = id ? ::GetDlgItem(box, id) : nullptr;
        if (button) {
            ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                           reinterpret_cast<LPARAM>(button));
            return;
        }
    }
}

void PumpUntilIdle()
{
    for (int quiet = 0; quiet < 3;) {
        MSG msg;
        bool any = false;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            any = true;
            if (msg.message == WM_QUIT)
                continue; // the frame's end: no loop here to leave
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
        quiet = any ? 0 : quiet + 1;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
}
