// The row of picture buttons under the menu. It isn't a control of the
// platform: it draws its items into a child window of its own, from two
// bitmaps of pictures, and the window follows the mouse. The bar owns its
// items.
#pragma once
#include "ui/FaceColours.h"
#include "ui/ToolBarWnd.h"

#include <windows.h>

class CToolItem;

class CKmToolBar
{
  public:
    enum { kMaxItems = 32 };

    CKmToolBar() = default;
    ~CKmToolBar() { Destroy(); }
    CKmToolBar(const CKmToolBar&) = delete;
    CKmToolBar& operator=(const CKmToolBar&) = delete;

    // False without a mouse, or when a picture or a context can't be made.
    bool Create(int style, HWND parent, UINT colourBitmap, UINT monoBitmap);
    // Deletes the items, last first, and takes the window down.
    void Destroy();
    // Moves the bar to the top of a client this wide; its height.
    int Resize(int width, int height);
    // The new system colours, with blue in the pictures as the new face.
    void RecreateColours();
    void Show(bool on);

    // The bar takes the item; false, and the item stays the caller's, when
    // the bar is full. A null before appends.
    bool Add(CToolItem* item, CToolItem* before);
    // In front of the item with id, or at the end if there is none.
    bool AddBefore(CToolItem* item, unsigned id);
    bool RemoveId(unsigned id);
    // The first item with id; a missing one is ignored.
    void SetEnabled(unsigned id, bool on);
    CToolItem* ItemAt(int x, int y) const;
    CToolItem* FindId(unsigned id) const;

    HWND GetHwnd() const { return m_wnd.m_hWnd; }
    bool Exists() const { return m_wnd.m_hWnd != nullptr; }
    int GetCount() const { return m_nItems; }
    CToolItem* GetItem(int index) const { return m_items[index]; }
    int GetHeight() const { return m_nHeight; }

    // For the window and the items.
    void Paint(HDC dc, const RECT& update);
    HDC Pictures(bool enabled) const { return enabled ? m_dcImages : m_dcDisabled; }
    static bool HasColours() { return s_bColour != 0; }
    static HPEN FramePen() { return s_colours.frame; }
    static HPEN ShadowPen() { return s_colours.shadow; }
    static HPEN HighlightPen() { return s_colours.highlight; }

    int m_nItems = 0;
    CToolItem* m_items[kMaxItems] = {};
    CToolBarWnd m_wnd;
    HWND m_pParent = nullptr;
    UINT m_nColourBitmap = 0;
    UINT m_nMonoBitmap = 0;
    HDC m_dcImages = nullptr;
    HBITMAP m_bmImages = nullptr;
    HDC m_dcDisabled = nullptr;
    HBITMAP m_bmDisabled = nullptr;
    int m_bVisible = 0;
    int m_nStyle = 0;
    int m_nHeight = 0;
    int m_nItemTop = 0;
    int m_nItemHeight = 0;

  private:
    static void SetUpColours();
    bool BuildPictures();
    bool BuildDisabled(HDC mask);
    int IndexOf(const CToolItem* item) const;
    // Moves the items from index on across by dx.
    void ShiftFrom(int index, int dx);

    static CFaceColours s_colours;
    static int s_bColour;
    static int s_nBorder; // 0 until the colours are first set up
};
