// The frame's tool bar: its buttons, the project buttons while project
// features are on, and which buttons are alive with no file or while a
// project command runs.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/Messages.h"
#include "ui/ToolItems.h"

#include <memory>
#include <new>

namespace
{

const int kPicturesStyle = 8;

// A picture and its command; a space has no picture and id 0.
struct BarButton {
    int image;
    unsigned id;
};

const BarButton kButtons[] = {
    {-1, 0},
    {0, ID_FILE_NEW},
    {1, ID_FILE_OPEN},
    {2, ID_FILE_SAVE},
    {-1, 0},
    {3, ID_FILE_MANAGE},
    {4, ID_FILE_PRINT},
    {-1, 0},
    {5, ID_EDIT_CUT},
    {6, ID_EDIT_COPY},
    {7, ID_EDIT_PASTE},
    {-1, 0},
    {8, ID_EDIT_SHIFTLEFT},
    {9, ID_EDIT_SHIFTRIGHT},
    {10, ID_EDIT_UNDO},
    {-1, 0},
    {11, ID_SEARCH_FIND},
    {12, ID_SEARCH_REPLACE},
    {13, ID_SEARCH_GREP},
    {-1, 0},
    {20, ID_HELP_CONTEXT},
};

// In front of Help, and behind them a space with id 1.
const BarButton kProjectButtons[] = {
    {14, ID_PROJECT_BUILD},
    {15, ID_PROJECT_BUILDTARGET},
    {16, ID_PROJECT_COMPILE},
    {17, ID_PROJECT_LINK},
    {18, ID_PROJECT_TEST},
    {19, ID_PROJECT_DEBUG},
    {-1, 1},
};

const unsigned kFileButtons[] = {
    ID_FILE_SAVE,      ID_FILE_PRINT,      ID_EDIT_CUT,  ID_EDIT_COPY,   ID_EDIT_PASTE,
    ID_EDIT_SHIFTLEFT, ID_EDIT_SHIFTRIGHT, ID_EDIT_UNDO, ID_SEARCH_FIND, ID_SEARCH_REPLACE};

// A press shows the command's help; a release on the button posts the
// command, and off it only clears the text. The state comes back as it
// went, so no button latches.
int ToolNotify(CToolItem*, int state, unsigned id)
{
    if (state == TOOL_PRESSED) {
        theApp.statusBar.SetTextId(id, 0);
        return state;
    }
    theApp.statusBar.ClearText();
    if (state != TOOL_RELEASEDOFF)
        ::PostMessageA(KmGetMainWindow(), WM_COMMAND, id, 0);
    return state;
}

// Throws CMemoryException when the item can't be made or the bar is full.
void AddButton(CKmToolBar& bar, const BarButton& button, unsigned before)
{
    std::unique_ptr<CToolItem> item;
    if (button.image < 0)
        item.reset(new (std::nothrow) CToolSpace(button.id));
    else
        item.reset(new (std::nothrow) CToolButton(button.id, button.image, ToolNotify));
    if (!item || !(before ? bar.AddBefore(item.get(), before) : bar.Add(item.get(), nullptr)))
        throw CMemoryException();
    item.release();
}

} // namespace

bool CKmFrame::CreateToolBar()
{
    theApp.flags |= KF_NOTOOLBAR; // stays set if the bar can't be built
    if (!theApp.toolBar.Create(kPicturesStyle, m_hWnd, IDB_TOOLBAR_COLOUR, IDB_TOOLBAR_MONO)) {
        KmMessageBox(this, MB_ICONEXCLAMATION, IDS_NOTOOLBAR);
        return false;
    }
    try {
        for (const BarButton& button : kButtons)
            AddButton(theApp.toolBar, button, 0);
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
        theApp.toolBar.Destroy();
        return false;
    }
    theApp.flags &= ~KF_NOTOOLBAR;
    if (!(theApp.flags & KF_NOPROJECT) && !AddProjectButtons()) {
        theApp.toolBar.Destroy();
        theApp.flags |= KF_NOTOOLBAR;
        return false;
    }
    if (!m_pActiveChild)
        SetFileButtons(IDR_MENU_NOFILE);
    theApp.toolBar.Show(true);
    LayOut();
    return true;
}

void CKmFrame::DestroyToolBar()
{
    if (!theApp.toolBar.Exists())
        return;
    if (!(theApp.flags & KF_NOPROJECT))
        RemoveProjectButtons();
    theApp.toolBar.Destroy();
    theApp.flags |= KF_NOTOOLBAR;
    LayOut();
}

bool CKmFrame::AddProjectButtons()
{
    try {
        for (const BarButton& button : kProjectButtons)
            AddButton(theApp.toolBar, button, ID_HELP_CONTEXT);
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
        return false;
    }
    SetProjectButtons(!theApp.m_strProjectDir.IsEmpty());
    return true;
}

void CKmFrame::ApplyToolBarFlags(unsigned long old)
{
    const unsigned long changed = (theApp.flags ^ old) & (KF_NOTOOLBAR | KF_NOPROJECT);
    if (changed & KF_NOTOOLBAR) {
        if (theApp.flags & KF_NOTOOLBAR) {
            const unsigned long project = theApp.flags & KF_NOPROJECT;
            // the buttons the bar has go with it
            theApp.flags = (theApp.flags & ~KF_NOPROJECT) | (old & KF_NOPROJECT);
            DestroyToolBar();
            theApp.flags = (theApp.flags & ~KF_NOPROJECT) | project;
        } else {
            CreateToolBar();
        }
    } else if ((changed & KF_NOPROJECT) && theApp.toolBar.Exists()) {
        if (theApp.flags & KF_NOPROJECT)
            RemoveProjectButtons();
        else
            AddProjectButtons();
    }
}

void CKmFrame::RemoveProjectButtons()
{
    for (int i = static_cast<int>(sizeof kProjectButtons / sizeof *kProjectButtons) - 1; i >= 0;
         --i)
        theApp.toolBar.RemoveId(kProjectButtons[i].id);
}

// The buttons don't ask what the active window can do: Paste stays alive
// on a read-only window, whose command answers for itself.
void CKmFrame::SetFileButtons(int menu)
{
    if (theApp.flags & KF_NOTOOLBAR)
        return;
    const bool on = menu != IDR_MENU_NOFILE;
    for (unsigned id : kFileButtons)
        theApp.toolBar.SetEnabled(id, on);
    if (!theApp.m_strProjectDir.IsEmpty())
        theApp.toolBar.SetEnabled(ID_PROJECT_COMPILE, on);
}

void CKmFrame::SetProjectButtons(bool on)
{
    if (theApp.flags & KF_NOTOOLBAR)
        return;
    for (size_t i = 0; i + 1 < sizeof kProjectButtons / sizeof *kProjectButtons; ++i)
        theApp.toolBar.SetEnabled(kProjectButtons[i].id, on);
}
