// Find and replace as the frame reaches them: the Search menu's find
// commands and the find dialog's notifications, acting on the active child,
// with the rules of the Search popup; the global search's dialog and its
// requests.
#pragma once
#include "app/KmCommands.h"

#include <commdlg.h>

class CSearchCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CSearchCommands)
  public:
    using CKmCommands::CKmCommands;
    ~CSearchCommands() override;
    void UpdatePopup(HMENU popup, int position, CKmChild* child) override;
    void CloseDialogs() override;

  protected:
    void OnFind();
    void OnReplace();
    void OnFindNext();
    void OnFindPrev();
    void OnReplaceNext();
    LRESULT OnFindReplace(WPARAM, LPARAM);
    void OnGrep();
    LRESULT OnGrepRequest(WPARAM, LPARAM);

  private:
    // Find Next and Previous from the menu or the keyboard.
    void FindAgain(bool forward);
    // The dialog's buttons.
    void RunDialogRequest(const FINDREPLACEA& fr, CKmChild* child);
    DECLARE_MESSAGE_MAP()
};
