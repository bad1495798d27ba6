// The platform's Open and Save As dialogs, and its font dialog. The file
// dialog's hook runs every message through the library's dialog procedure,
// so that a derived class with a template of its own handles its controls
// in its message map; what the map leaves goes on to the platform's
// procedure.
#pragma once
#include "framework/Dialog.h"

#include <vector>

class CFileDialog : public CDialog
{
    DECLARE_DYNAMIC(CFileDialog)
  public:
    // flags are OFN_ flags; fileName the name to start with (null: none).
    CFileDialog(bool open, const char* defaultExtension, const char* fileName, DWORD flags);
    // IDOK or IDCANCEL.
    INT_PTR DoModal();
    CString GetPathName() const { return m_ofn.lpstrFile; }
    // The file types as "text|pattern|" pairs; the number of '|' marks.
    DWORD SetFilter(const char* pairs);
    // The chosen files as paths. With multiple selection the platform's
    // dialog without the explorer look gives a directory and names
    // separated by blanks, or one path.
    std::vector<CString> GetPathNames() const;

    OPENFILENAMEA m_ofn;

  protected:
    bool m_bOpen;

  private:
    static UINT_PTR CALLBACK HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    CString m_defaultExtension;
    CString m_filterPairs;
    char m_fileName[MAX_PATH];
};

class CFontDialog : public CDialog
{
    DECLARE_DYNAMIC(CFontDialog)
  public:
    // flags are CF_ flags of the font dialog; the dialog starts at logFont.
    CFontDialog(const LOGFONTA& logFont, DWORD flags, HWND owner);
    INT_PTR DoModal();

    CHOOSEFONTA m_cf;
    LOGFONTA m_lf; // the chosen font after IDOK
};
