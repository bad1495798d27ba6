// The source files and the target of Copy or Rename, with the action's name
// as title. To takes one name: a file, a directory, or a name with
// wildcards that each source fills in.
#pragma once
#include "framework/Dialog.h"
#include "resources/KmIds.h"

class CCopyRenameDialog : public CModalDialog
{
  public:
    CCopyRenameDialog(HWND parent, UINT titleId, const char* from);

    UINT m_titleId;
    CString m_pszFrom; // the names, and after OK those confirmed
    char m_szTo[261];  // the current directory at first

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

  private:
    void FocusOn(int id) { ::SetFocus(GetDlgItem(id)); }
    void OnBrowse();
};
