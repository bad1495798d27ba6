// A subsystem's command target: its command and message handlers, and the
// states of its menu items when a popup opens. The frame consults these
// after the active child and its own map.
#pragma once
#include "framework/CmdTarget.h"

#include <memory>
#include <vector>

class CKmChild;
class CKmFrame;

class CKmCommands : public CCmdTarget
{
    DECLARE_DYNAMIC(CKmCommands)
  public:
    explicit CKmCommands(CKmFrame& frame) : m_frame(frame) {}

    // Sets item states of the popup that opens at position (a MenuPopup),
    // before the active child, if any, sets its own.
    virtual void UpdatePopup(HMENU popup, int position, CKmChild* child);
    // Closes the subsystem's modeless dialogs that act on the children: when
    // the frame closes and when its last child goes.
    virtual void CloseDialogs() {}

  protected:
    // The answer of a command or message whose piece is not built yet.
    void OnNotYet(UINT id);
    LRESULT OnNotYetMessage(WPARAM, LPARAM);

    CKmFrame& m_frame;
};

// The command targets of the subsystems, in the order the frame asks them.
std::vector<std::unique_ptr<CKmCommands>> CreateSubsystemCommands(CKmFrame& frame);
