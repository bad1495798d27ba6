// The bar at the foot of the frame: up to eleven panes, a clock at the
// right edge, and one line of text that can replace the panes for a while.
// A window class of its own, independent of the class library.
#pragma once
#include "ui/FaceColours.h"

#include <windows.h>

class CStatusPane;
class CClockPane;

class CKmStatusBar
{
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

    // The next pane stands 5 * (n + 1) pixels behind the last.
    void SetNextGap(int n);
    // The pane's index, -1 without a window or after eleven panes. When a
    // pane can't be allocated its index stays taken, with no pane, and
    // the memory failure goes on to the caller.
    int AddPositionPane();
    int AddChoicePane(const char* commaList);
    int AddTogglePane(const char* off, const char* on);
    // A second Caps or Num pane isn't made: the first one's index.
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
    // The bar whose window stands in parent, null if none.
    static CKmStatusBar* OfParent(HWND parent);
    bool Exists() const { return m_hWnd != nullptr; }
    // The pane at index, null for a bad index or a pane that failed.
    CStatusPane* GetPane(int index) const;

    // The state all bars share.
    static int BarCount() { return s_nBars; }
    static int Height() { return s_nHeight; }
    static HFONT Font() { return s_hFont; }
    static HPEN ShadowPen() { return s_colours.shadow; }
    static HPEN HighlightPen() { return s_colours.highlight; }
    static bool HasColours() { return s_bColour != 0; }
    static bool HookSet() { return s_hHook != nullptr; }
    static int ClockCount() { return s_nClocks; }

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
    CKmStatusBar* m_pNext; // the list of all bars

  private:
    static LRESULT CALLBACK WndProc(HWND wnd, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK KeyboardHook(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK ClockTimer(HWND, UINT, UINT_PTR id, DWORD);
    // The text line that replaces the panes, or the panes and clock.
    void Paint(HDC dc);
    bool CreateShared();
    void DeleteShared();
    void Unlink();
    // The next free index, -1 without a window or when the bar is full.
    int ReserveSlot();
    // Puts pane, width pixels of text wide, behind the last pane.
    void PlacePane(int index, CStatusPane* pane, int width);
    int AddLockPane(const char* text, int key, int& index);
    HDC BeginMeasure();
    void EndMeasure();
    // The window is there and hasn't gone by itself.
    bool Live() const { return m_hWnd && !m_bDestroyed; }

    static HFONT s_hFont;
    static CFaceColours s_colours;
    static int s_nHeight;
    static int s_bColour;
    static int s_nBars;
    static int s_nClocks;
    static UINT_PTR s_nClockTimer;
    static bool s_bClockAligned;
    static HHOOK s_hHook;
    static CKmStatusBar* s_pFirst;
};
