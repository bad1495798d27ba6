// Menus and fonts: owners of a handle, destroyed with their object.
#pragma once
#include <windows.h>

class CMenu
{
  public:
    CMenu() = default;
    ~CMenu() { DestroyMenu(); }
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    HMENU m_hMenu = nullptr;
    operator HMENU() const { return m_hMenu; }

    bool LoadMenu(UINT id);
    bool Attach(HMENU menu);
    HMENU Detach();
    bool DestroyMenu();
    HMENU GetSubMenu(int position) const { return ::GetSubMenu(m_hMenu, position); }
    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
};

class CFont
{
  public:
    CFont() = default;
    ~CFont() { DeleteObject(); }
    CFont(const CFont&) = delete;
    CFont& operator=(const CFont&) = delete;

    HFONT m_hFont = nullptr;
    operator HFONT() const { return m_hFont; }

    bool CreateFontIndirect(const LOGFONTA* logFont);
    // Reads the font's LOGFONT; false if there is no font.
    bool GetLogFont(LOGFONTA* logFont) const;
    bool DeleteObject();
};
