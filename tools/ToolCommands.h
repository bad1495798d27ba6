// The Tools menu and the file manager as the frame reaches them.
#pragma once
#include "app/KmCommands.h"
#include "tools/ToolList.h"

class CToolCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CToolCommands)
  public:
    using CKmCommands::CKmCommands;

    // The Tools popup takes the tools afresh once the list has changed.
    void UpdatePopup(HMENU popup, int position, CKmChild* child) override;

  protected:
    void OnManageFiles();
    void OnCompare();
    void OnExtractStrings();
    // Starts the tool of the id; an id beyond the list does nothing.
    void OnTool(UINT id);
    // Asks again until the program starts or the user cancels.
    void OnRun();

    CToolEntry m_run; // the Run dialog's last program, for the session

    DECLARE_MESSAGE_MAP()
};
