// The platform's print dialog, in its print and its printer set-up forms.
// The chosen printer stays in the object from one DoModal to the next.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CPrintDialog : public CDialog
{
    DECLARE_DYNAMIC(CPrintDialog)
  public:
    // flags are PD_ flags; setupOnly starts in the printer set-up form.
    CPrintDialog(bool setupOnly, DWORD flags, HWND owner);
    ~CPrintDialog() override;
    CPrintDialog(const CPrintDialog&) = delete;
    CPrintDialog& operator=(const CPrintDialog&) = delete;

    // IDOK or IDCANCEL.
    INT_PTR DoModal();
    // The device context that the last DoModal made (with PD_RETURNDC),
    // now the caller's; null if there is none.
    HDC TakePrinterDC();
    // Device, driver and port of the chosen printer; empty without one.
    CString GetDeviceName() const { return DeviceNamesPart(&DEVNAMES::wDeviceOffset); }
    CString GetDriverName() const { return DeviceNamesPart(&DEVNAMES::wDriverOffset); }
    CString GetPortName() const { return DeviceNamesPart(&DEVNAMES::wOutputOffset); }

    PRINTDLGA m_pd;

  private:
    CString DeviceNamesPart(WORD DEVNAMES::*offset) const;
};
