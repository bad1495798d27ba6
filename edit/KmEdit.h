// The text surface of editor and log windows: the platform's multi-line
// edit control, with a subclass that adds a programmer's editor's typing,
// keys and clicks, the word rule and the caret reports.
#pragma once
#include "framework/Wnd.h"
#include "search/CaseMap.h"

// The private notification that the caret has moved, sent by the control
// to its parent through WM_COMMAND.
const UINT EN_KM_CARETMOVED = 0x700;

class CKmChild;

class CKmEdit : public CWnd
{
    DECLARE_DYNAMIC(CKmEdit)
  public:
    bool Create(HWND parent, unsigned long childFlags);

    // Every programmatic selection goes through here.
    void SetSelection(DWORD start, DWORD end);
    void GetSel(DWORD& start, DWORD& end) const;
    // Zero-based; both 0 while the parent is minimised.
    void GetLineColumn(long& line, long& column) const;
    // One-based; a line beyond the text means the last line.
    void GotoLine(long line, long column);
    // A caret on the bottom line of the window, where the control's own
    // scroll leaves it, is brought up by half a window.
    void CentreCaretLine();
    long NextWordPos(int direction) const;
    void ShowBar(int bar, bool show);
    void PostCaretMoved() const;

    int m_lineHeight = 0;
    bool m_hScrollByUser = true;
    DWORD m_lastPos = 0;

  protected:
    LRESULT OnChar(WPARAM, LPARAM);
    LRESULT OnKeyDown(WPARAM, LPARAM);
    LRESULT OnLButtonUp(WPARAM, LPARAM);
    LRESULT OnLButtonDblClk(WPARAM, LPARAM);
    LRESULT OnRButtonDown(WPARAM, LPARAM);
    LRESULT OnDefaultThenSignal(WPARAM, LPARAM);
    LRESULT OnUndo(WPARAM, LPARAM);
    LRESULT OnSetFont(WPARAM, LPARAM);

  private:
    CKmChild* Parent() const;
    // Whole lines in the client area, and whether line is the bottom one.
    long VisibleLines() const;
    bool CaretOnBottomLine(long line) const;
    // Enter with Maintain Indentation.
    void TypeEnter(bool blockIndent);
    void SmartHome();
    DECLARE_MESSAGE_MAP()
};

// The control's text block, locked for a short scan: NUL-terminated, CR LF
// line ends. Unlock before any message that changes the text.
class CEditText
{
  public:
    explicit CEditText(const CWnd& edit) : m_edit(edit) { Lock(); }
    ~CEditText() { Unlock(); }
    CEditText(const CEditText&) = delete;
    CEditText& operator=(const CEditText&) = delete;
    void Lock();
    void Unlock();
    const char* text = "";

  private:
    const CWnd& m_edit;
    HLOCAL m_block = nullptr;
};

// The word rule's test: the code page's letters and digits, and '_'.
bool IsEditWordByte(unsigned char byte);

// Case changes of single bytes as the current code page makes them.
extern const CaseMap EditCaseMap;
