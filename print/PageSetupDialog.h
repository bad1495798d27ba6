// Page Setup: the header and footer templates and the four margins, shown
// in inches or centimetres by the regional settings, with their decimal
// mark, and kept in tenths of a millimetre.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CPageSetupDialog : public CModalDialog
{
  public:
    explicit CPageSetupDialog(HWND parent);

    CString m_header, m_footer;
    CString m_decimal;
    bool m_metric;
    int m_margins[4] = {}; // left, top, right, bottom

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnHelp();
    DECLARE_MESSAGE_MAP()

  private:
    // The margin in a field, or -1 after telling the user it is no margin.
    int ReadMargin(int id);
};
