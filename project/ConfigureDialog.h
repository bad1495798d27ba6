// The project's target, test arguments, debug switch and environment, and
// the settings of the environment, each changed in the store at once.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CConfigureDialog : public CModalDialog
{
    DECLARE_DYNAMIC(CConfigureDialog)
  public:
    explicit CConfigureDialog(HWND parent);

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnEnvironment();
    void OnLineChosen();
    void OnOptionChange();
    void OnSettingChange();
    void OnSet();
    void OnHelp();

  private:
    // The list's lines, key=value, for the environment in use.
    void FillList();
    CString LineAt(int index) const;
    // The index of the line that starts with prefix, or LB_ERR.
    int FindLine(const CString& prefix) const;
    void EnableSet(bool enable);
    void Widen(const CString& line);
    DECLARE_MESSAGE_MAP()
};
