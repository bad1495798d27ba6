// The modeless find and replace dialog: the platform's own template for
// Find, the program's template with a scope box for Replace. One global
// pointer holds it while it is open.
#pragma once
#include "framework/Dialog.h"

class CKmFindReplaceDialog : public CFindReplaceDialog
{
    DECLARE_DYNAMIC(CKmFindReplaceDialog)
  public:
    CKmFindReplaceDialog(bool findOnly, bool scopeChecked, POINT origin);

    // Opens the dialog over the frame from the search request; false when
    // it could not be made.
    static bool Open(bool findOnly);

    // Whether Find What changed since the last call.
    bool TakeChanged();
    // Puts a pattern into Find What, which counts as a change.
    void SetFindText(const char* text);
    bool ScopeChecked() const;

    POINT m_ptOrigin;
    int m_bChanged = 1;
    int m_bFindOnly;
    int m_bScopeChecked;

  protected:
    bool OnInitDialog() override;
    void OnFindWhatChange();
    void OnHelp();
    DECLARE_MESSAGE_MAP()
};

extern CKmFindReplaceDialog* g_findDialog;
