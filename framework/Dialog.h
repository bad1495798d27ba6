// Dialog boxes: the base that runs a dialog's messages through its message
// map, the modal dialog from a template, and the platform's modeless find
// and replace dialog.
#pragma once
#include "framework/Wnd.h"

#include <commdlg.h>

class CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)
  public:
    // Makes a modeless dialog from a template; false if it could not be
    // made.
    bool Create(UINT templateId, HWND parent);
    // CenterDialog on this dialog.
    void CentreOver(HWND parent);
    // Lets a modeless dialog have its Tab, Return and Escape keys.
    bool PreTranslateMessage(MSG* msg) override;

    HWND GetDlgItem(int id) const { return ::GetDlgItem(m_hWnd, id); }
    void GetDlgItemText(int id, CString& text) const;
    void SetDlgItemText(int id, const char* text) { ::SetDlgItemTextA(m_hWnd, id, text); }
    bool IsDlgButtonChecked(int id) const
    {
        return ::IsDlgButtonChecked(m_hWnd, id) == BST_CHECKED;
    }
    void CheckDlgButton(int id, bool check)
    {
        ::CheckDlgButton(m_hWnd, id, check ? BST_CHECKED : BST_UNCHECKED);
    }

  protected:
    // The dialog procedure of every dialog of the library; `init` finds the
    // object in WM_INITDIALOG's lParam.
    static INT_PTR DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                              CDialog* (*init)(LPARAM));
    static INT_PTR CALLBACK StdDlgProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    // True to let the platform set the focus.
    virtual bool OnInitDialog() { return true; }
    // A dialog's procedure answers FALSE for what it leaves to the platform.
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    bool m_handled = false;
};

class CModalDialog : public CDialog
{
    DECLARE_DYNAMIC(CModalDialog)
  public:
    CModalDialog(UINT templateId, HWND parent) : m_templateId(templateId), m_parent(parent) {}
    // IDOK, IDCANCEL or what EndDialog was given; -1 if the dialog could not
    // be made.
    INT_PTR DoModal();
    void EndDialog(INT_PTR result) { ::EndDialog(m_hWnd, result); }

  protected:
    virtual void OnOK() { EndDialog(IDOK); }
    virtual void OnCancel() { EndDialog(IDCANCEL); }
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;

    UINT m_templateId;
    HWND m_parent;
};

// Moves dialog to the middle of parent's window rectangle, without a
// repaint: its offset across on a multiple of eight pixels, which keeps it
// on the display's byte boundaries. An offset that would be negative
// becomes 6 across and 18 down.
void CenterDialog(HWND dialog, HWND parent);

// The platform's find and replace dialog, modeless. The object deletes
// itself when its window is gone.
class CFindReplaceDialog : public CDialog
{
    DECLARE_DYNAMIC(CFindReplaceDialog)
  public:
    CFindReplaceDialog();
    // flags are FR_ flags; templateId 0 for the platform's own template.
    bool Create(bool findOnly, const char* findWhat, const char* replaceWith, DWORD flags,
                HWND owner, UINT templateId = 0);

    // The dialog's object from the lParam of its registered message.
    static CFindReplaceDialog* FromNotification(LPARAM lParam);

    FINDREPLACEA m_fr;

  protected:
    void PostNcDestroy() override { delete this; }

  private:
    static UINT_PTR CALLBACK HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    char m_findWhat[128] = "";
    char m_replaceWith[128] = "";
};
