// The read-only view of a project command's captured output. A line of
// tool output leads to the source place it names, and the view owns its
// file: it removes it when it closes.
#pragma once
#include "views/TextFileView.h"

class CLogFileView : public CTextFileView
{
    DECLARE_DYNAMIC(CLogFileView)
  public:
    // The window over fileName, not entered in the recent files; null,
    // with the window gone, when the file could not be shown.
    static CLogFileView* Open(const char* fileName, unsigned long flags);
    ~CLogFileView() override;

    // Reads a reference from the selection's last line and asks the frame
    // to open its file there.
    void GotoSourceLine();

    CString m_strFile;
    bool m_bLocate = true;

  protected:
    explicit CLogFileView(unsigned long flags) : CTextFileView(flags) {}
    LRESULT OnRButtonDown(WPARAM, LPARAM);
    void OnHelpContext();
    DECLARE_MESSAGE_MAP()
};
