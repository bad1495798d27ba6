// The editor window: one file, whole, in the block of a multi-line edit
// control, with its line terminators converted to CR LF on the way in and
// back on the way out.
#pragma once
#include "app/KmChild.h"
#include "edit/KmEdit.h"
#include "edit/TextFormat.h"
#include "resources/KmIds.h"

class CKmFileEdit : public CKmChild
{
    DECLARE_DYNAMIC(CKmFileEdit)
  public:
    // Creates the window and loads path (null: a new file); null when the
    // window could not be made or the file not loaded.
    static CKmFileEdit* Open(const char* path, unsigned long flags);

    bool LoadIntoEdit(const char* path, bool remember);
    // Reads path into block (grown, or allocated when null); the block, or
    // null after the file layer or a question refused.
    static HLOCAL LoadTextBlock(const char* path, DWORD maxSize, HLOCAL block, FileFormat& format,
                                unsigned long childFlags);
    bool WriteEditFile();
    bool AskSaveAsName();
    bool SaveFile(bool saveAs);
    bool QuerySave(unsigned promptId) override;
    void ShowFileStats(const char* path);
    int GetSelectionKind() override;
    void UpdatePopup(HMENU menu, int index) override;
    void UpdateEditPopup(HMENU menu, int index) override;

    // Find and replace on the control's text (EditSearch.cpp).
    int GetFindSeed(CString& text) override;
    int FindText(SearchRequest* request, bool interactive, long start, long range) override;
    void ReplaceSelection(SearchRequest* request) override;
    void ReplaceAll(SearchRequest* request) override;
    const char* ExpandReplacement(SearchRequest* request) override;

    // Edit commands (EditCommands.cpp).
    bool AppendSelection();
    void ChangeCase(int mode);
    void ShiftLines(int amount);
    void Transpose();
    bool MatchBrace();

    CKmEdit& Edit() { return m_edit; }

    FileFormat m_format = FF_DOS;
    CKmEdit m_edit;
    int m_outOfSpace = 0;

  protected:
    CKmFileEdit(const char* path, unsigned long flags);
    bool CreateWindowFor(const char* title, const char* icon = MAKEINTRESOURCEA(IDI_EDITFILE));

    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnQueryEndSession(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    LRESULT OnGotoPos(WPARAM, LPARAM);
    LRESULT OnGetPos(WPARAM, LPARAM);
    LRESULT OnFontChanged(WPARAM, LPARAM);
    LRESULT OnTabsChanged(WPARAM, LPARAM);
    void OnEditChange();
    void OnEditErrSpace();
    void OnCaretMoved();
    void OnFileSave();
    void OnFileSaveAs();
    void OnFilePrint();
    void OnEditPasteFile();
    void OnEditUndo();
    void OnEditCut();
    void OnEditCopy();
    void OnEditPaste();
    void OnFileStats();
    void ShowBar(int bar, bool show) override { m_edit.ShowBar(bar, show); }

    // The selection margin at the left edge.
    LRESULT OnMarginButtonDown(WPARAM, LPARAM);
    LRESULT OnMarginDblClk(WPARAM, LPARAM);
    LRESULT OnMarginRButtonDown(WPARAM, LPARAM);
    void OnEditHScroll();

    // EditCommands.cpp
    void OnEditRedo();
    void OnEditCutAppend();
    void OnEditCopyAppend();
    void OnChangeCase(UINT id);
    void OnShiftLeft();
    void OnShiftRight();
    void OnTranspose();
    void OnWordMotion(UINT id);
    void OnBookmark(UINT id);
    void OnGotoLine();
    void OnMatchBrace();
    void OnSetInsert();
    void OnSetAlign();
    void OnSetIndent();
    void OnSetReadOnly();
    void OnSetClean();
    void OnHelpContext();
    void OnWordHelp(UINT id);
    void WordHelp(int mode);

  private:
    bool WriteTextTo(const char* name);
    DECLARE_MESSAGE_MAP()
};
