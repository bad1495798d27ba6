#include "framework/GdiObjects.h"

#include "framework/WinApp.h"

bool CMenu::LoadMenu(UINT id)
{
    return Attach(::LoadMenuA(KmGetResourceHandle(), MAKEINTRESOURCEA(id)));
}

bool CMenu::Attach(HMENU menu)
{
    DestroyMenu();
    m_hMenu = menu;
    return menu != nullptr;
}

HMENU CMenu::Detach()
{
    HMENU menu = m_hMenu;
    m_hMenu = nullptr;
    return menu;
}

bool CMenu::DestroyMenu()
{
    HMENU menu = Detach();
    return menu && ::DestroyMenu(menu);
}

bool CFont::CreateFontIndirect(const LOGFONTA* logFont)
{
    DeleteObject();
    m_hFont = ::CreateFontIndirectA(logFont);
    return m_hFont != nullptr;
}

bool CFont::GetLogFont(LOGFONTA* logFont) const
{
    return m_hFont && ::GetObjectA(m_hFont, sizeof(LOGFONTA), logFont) != 0;
}

bool CFont::DeleteObject()
{
    HFONT font = m_hFont;
    m_hFont = nullptr;
    return font && ::DeleteObject(font);
}
