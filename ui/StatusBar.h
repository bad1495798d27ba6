// The bar at the foot of the frame: up to eleven panes, a clock at the
// right edge, and one line of text that can replace the panes for a while.
// A window class of its own, independent of the class library.
#pragma once
#include <windows.h>

class CStatusPane;
class CClockPane;

class CKmStatusBar {
public:
    CKmStatusBar();
    ~CKmStatusBar();
    CKmStatusBar(const CKmStatusBar&) = delete;
    CKmStatusBar& operator=(const CKmStatusBar&) = delete;

    bool Create(HWND parent);
    bool Destroy();
    void RecreateColours();
    // Moves the bar to the bottom of a client of this size; its height, 0
    // without a window.
    int Resize(int width, int height);

    void SetText(const char* text, int seconds);
    void SetTextId(unsigned id, int seconds);
    void ClearText();

    void SetNextGap(int n);
    int AddPositionPane();
    int AddChoicePane(const char* commaList);
    int AddTogglePane(const char* off, const char* on);
    int AddCapsPane(const char* text);
    int AddNumPane(const char* text);

    void ShowClock();
    void HideClock();
    void RefreshLocks();

    void SetPanePosition(int index, long line, unsigned long col);
    void SetPaneChoice(int index, int value);
    void SetPaneState(int index, bool on);
    void TogglePane(int index);

    HWND GetHwnd() const { return m_hWnd; }
    bool Exists() const { return m_hWnd != nullptr; }

    int m_bDestroyed;
    int m_bTextShown;
    int m_nGap;
    CClockPane* m_pClock;
    int m_nCapsPane;
    int m_nNumPane;
    int m_nTimer;
    HINSTANCE m_hInstance;
    HWND m_hWnd;
    HDC m_hDC;
    int m_nPanes;
    CStatusPane* m_panes[11];
};
