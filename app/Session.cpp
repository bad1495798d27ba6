// The session: the open files with their window flags, how they were
// arranged, where the frame stood, and the recent files and projects.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/SettingsText.h"

#include <new>

namespace
{

// The flags of a window that its next opening keeps: read-only, hex view,
// scroll bars and indentation.
const unsigned long kSessionFlags =
    CF_READONLY | CF_HEXVIEW | CF_HSCROLL | CF_VSCROLL | CF_ALIGN | CF_BLOCKINDENT;

CString EditKey(int number)
{
    CString key;
    key.Format("Edit%.2d", number);
    return key;
}

// An exchange, not a move to the front: the entries between keep their
// places, which is intended.
void Remember(CString (&list)[6], const char* path)
{
    for (int i = 0; i < 6; ++i) {
        if (list[i] == path) {
            if (i != 0) {
                CString first = list[0];
                list[0] = list[i];
                list[i] = first;
            }
            return;
        }
    }
    for (int i = 5; i > 0; --i)
        list[i] = list[i - 1];
    list[0] = path;
}

} // namespace

void CKmApp::RememberFile(const char* path)
{
    recentFilesDirty = 1;
    Remember(recentFiles, path);
}

void CKmApp::AddRecentProject(const char* path)
{
    Remember(recentProjects, path);
}

// From the top window down; logs and untitled editors are not kept.
void CKmFrame::SaveSession()
{
    int number = 0;
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT)) {
        CKmChild* child = ::GetWindow(hwnd, GW_OWNER) ? nullptr : KmChildOf(hwnd);
        if (!child || !(child->m_flags & CF_FILE) || (child->m_flags & CF_UNTITLED))
            continue;
        CString value, flags;
        child->GetTitle(value);
        flags.Format(",%u", static_cast<unsigned>(child->m_flags & kSessionFlags));
        value += flags;
        theApp.SetSetting(SECTION_SESSION, EditKey(++number), value);
    }
    if (number != 0)
        theApp.SetSettingInt(SECTION_SESSION, "EditCount", number, 10);
}

// The windows come back in the order they were saved, so the one that was
// on top ends at the bottom: the reversed stacking is intended.
void CKmApp::RestoreSession()
{
    CKmFrame* frame = Frame();
    unsigned long count = 0;
    if (!frame || !GetSettingInt(SECTION_SESSION, "EditCount", count, 10) || count == 0)
        return;
    frame->BeginBusy(true);
    try {
        CString value;
        for (unsigned long n = 1;
             n <= count && GetSetting(SECTION_SESSION, EditKey(static_cast<int>(n)), value); ++n) {
            std::string path;
            unsigned long windowFlags = 0;
            if (SplitSessionValue(value.str(), path, windowFlags))
                frame->OpenFileFlags(path.c_str(), windowFlags);
            else
                frame->OpenFile(path.c_str(), false, false);
        }
        store->RemoveSection(SECTION_SESSION);
    } catch (const std::bad_alloc&) {
        return; // the wait state lasts until the frame's next EndBusy
    }
    frame->EndBusy();
    if (frame->m_pActiveChild)
        ApplyArrangement(true);
}

// Windows named at start come maximised by themselves when that is the
// arrangement, so only a restored session maximises again.
void CKmApp::ApplyArrangement(bool maximise)
{
    CKmFrame* frame = Frame();
    if (arrange == ARRANGE_TILEACROSS)
        frame->MDITile(MDITILE_VERTICAL);
    else if (arrange == ARRANGE_CASCADE)
        frame->MDICascade();
    else if (arrange == ARRANGE_TILEDOWN)
        frame->MDITile(MDITILE_HORIZONTAL);
    else if (maximise && frame->m_pActiveChild)
        ::SendMessageA(frame->m_hWndMDIClient, WM_MDIMAXIMIZE,
                       reinterpret_cast<WPARAM>(frame->m_pActiveChild->m_hWnd), 0);
}

void CKmApp::LoadWindowPlacement(RECT& rect, int& maximised) const
{
    Placement place = {kRectDefault.left, kRectDefault.top, kRectDefault.right, kRectDefault.bottom,
                       0};
    CString text;
    if (GetSetting(SECTION_SETTINGS, "Window", text))
        ParsePlacement(text, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN),
                       place);
    rect = {place.left, place.top, place.right, place.bottom};
    maximised = place.maximised;
}

// A maximised or iconic frame keeps the normal place it had; an iconic
// one starts normal next time.
void CKmApp::WriteWindowPlacement()
{
    CKmFrame* frame = Frame();
    if (!frame)
        return;
    const bool zoomed = frame->IsZoomed() != 0;
    RECT rect;
    int maximised = 0;
    CString old;
    if ((zoomed || frame->IsIconic()) && GetSetting(SECTION_SETTINGS, "Window", old))
        LoadWindowPlacement(rect, maximised);
    else
        ::GetWindowRect(frame->m_hWnd, &rect);
    CString value;
    value.Format("%d,%d,%d,%d,%d", static_cast<int>(rect.left), static_cast<int>(rect.top),
                 static_cast<int>(rect.right), static_cast<int>(rect.bottom), zoomed ? 1 : 0);
    SetSetting(SECTION_SETTINGS, "Window", value);
}
