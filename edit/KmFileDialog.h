// The program's file dialogs: the platform's, with a template of their own
// that adds Read Only and View in Hex for opening and the choice of line
// ends for saving, and with the list of file types from the project.
#pragma once
#include "edit/TextFormat.h"
#include "framework/FileDialog.h"
#include "framework/PrintDialog.h"

// The dialog's own bits in the upper part of the OFN_ flag word.
enum : DWORD {
    KFD_SHOWHEX = 0x40000000,  // show View in Hex
    KFD_NOFORMAT = 0x80000000, // no format buttons: any open dialog, and with KFD_SHOWHEX
    KFD_OWNBITS = 0xF0000000,
};

class CKmFileDialog : public CFileDialog
{
    DECLARE_DYNAMIC(CKmFileDialog)
  public:
    // style: OFN_ flags and KFD_ bits; fileName the name to start with.
    CKmFileDialog(bool open, const char* defaultExtension, const char* fileName, DWORD style);
    ~CKmFileDialog() override;
    CKmFileDialog(const CKmFileDialog&) = delete;
    CKmFileDialog& operator=(const CKmFileDialog&) = delete;

    INT_PTR DoModal();
    // The format button that is on at the start of a save dialog.
    void SetFormat(FileFormat format) { m_format = format; }

    HGLOBAL m_fileBlock = nullptr; // the names of a multiple selection
    int m_open;
    int m_readOnly = 0;
    // After OK in a save dialog the format of the button that was on, or
    // FF_MIXED when none was.
    FileFormat m_format = FF_DOS;
    int m_hex = 0;
    DWORD m_options;

  protected:
    bool OnInitDialog() override;
    LRESULT OnFileOk(WPARAM, LPARAM);
    void OnReadOnly();
    void OnViewHex();
    DECLARE_MESSAGE_MAP()
};

// The font dialog without its Help button.
class CKmFontDialog : public CFontDialog
{
  public:
    CKmFontDialog(const LOGFONTA& logFont, DWORD flags, HWND owner);
};

// The print dialog as the platform draws it.
class CKmPrintDialog : public CPrintDialog
{
  public:
    using CPrintDialog::CPrintDialog;
};
