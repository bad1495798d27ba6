// The Tools dialog: the programs of the Tools menu edited on a private copy
// of the list, one entry at a time in the fields. An entry is checked
// before anything leaves it; what was stored stays in the copy however the
// dialog ends, and the caller takes the copy over.
#pragma once
#include "framework/Dialog.h"
#include "tools/ToolList.h"

class CToolsDialog : public CModalDialog
{
    DECLARE_DYNAMIC(CToolsDialog)
  public:
    CToolsDialog(HWND parent, CToolList* tools);

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnSelect();
    void OnNew();
    void OnDelete();
    void OnMoveUp();
    void OnMoveDown();
    void OnMenuTextLeft();
    void OnHelp();

    void ReadFields();
    void ShowFields();
    // The command must exist, or the user says it may not; the menu text
    // mustn't be empty. The focus goes to the field at fault.
    bool Validate();
    // Validates the fields and puts them into the current entry.
    bool StoreCurrent();
    void Load(int index);
    void Swap(int first);
    void EnableControls();

    CToolList* m_pTools;
    int m_nCurrent = -1;
    CToolEntry m_edit;
    DECLARE_MESSAGE_MAP()
};
