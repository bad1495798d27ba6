// Frame windows: the top-level frame, the multiple-document frame with its
// client, and the multiple-document child.
#pragma once
#include "framework/Wnd.h"

#include <vector>

// Lets the system choose position and size.
extern const RECT kRectDefault;

// Ids of the client's window list start here.
const UINT KM_FIRST_MDICHILD = 0xFF00;
// Commands with all these bits set are the window list's and the system's.
const UINT KM_SYSTEM_IDS = 0xF000;
// The child id of the client window.
const UINT KM_ID_MDICLIENT = 0xE900;

class CFrameWnd : public CWnd
{
    DECLARE_DYNAMIC(CFrameWnd)
  public:
    bool Create(const char* className, const char* title, DWORD style, const RECT& rect,
                HWND parent = nullptr, HMENU menu = nullptr);

  protected:
    // The frame owns its object; the main window's end ends the loop.
    void PostNcDestroy() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

class CMDIChildWnd;

class CMDIFrameWnd : public CFrameWnd
{
    DECLARE_DYNAMIC(CMDIFrameWnd)
  public:
    HWND m_hWndMDIClient = nullptr;

    CMDIChildWnd* MDIGetActive(BOOL* maximized = nullptr) const;
    void MDIActivate(HWND child) const;
    void MDITile(UINT how) const;
    void MDICascade() const;
    void MDIIconArrange() const;
    HMENU MDISetMenu(HMENU frameMenu, HMENU windowMenu) const;

    // Commands reach the active child's maps first, then the frame's, then
    // the targets added here, in that order; ids of the system range go to
    // the default procedure. Window messages that the frame's maps don't
    // take are offered to the targets too.
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void AddCommandTarget(CCmdTarget* target) { m_commandTargets.push_back(target); }

  protected:
    // Creates the client window; windowMenu receives the window list.
    virtual bool CreateClient(const CREATESTRUCTA* cs, HMENU windowMenu);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool PreTranslateMessage(MSG* msg) override;

  private:
    std::vector<CCmdTarget*> m_commandTargets;
};

class CMDIChildWnd : public CFrameWnd
{
    DECLARE_DYNAMIC(CMDIChildWnd)
  public:
    bool Create(const char* className, const char* title, DWORD style, const RECT& rect,
                CMDIFrameWnd* parent);
    CMDIFrameWnd* GetMDIFrame() const { return m_pMDIFrame; }
    void MDIDestroy();

  protected:
    void PostNcDestroy() override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    CMDIFrameWnd* m_pMDIFrame = nullptr;
};
