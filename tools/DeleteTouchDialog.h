// The list of files that Delete or Touch will act on, for the user to
// confirm or edit; its title and label are the action's name.
#pragma once
#include "framework/Dialog.h"
#include "resources/KmIds.h"

class CDeleteTouchDialog : public CModalDialog
{
  public:
    CDeleteTouchDialog(HWND parent, UINT titleId, const char* list)
        : CModalDialog(IDD_DELETETOUCH, parent), m_titleId(titleId), m_pszList(list)
    {
    }

    UINT m_titleId;
    CString m_pszList; // the names, and after OK those confirmed

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
};
