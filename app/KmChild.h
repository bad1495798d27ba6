// Base of every child window of the frame: its font, its working directory
// and its flag word, and the operations the frame asks of each child.
#pragma once
#include "framework/FrameWnd.h"
#include "framework/GdiObjects.h"
#include "framework/String.h"

#include <type_traits>

struct SearchRequest;

enum : unsigned long {
    CF_READONLY = 0x1,
    CF_HEXVIEW = 0x2,
    CF_HSCROLL = 0x4,
    CF_VSCROLL = 0x8,
    CF_ALIGN = 0x10,
    CF_BLOCKINDENT = 0x20,
    CF_FILE = 0x40,
    CF_UNTITLED = 0x80,
    CF_OVERTYPE = 0x100,
    CF_MODIFIED = 0x200,
};

// Codes of WM_KM_WINDOWLIST.
enum { WL_CREATED = 1, WL_DESTROYED = 2, WL_ACTIVATED = 6, WL_TITLE = 12 };

class CKmChild;
// The child window object of hwnd, null for any other window.
CKmChild* KmChildOf(HWND hwnd);

class CKmChild : public CMDIChildWnd
{
    DECLARE_DYNAMIC(CKmChild)
  public:
    explicit CKmChild(unsigned long flags);

    virtual bool QuerySave(unsigned promptId);
    virtual void UpdatePopup(HMENU menu, int index);
    virtual void UpdateEditPopup(HMENU menu, int index);
    virtual int GetFindSeed(CString& text);
    virtual int FindText(SearchRequest* request, bool interactive, long start, long range);
    virtual void ReplaceSelection(SearchRequest* request);
    virtual void ReplaceAll(SearchRequest* request);
    virtual const char* ExpandReplacement(SearchRequest* request);
    virtual int GetSelectionKind();

    // The caption, with the icon-title blank turned back into a backslash.
    void GetTitle(CString& text) const;
    // A minimised file window shows its path with the last backslash as a
    // blank, so that the icon title wraps between directory and name; the
    // restore puts back only that backslash, so blanks of the path stay.
    void MakeIconTitle();
    void RestoreIconTitle();
    void SetTitle(const char* text);
    // Loads string stringId and formats it with plain values (numbers,
    // pointers, C strings), as for KmMessageBox.
    template <typename... Args> void SetTitleFmt(unsigned stringId, Args... args)
    {
        static_assert((std::is_scalar<Args>::value && ...),
                      "pass numbers, pointers or const char*");
        SetTitleFmtUnchecked(stringId, args...);
    }
    void SetTitleFmtUnchecked(unsigned stringId, ...);
    void SyncCurrentDir();
    void Alert(UINT type);
    // The status bar's Ins, Align, Edit and Clean panes from the flags.
    void ShowFlagPanes();

    CFont m_font;
    CString m_workDir;
    unsigned long m_flags;
    int m_iconBlank = -1; // where the icon title has its blank, -1 for none

  protected:
    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnMDIActivate(WPARAM, LPARAM);
    LRESULT OnQueryEndSession(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    LRESULT OnChildActivate(WPARAM, LPARAM);
    LRESULT OnMenuSelect(WPARAM, LPARAM);
    LRESULT OnSysCommand(WPARAM, LPARAM);
    void OnShowHScroll();
    void OnShowVScroll();
    void OnSetFont();

    // Shows or hides a scroll bar (SB_HORZ or SB_VERT) of the window's text.
    virtual void ShowBar(int bar, bool show);
    void TellFrame(WPARAM code);
    DECLARE_MESSAGE_MAP()
};
