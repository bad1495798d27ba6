#include "ui/StatusBar.h"

#include "ui/StatusPanes.h"

#include <cstdio>

namespace
{

const char kClassName[] = "CKmStatusBar";
const int kMaxPanes = 11;
const UINT_PTR kTextTimer = 1;

bool RegisterBarClass(HINSTANCE instance, WNDPROC proc)
{
    static bool registered = false;
    if (registered)
        return true;
    WNDCLASSA wc = {};
    wc.style = CS_HREDRAW;
    wc.lpfnWndProc = proc;
    wc.cbWndExtra = sizeof(LONG_PTR); // the object's pointer
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kClassName;
    registered = ::RegisterClassA(&wc) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return registered;
}

} // namespace

HFONT CKmStatusBar::s_hFont = nullptr;
CFaceColours CKmStatusBar::s_colours;
int CKmStatusBar::s_nHeight = 0;
int CKmStatusBar::s_bColour = 0;
int CKmStatusBar::s_nBars = 0;
int CKmStatusBar::s_nClocks = 0;
UINT_PTR CKmStatusBar::s_nClockTimer = 0;
bool CKmStatusBar::s_bClockAligned = false;
HHOOK CKmStatusBar::s_hHook = nullptr;
CKmStatusBar* CKmStatusBar::s_pFirst = nullptr;

CKmStatusBar::CKmStatusBar()
    : m_bDestroyed(0), m_bTextShown(0), m_nGap(1), m_pClock(nullptr), m_nCapsPane(-1),
      m_nNumPane(-1), m_nTimer(0), m_hInstance(nullptr), m_hWnd(nullptr), m_hDC(nullptr),
      m_nPanes(0), m_panes(), m_pNext(nullptr)
{
}

CKmStatusBar::~CKmStatusBar()
{
    Destroy();
}

bool CKmStatusBar::Create(HWND parent)
{
    if (m_hWnd)
        return false;
    HINSTANCE instance = ::GetModuleHandleA(nullptr);
    if (!RegisterBarClass(instance, &WndProc))
        return false;
    m_bDestroyed = 0;
    m_bTextShown = 0;
    m_nGap = 1;
    m_pClock = nullptr;
    m_nCapsPane = -1;
    m_nNumPane = -1;
    m_nTimer = 0;
    m_hInstance = instance;
    m_hDC = nullptr;
    m_nPanes = 0;
    HWND wnd = ::CreateWindowExA(0, kClassName, "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, parent,
                                 nullptr, instance, this);
    if (!wnd) {
        m_hWnd = nullptr;
        return false;
    }
    if (s_nBars == 0 && !CreateShared()) {
        DeleteShared();
        ::SetWindowLongPtrA(wnd, 0, 0);
        ::DestroyWindow(wnd);
        m_hWnd = nullptr;
        return false;
    }
    ++s_nBars;
    m_pNext = s_pFirst;
    s_pFirst = this;
    return true;
}

bool CKmStatusBar::CreateShared()
{
    HDC dc = ::GetDC(m_hWnd);
    s_hFont = ::CreateFontA(::MulDiv(-10, ::GetDeviceCaps(dc, LOGPIXELSY), 72), 0, 0, 0, 200, 0, 0,
                            0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                            DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, "MS Sans Serif");
    HGDIOBJ old = ::SelectObject(dc, s_hFont ? s_hFont : ::GetStockObject(SYSTEM_FONT));
    TEXTMETRICA metrics;
    ::GetTextMetricsA(dc, &metrics);
    ::SelectObject(dc, old);
    s_nHeight = metrics.tmHeight - metrics.tmInternalLeading + 9;
    s_bColour = HasColourDisplay(dc);
    ::ReleaseDC(m_hWnd, dc);
    const bool colours = s_colours.Create(COLOR_BTNFACE, 1);
    ::SetClassLongPtrA(m_hWnd, GCLP_HBRBACKGROUND, reinterpret_cast<LONG_PTR>(s_colours.face));
    s_hHook = ::SetWindowsHookExA(WH_KEYBOARD, &KeyboardHook, nullptr, ::GetCurrentThreadId());
    return s_hFont && colours && s_hHook;
}

void CKmStatusBar::DeleteShared()
{
    s_colours.Delete();
    if (s_hFont)
        ::DeleteObject(s_hFont);
    s_hFont = nullptr;
    if (s_hHook)
        ::UnhookWindowsHookEx(s_hHook);
    s_hHook = nullptr;
}

bool CKmStatusBar::Destroy()
{
    if (!m_hWnd)
        return false;
    HideClock();
    if (m_nTimer && !m_bDestroyed)
        ::KillTimer(m_hWnd, kTextTimer);
    m_nTimer = 0;
    for (int i = 0; i < m_nPanes; ++i) {
        delete m_panes[i];
        m_panes[i] = nullptr;
    }
    m_nPanes = 0;
    m_nCapsPane = -1;
    m_nNumPane = -1;
    if (--s_nBars == 0)
        DeleteShared();
    if (!m_bDestroyed) {
        ::SetWindowLongPtrA(m_hWnd, 0, 0);
        ::DestroyWindow(m_hWnd);
    }
    Unlink();
    m_hWnd = nullptr;
    m_bTextShown = 0;
    return true;
}

CKmStatusBar* CKmStatusBar::OfParent(HWND parent)
{
    for (CKmStatusBar* bar = s_pFirst; bar; bar = bar->m_pNext)
        if (bar->m_hWnd && ::GetParent(bar->m_hWnd) == parent)
            return bar;
    return nullptr;
}

void CKmStatusBar::Unlink()
{
    for (CKmStatusBar** link = &s_pFirst; *link; link = &(*link)->m_pNext) {
        if (*link == this) {
            *link = m_pNext;
            break;
        }
    }
    m_pNext = nullptr;
}

void CKmStatusBar::RecreateColours()
{
    if (s_nBars == 0)
        return;
    s_colours.Create(COLOR_BTNFACE, 1);
    for (CKmStatusBar* bar = s_pFirst; bar; bar = bar->m_pNext) {
        if (!bar->Live())
            continue;
        ::SetClassLongPtrA(bar->m_hWnd, GCLP_HBRBACKGROUND,
                           reinterpret_cast<LONG_PTR>(s_colours.face));
        ::InvalidateRect(bar->m_hWnd, nullptr, TRUE);
    }
}

int CKmStatusBar::Resize(int width, int height)
{
    if (!Live())
        return 0;
    ::MoveWindow(m_hWnd, 0, height - s_nHeight, width, s_nHeight, TRUE);
    if (m_pClock)
        m_pClock->MoveTo(m_hWnd, width);
    return s_nHeight;
}

// --- text ---

void CKmStatusBar::SetText(const char* text, int seconds)
{
    if (!Live())
        return;
    if (m_nTimer)
        ::KillTimer(m_hWnd, kTextTimer);
    m_nTimer = 0;
    m_bTextShown = text != nullptr;
    ::SetWindowTextA(m_hWnd, text ? text : "");
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    if (seconds > 0 && text)
        m_nTimer = ::SetTimer(m_hWnd, kTextTimer, static_cast<UINT>(seconds) * 1000, nullptr) != 0;
}

void CKmStatusBar::SetTextId(unsigned id, int seconds)
{
    if (id == 0) {
        ClearText();
        return;
    }
    char text[128];
    if (::LoadStringA(m_hInstance, id, text, sizeof text) <= 0)
        snprintf(text, sizeof text, "No resource string %u", id);
    SetText(text, seconds);
}

void CKmStatusBar::ClearText()
{
    SetText(nullptr, 0);
}

// --- panes ---

void CKmStatusBar::SetNextGap(int n)
{
    if (n >= 0)
        m_nGap = n + 1;
}

int CKmStatusBar::ReserveSlot()
{
    if (!Live() || m_nPanes >= kMaxPanes)
        return -1;
    m_panes[m_nPanes] = nullptr; // stays null if the pane can't be allocated
    return m_nPanes++;
}

void CKmStatusBar::PlacePane(int index, CStatusPane* pane, int width)
{
    int left = 10;
    for (int i = index - 1; i >= 0; --i) {
        if (m_panes[i]) {
            left = m_panes[i]->m_rcPane.right + m_nGap * 5;
            break;
        }
    }
    pane->Place(left, 3, left + width + 1, s_nHeight - 2);
    m_panes[index] = pane;
    m_nGap = 1;
    ::InvalidateRect(m_hWnd, &pane->m_rcPane, TRUE);
}

HDC CKmStatusBar::BeginMeasure()
{
    m_hDC = ::GetDC(m_hWnd);
    ::SelectObject(m_hDC, s_hFont);
    return m_hDC;
}

void CKmStatusBar::EndMeasure()
{
    ::ReleaseDC(m_hWnd, m_hDC);
    m_hDC = nullptr;
}

int CKmStatusBar::AddPositionPane()
{
    const int index = ReserveSlot();
    if (index >= 0)
        PlacePane(index, new CPositionPane, CPositionPane::Measure(m_hWnd));
    return index;
}

int CKmStatusBar::AddChoicePane(const char* commaList)
{
    const int index = ReserveSlot();
    if (index < 0)
        return -1;
    CChoicePane* pane = new CChoicePane(commaList);
    const int width = pane->Measure(BeginMeasure());
    EndMeasure();
    PlacePane(index, pane, width);
    return index;
}

int CKmStatusBar::AddTogglePane(const char* off, const char* on)
{
    const int index = ReserveSlot();
    if (index < 0)
        return -1;
    CTogglePane* pane = new CTogglePane(off, on);
    const int width = pane->Measure(BeginMeasure());
    EndMeasure();
    PlacePane(index, pane, width);
    return index;
}

int CKmStatusBar::AddLockPane(const char* text, int key, int& index)
{
    if (index >= 0)
        return index;
    const int added = AddTogglePane("", text);
    if (added >= 0) {
        index = added;
        SetPaneState(added, (::GetKeyState(key) & 1) != 0);
    }
    return added;
}

int CKmStatusBar::AddCapsPane(const char* text)
{
    return AddLockPane(text, VK_CAPITAL, m_nCapsPane);
}

int CKmStatusBar::AddNumPane(const char* text)
{
    return AddLockPane(text, VK_NUMLOCK, m_nNumPane);
}

CStatusPane* CKmStatusBar::GetPane(int index) const
{
    return index >= 0 && index < m_nPanes ? m_panes[index] : nullptr;
}

void CKmStatusBar::SetPanePosition(int index, long line, unsigned long col)
{
    if (CStatusPane* pane = GetPane(index))
        pane->SetPosition(m_hWnd, line, col);
}

void CKmStatusBar::SetPaneChoice(int index, int value)
{
    if (CStatusPane* pane = GetPane(index))
        pane->SetChoice(m_hWnd, value);
}

void CKmStatusBar::SetPaneState(int index, bool on)
{
    if (CStatusPane* pane = GetPane(index))
        pane->SetState(m_hWnd, on);
}

void CKmStatusBar::TogglePane(int index)
{
    if (CStatusPane* pane = GetPane(index))
        pane->Toggle(m_hWnd);
}

// --- Caps and Num ---

void CKmStatusBar::RefreshLocks()
{
    SetPaneState(m_nCapsPane, (::GetKeyState(VK_CAPITAL) & 1) != 0);
    SetPaneState(m_nNumPane, (::GetKeyState(VK_NUMLOCK) & 1) != 0);
}

LRESULT CALLBACK CKmStatusBar::KeyboardHook(int code, WPARAM wParam, LPARAM lParam)
{
    // Bit 15 is the top of the repeat count: both presses and releases pass.
    if (code >= 0 && code != HC_NOREMOVE && (wParam == VK_CAPITAL || wParam == VK_NUMLOCK) &&
        !(lParam & 0x8000)) {
        const bool on = (::GetKeyState(static_cast<int>(wParam)) & 1) != 0;
        for (CKmStatusBar* bar = s_pFirst; bar; bar = bar->m_pNext)
            bar->SetPaneState(wParam == VK_CAPITAL ? bar->m_nCapsPane : bar->m_nNumPane, on);
    }
    return ::CallNextHookEx(s_hHook, code, wParam, lParam);
}

// --- clock ---

void CKmStatusBar::ShowClock()
{
    if (!Live() || m_pClock)
        return;
    CClockPane* clock = CClockPane::FromIntl();
    const int width = clock->Measure(BeginMeasure());
    EndMeasure();
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    const int right = client.right - 10;
    clock->Place(right - width, 3, right, s_nHeight - 2);
    m_pClock = clock;
    if (s_nClocks++ == 0) {
        // The first call comes at the turn of the minute, then every minute.
        SYSTEMTIME now;
        ::GetLocalTime(&now);
        s_bClockAligned = false;
        s_nClockTimer = ::SetTimer(nullptr, 0, (60 - now.wSecond) * 1000u, &ClockTimer);
    }
    ::InvalidateRect(m_hWnd, &clock->m_rcPane, TRUE);
}

void CKmStatusBar::HideClock()
{
    if (!m_pClock)
        return;
    if (--s_nClocks == 0 && s_nClockTimer) {
        ::KillTimer(nullptr, s_nClockTimer);
        s_nClockTimer = 0;
    }
    delete m_pClock;
    m_pClock = nullptr;
    if (Live())
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void CALLBACK CKmStatusBar::ClockTimer(HWND, UINT, UINT_PTR, DWORD)
{
    if (!s_bClockAligned) {
        ::KillTimer(nullptr, s_nClockTimer);
        s_nClockTimer = ::SetTimer(nullptr, 0, 60000, &ClockTimer);
        s_bClockAligned = true;
    }
    for (CKmStatusBar* bar = s_pFirst; bar; bar = bar->m_pNext) {
        if (bar->m_pClock && bar->Live())
            ::InvalidateRect(bar->m_hWnd, &bar->m_pClock->m_rcText, TRUE);
    }
}

// --- window ---

void CKmStatusBar::Paint(HDC dc)
{
    if (!::IsWindowVisible(m_hWnd) || ::IsIconic(::GetParent(m_hWnd)))
        return;
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    HGDIOBJ oldPen = ::SelectObject(dc, s_colours.frame);
    ::MoveToEx(dc, 0, 0, nullptr);
    ::LineTo(dc, client.right, 0);
    if (s_bColour) {
        ::SelectObject(dc, s_colours.highlight);
        ::MoveToEx(dc, 0, 1, nullptr);
        ::LineTo(dc, client.right, 1);
    }
    ::SelectObject(dc, oldPen);
    HGDIOBJ oldFont = ::SelectObject(dc, s_hFont);
    ::SetBkMode(dc, OPAQUE);
    ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
    ::SetBkColor(dc, ::GetSysColor(COLOR_BTNFACE));
    if (m_bTextShown) {
        char text[128]; // longer texts are cut here
        const int length = ::GetWindowTextA(m_hWnd, text, sizeof text);
        ::TextOutA(dc, 10, 4, text, length);
    } else {
        for (int i = 0; i < m_nPanes; ++i) {
            if (m_panes[i])
                m_panes[i]->Draw(dc);
        }
        if (m_pClock)
            m_pClock->Draw(dc);
    }
    ::SelectObject(dc, oldFont);
}

LRESULT CALLBACK CKmStatusBar::WndProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* bar =
            static_cast<CKmStatusBar*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        ::SetWindowLongPtrA(wnd, 0, reinterpret_cast<LONG_PTR>(bar));
        bar->m_hWnd = wnd;
    }
    CKmStatusBar* bar = reinterpret_cast<CKmStatusBar*>(::GetWindowLongPtrA(wnd, 0));
    if (!bar)
        return ::DefWindowProcA(wnd, message, wParam, lParam);
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        bar->m_hDC = ::BeginPaint(wnd, &paint);
        bar->Paint(bar->m_hDC);
        ::EndPaint(wnd, &paint);
        bar->m_hDC = nullptr;
        return 0;
    }
    case WM_PRINTCLIENT:
        bar->Paint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_TIMER:
        if (wParam != kTextTimer)
            break;
        bar->ClearText();
        return 0;
    case WM_SYSCOLORCHANGE:
        bar->RecreateColours();
        return 0;
    case WM_DESTROY:
        bar->m_bDestroyed = 1;
        break;
    case WM_NCDESTROY:
        ::SetWindowLongPtrA(wnd, 0, 0);
        break;
    }
    return ::DefWindowProcA(wnd, message, wParam, lParam);
}
