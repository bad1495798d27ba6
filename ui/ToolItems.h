// The things on the tool bar: a space and a picture button. Each keeps its
// place on the bar and draws itself; a button tells its callback of a press
// and of a release.
#pragma once
#include <windows.h>

class CKmToolBar;
class CToolItem;

// The states a button's callback is told of besides a release on it.
enum { TOOL_PRESSED = -1, TOOL_RELEASEDOFF = -2 };

// Returns the state that the button keeps after a release on it.
using ToolNotifyFn = int (*)(CToolItem* item, int state, unsigned id);

class CToolItem
{
  public:
    CToolItem(unsigned id, int width) : m_nId(id), m_nWidth(width) {}
    virtual ~CToolItem() = default;
    CToolItem(const CToolItem&) = delete;
    CToolItem& operator=(const CToolItem&) = delete;

    virtual void Place(CKmToolBar* bar, const RECT& rect);
    virtual void SetPressed(bool on);
    virtual void Draw(HDC) {}
    virtual void OnPlaced() {}
    virtual bool HitTest(int, int) const { return false; }

    void Invalidate() const;

    CKmToolBar* m_pBar = nullptr;
    ToolNotifyFn m_pfnNotify = nullptr;
    RECT m_rc = {};
    RECT m_rcPaint = {}; // m_rc with its right and bottom edges
    unsigned m_nId;
    int m_bEnabled = 1;
    int m_bPressed = 0;
    int m_nState = 0;
    int m_nStates = 1;
    int m_nWidth;
};

class CToolSpace : public CToolItem
{
  public:
    explicit CToolSpace(unsigned id) : CToolItem(id, 8) {}
};

class CToolButton : public CToolItem
{
  public:
    CToolButton(unsigned id, int image, ToolNotifyFn notify);
    void Place(CKmToolBar* bar, const RECT& rect) override;
    void Draw(HDC dc) override;
    // Only an enabled button can be hit, and so pressed.
    bool HitTest(int x, int y) const override;

    int m_nImage;
};
