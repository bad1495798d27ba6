// The read-only text view: a text file of any size shown as lines through a
// line file, with tabs expanded, copying, word selection, a smart Home and
// find.
#pragma once
#include "views/FileView.h"

#include <vector>

class CTextFileView : public CFileView
{
    DECLARE_DYNAMIC(CTextFileView)
  public:
    // Makes the window and opens path; null, with the window gone, when the
    // file could not be shown.
    static CTextFileView* Open(const char* path, unsigned long flags);

    int GetFindSeed(CString& text) override;
    int FindText(SearchRequest* request, bool interactive, long start, long range) override;
    void GotoPosition(long line, long col) override;
    void ShowFileInfo();
    // Makes m_pLine hold line; false, quietly, when it cannot be read.
    bool LoadLine(int32_t line);

    std::vector<char> m_pLine; // the raw line, tabs kept, NUL-ended
    int m_nLineLength = 0;
    int32_t m_nLineInBuffer = -1;

  protected:
    explicit CTextFileView(unsigned long flags) : CFileView(flags) {}
    bool OpenFile(const char* path, const std::function<bool()>& makeWindow) override;
    int ReadRow(char* row) override;
    void GetRowSpan(int length, int& first, int& last) override;
    void Copy(bool append);

    LRESULT OnLButtonDblClk(WPARAM, LPARAM);
    LRESULT OnLineHome(WPARAM, LPARAM);
    LRESULT OnPointToPos(WPARAM, LPARAM);
    LRESULT OnNormalizePos(WPARAM, LPARAM);
    LRESULT OnShowPos(WPARAM, LPARAM);
    LRESULT OnGetPos(WPARAM, LPARAM);
    LRESULT OnGotoPos(WPARAM, LPARAM);
    void OnEditCopy();
    void OnEditCopyAppend();
    void OnGotoLine();
    void OnHelpContext();
    void OnWordHelp(UINT id);
    void WordHelp(int mode);
    void OnFileStats();
    DECLARE_MESSAGE_MAP()
};
