// The choice of a project directory among the recent ones or a new one,
// or the end of the project.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CSelectProjectDialog : public CModalDialog
{
    DECLARE_DYNAMIC(CSelectProjectDialog)
  public:
    explicit CSelectProjectDialog(HWND parent);
    // On OK the directory chosen, lower case; empty to leave the project.
    CString m_strPath;

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnExitProject();
    void OnTextChange();
    void OnEntryChange();
    void OnHelp();

  private:
    // same: the text is the current project's, which no text is when no
    // project is open.
    void EnableButtons(bool empty, bool same);
    DECLARE_MESSAGE_MAP()
};
