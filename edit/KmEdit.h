// The text surface of editor and log windows: the platform's multi-line
// edit control under a subclass.
#pragma once
#include "framework/Wnd.h"

// The private notification that the caret has moved, sent by the control
// to its parent through WM_COMMAND.
const UINT EN_KM_CARETMOVED = 0x700;

class CKmEdit : public CWnd
{
    DECLARE_DYNAMIC(CKmEdit)
  public:
    bool Create(HWND parent, unsigned long childFlags);

    // Every programmatic selection goes through here.
    void SetSelection(DWORD start, DWORD end);
    // Zero-based; both 0 while the parent is minimised.
    void GetLineColumn(long& line, long& column) const;
    // One-based; a line beyond the text means the last line.
    void GotoLine(long line, long column);

    int m_lineHeight = 0;
    bool m_hScrollByUser = true;
    DWORD m_lastPos = 0;
};
