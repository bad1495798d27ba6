// An edit control for a small non-negative number: it takes digits and
// Backspace as typed and beeps at anything else; a pasted text goes in
// unchecked.
#pragma once
#include "framework/Wnd.h"

class CNumEdit : public CWnd
{
    DECLARE_DYNAMIC(CNumEdit)
  public:
    explicit CNumEdit(int maxDigits) : m_nMaxDigits(maxDigits) {}

    bool Create(DWORD style, const RECT& rect, HWND parent, int id);
    // Takes the place of the dialog's static placeholder, in its rectangle,
    // its font and its place in the z-order, so that the tab order and the
    // mnemonic of the label before it go on working.
    bool ReplaceControl(DWORD style, int placeholderId, HWND dialog, int id);
    // The number the text begins with: 0 for an empty text.
    int GetValue() const;
    // -1 shows an empty text.
    void SetValue(int value);

    int m_nMaxDigits;
    int m_nValue = -1;

  protected:
    LRESULT OnChar(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()
};
