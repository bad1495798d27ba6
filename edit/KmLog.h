// The output window of the tools: an editor window that takes no typing.
// A tool creates it, titles it, appends lines while it runs and marks it
// clean at the end; where its lines name source places, a right click or
// Ctrl+G on a line opens the file there.
#pragma once
#include "edit/KmFileEdit.h"
#include "framework/String.h"

#include <string>

class CKmLog : public CKmFileEdit
{
    DECLARE_DYNAMIC(CKmLog)
  public:
    // flags: CF_READONLY and the scroll bar flags (see ToolLogFlags); locate
    // non-zero when the lines hold file references.
    CKmLog(unsigned long flags, int locate);
    // The window, empty and untitled, in the frame; null when it could not
    // be made (the object is gone then).
    static CKmLog* Create(unsigned long flags, int locate);
    // The flags of a tool's log: read-only, with the scroll bars that the
    // global settings show.
    static unsigned long ToolLogFlags();

    // Appends text formatted as wvsprintfA does, at most 511 characters;
    // the caller writes the CR LF. The number of characters written, below
    // 1 when none were, -1 once the control has run out of space.
    int LogPrintf(const char* format, ...) KM_PRINTF(2, 3);
    // The tool's last step: its output does not count as a change to save.
    void MarkClean();
    // Puts the text gathered by LogPrintf into the control now.
    void Flush();
    // Opens the file that the caret's line names, at its place.
    void GotoSourceLine();

    bool QuerySave(unsigned promptId) override;
    void UpdatePopup(HMENU menu, int index) override;
    void UpdateEditPopup(HMENU menu, int index) override;

    int m_bLocate;

  private:
    std::string m_pending; // appended, not yet in the control
    DWORD m_lastFlush = 0;
    bool m_flushTimer = false; // the timer that flushes is set

  protected:
    void AppendToControl(const char* text);
    LRESULT OnFlushTimer(WPARAM, LPARAM);
    LRESULT OnRButtonDown(WPARAM, LPARAM);
    void OnRefused();
    void OnHelpContext();
    DECLARE_MESSAGE_MAP()
};
