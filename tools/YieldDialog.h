// Long jobs on the user interface thread: the job calls Yield at points of
// its own, which serves the queue while a small modeless dialog offers
// Cancel; Cancel arrives at the job as CYieldException out of Yield. The
// frame is disabled while the dialog shows, so no command gets in.
#pragma once
#include "framework/Dialog.h"
#include "framework/Exception.h"

// The platform's headers still define Yield as an empty macro.
#undef Yield

// The user cancelled. One static object serves every throw.
class CYieldException : public CException
{
    DECLARE_DYNAMIC(CYieldException)
  public:
    [[noreturn]] static void Throw();
};

class CYieldDialog : public CDialog
{
    DECLARE_DYNAMIC(CYieldDialog)
  public:
    explicit CYieldDialog(int throwOnCancel);
    ~CYieldDialog() override;
    CYieldDialog(const CYieldDialog&) = delete;
    CYieldDialog& operator=(const CYieldDialog&) = delete;

    // Shows string stringId, formatted with argument, and disables the
    // frame; false if the dialog did not come up (the job runs without it).
    bool ShowProgress(unsigned stringId, const char* argument = "");
    // Serves what is queued; false, or the exception, once cancelled. A
    // WM_QUIT cancels the job and no more.
    int Yield();
    void Close();

    int m_bCancelled = 0;
    int m_bThrowOnCancel;
    CString m_strText; // until the dialog has shown it

  protected:
    bool OnInitDialog() override;
    void OnCancel();
    DECLARE_MESSAGE_MAP()
};

// Shows "Operation cancelled!" after a beep, as the tools end a job the
// user stopped.
void ShowCancelled();
