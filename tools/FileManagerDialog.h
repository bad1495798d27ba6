// The Manage Files dialog: modeless, owned by the frame, which holds it
// while it exists. It names files by wildcards in the working directory of
// the active window and hands them to the copy, delete, rename and touch
// actions through their modal dialogs.
#pragma once
#include "framework/Dialog.h"

class CKmFrame;

class CFileManagerDialog : public CDialog
{
    DECLARE_DYNAMIC(CFileManagerDialog)
  public:
    // Brings the frame's dialog to the top, or makes it.
    static void Open(CKmFrame& frame);

    char m_szDir[256] = "";

  protected:
    bool OnInitDialog() override;
    void PostNcDestroy() override { delete this; }
    LRESULT OnActivate(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    void OnCancel();
    void OnFilesChange();
    void OnBrowse();
    void OnDeleteTouch(UINT id);
    void OnCopyRename(UINT id);
    DECLARE_MESSAGE_MAP()

  private:
    // The field's files joined by blanks, those in the working directory
    // without it; their number, 0 without memory.
    int CollectNames(CString& names);
    void FocusFiles();
};
