// The global search's dialog: modeless, it stays on the screen between
// searches. OK and closing go to the frame as WM_KM_GREP, whose handler
// runs the search with the fields kept here. One global pointer holds it
// while it exists.
#pragma once
#include "framework/Dialog.h"

class CGrepDialog : public CDialog
{
    DECLARE_DYNAMIC(CGrepDialog)
  public:
    explicit CGrepDialog(const char* directory);
    // Brings the dialog to the top, or makes it in the current directory.
    static void Open();

    CString m_pszSearch; // empty until the first OK
    CString m_pszFiles;
    CString m_pszDir;
    int m_bMatchCase = 1;
    int m_bWholeWord = 0;
    int m_bListLines = 1;
    int m_bClosing = 0;

    // After a search: the focus on the dialog, or on a field of it.
    void FocusOn(int id);

  protected:
    bool OnInitDialog() override;
    void PostNcDestroy() override { delete this; }
    LRESULT OnClose(WPARAM, LPARAM);
    void OnOK();
    void OnCancel();
    void OnDefaults();
    void OnBrowse();
    void OnHelp();
    void OnFieldChange();
    DECLARE_MESSAGE_MAP()

  private:
    // The project's file list, the directory and the check boxes; Search
    // For keeps what it has. False without memory.
    bool SetDefaults();
    void TellFrame();
};

extern CGrepDialog* g_grepDialog;
