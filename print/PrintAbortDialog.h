// The modeless "Printing" box of a running job: document, printer and port,
// and Cancel. While it is up the frame is disabled.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CPrintAbortDialog : public CDialog
{
  public:
    // Disables the frame; aborted is set when the user cancels.
    CPrintAbortDialog(HWND frame, bool& aborted);
    // Enables the frame, and takes the box down if the user has not.
    ~CPrintAbortDialog() override;
    CPrintAbortDialog(const CPrintAbortDialog&) = delete;
    CPrintAbortDialog& operator=(const CPrintAbortDialog&) = delete;

    bool Create(const char* name, const char* device, const char* port);

  protected:
    bool OnInitDialog() override;
    void OnCancel();
    DECLARE_MESSAGE_MAP()

  private:
    HWND m_frame;
    bool& m_aborted;
    CString m_lines[3]; // until the box shows them
};
