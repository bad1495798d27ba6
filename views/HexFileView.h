// The hex view: any file as rows of 16 bytes, with the address, the bytes
// in hexadecimal and the same bytes as characters. The caret and the
// selection live in the hexadecimal part.
#pragma once
#include "views/FileView.h"

class CHexFileView : public CFileView
{
    DECLARE_DYNAMIC(CHexFileView)
  public:
    // Makes the window and opens path; null, with the window gone, when the
    // file could not be shown.
    static CHexFileView* Open(const char* path, unsigned long flags);

    void UpdatePopup(HMENU menu, int index) override;
    int FindText(SearchRequest* request, bool interactive, long start, long range) override;
    // Selects the byte at offset, the caret at its front.
    void GotoPosition(long offset, long ignored) override;
    void ShowFileInfo();

  protected:
    explicit CHexFileView(unsigned long flags) : CFileView(flags | CF_HEXVIEW) {}
    bool OpenFile(const char* path, const std::function<bool()>& makeWindow) override;
    int ReadRow(char* row) override;
    void GetRowSpan(int length, int& first, int& last) override;
    uint32_t OffsetOf(const FilePos& pos) const;

    LRESULT OnLButtonDblClk(WPARAM, LPARAM);
    LRESULT OnPointToPos(WPARAM, LPARAM);
    LRESULT OnNormalizePos(WPARAM, LPARAM);
    LRESULT OnShowPos(WPARAM, LPARAM);
    LRESULT OnGetPos(WPARAM, LPARAM);
    LRESULT OnGotoPos(WPARAM, LPARAM);
    void OnGotoAddress();
    void OnFileStats();
    DECLARE_MESSAGE_MAP()
};
