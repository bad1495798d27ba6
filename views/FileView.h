// The common frame of the read-only views: a child window that shows a
// record file as rows and columns, with a caret, a selection, keys, mouse
// and scroll bars for any number of records. It does not paint: the text
// and hex views paint, and tell it through FVM_POINTTOPOS and
// FVM_NORMALIZEPOS how display columns and places in a record relate. All
// movement goes through the FVM_ messages.
#pragma once
#include "app/KmChild.h"
#include "framework/Exception.h"
#include "resources/KmIds.h"
#include "views/RecordFile.h"

#include <cstdint>
#include <functional>
#include <memory>

// A place in the view: record, index in the record, display column.
struct FilePos {
    int32_t line = 0;
    int32_t col = 0;
    int32_t dispCol = 0;
    bool SamePlace(const FilePos& o) const { return line == o.line && col == o.col; }
};

class CFileView : public CKmChild
{
    DECLARE_DYNAMIC(CFileView)
  public:
    ~CFileView() override;

    void UpdatePopup(HMENU menu, int index) override;
    void UpdateEditPopup(HMENU menu, int index) override;
    // 0 none, 1 within one row, 2 over several rows.
    int GetSelectionKind() override;
    // Jumps to a place, remembered in m_posPrev, with the row centred.
    virtual void GotoPosition(long line, long col);

    // The selection's ends in file order; false when it is empty.
    bool GetOrderedSelection(FilePos& start, FilePos& end) const;
    void SelectRange(const FilePos& anchor, const FilePos& caret);
    int32_t GetDisplayWidth(int32_t line);

    UINT_PTR m_nTimer = 0;
    bool m_bCapture = false;
    bool m_bScrollVert = false;
    int m_nScrollCode = 0; // SB_LINEUP or SB_LINEDOWN
    UINT m_nTimerPeriod = 0;
    int m_nCharWidth = 8;
    int m_nLineHeight = 16;
    COLORREF m_crText = 0;
    RECT m_rcText = {};
    std::unique_ptr<CRecordFile> m_pFile;
    int32_t m_nTopLine = 0;
    int32_t m_nLeftCol = 0;
    int32_t m_nCols = 1;
    int32_t m_nLines = 1;
    int32_t m_nMaxCols = 1;
    FilePos m_posAnchor;
    FilePos m_posCaret;
    FilePos m_posDrag;
    FilePos m_posPrev;
    bool m_bCaretShown = false;
    bool m_bHasFocus = false;

  protected:
    explicit CFileView(unsigned long flags);
    // Makes the child window, titled with path, and opens the file in it;
    // false, with the window and the object gone, when either fails.
    bool Start(const char* path, UINT icon);
    // Opens the file, calling makeWindow while it is read.
    virtual bool OpenFile(const char* path, const std::function<bool()>& makeWindow) = 0;
    // Reads the row of record m_pFile->m_nCurRecord into row (room for
    // kRowSize bytes) as display columns; the number of columns.
    virtual int ReadRow(char* row) = 0;
    // The columns that a selection takes on a row that it passes wholly.
    virtual void GetRowSpan(int length, int& first, int& last) = 0;

    void Normalize(FilePos& pos)
    {
        SendMessage(FVM_NORMALIZEPOS, 0, reinterpret_cast<LPARAM>(&pos));
    }
    int RecordLength(int32_t line) { return m_pFile ? m_pFile->GetRecordLength(line) : 0; }
    int32_t RecordCount() const { return m_pFile ? m_pFile->m_nRecordCount : 0; }
    bool RowOnScreen(int32_t line) const
    {
        return line >= m_nTopLine && line <= m_nTopLine + m_nLines - 1;
    }
    bool ColumnOnScreen(int32_t dispCol) const
    {
        return dispCol >= m_nLeftCol && dispCol <= m_nLeftCol + m_nCols - 1;
    }
    // The file's statistics in the status bar, by string stringId with the
    // name, the length and the records.
    void ShowInfo(UINT stringId);
    // The questions of a find that has reached the end of the file: go on
    // from the other end? And the word that nothing was found.
    bool AskRestart(const SearchRequest& request);
    void ReportNotFound(const SearchRequest& request);
    // One search over size bytes of text from start, forward to the end or
    // backward to the first byte, which gets its try too.
    static bool SearchText(SearchRequest& request, const char* text, int size, int start);
    void PlaceCaret();
    void ScrollRows(int code, int thumb = 0);
    void ScrollColumns(int code, int thumb = 0);
    void RefreshBars();
    // Shows or hides the bars by the flag bits.
    void ShowBars();
    void InvalidateRows(int32_t from, int32_t to);
    void InvalidateSelection();
    bool EnsureCaretRow(bool centre);
    void MakeColumnsFit();
    // The place under a client point; false outside the text.
    bool PointToPos(POINT point, FilePos& pos);

    enum { kRowSize = 256 }; // a painted row shows at most 255 columns

    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnPaint(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    LRESULT OnKillFocus(WPARAM, LPARAM);
    LRESULT OnVScroll(WPARAM, LPARAM);
    LRESULT OnHScroll(WPARAM, LPARAM);
    LRESULT OnKeyDown(WPARAM, LPARAM);
    LRESULT OnLButtonDown(WPARAM, LPARAM);
    LRESULT OnLButtonUp(WPARAM, LPARAM);
    LRESULT OnMouseMove(WPARAM, LPARAM);
    LRESULT OnTimer(WPARAM, LPARAM);
    LRESULT OnFontChanged(WPARAM, LPARAM);
    LRESULT OnTabsChanged(WPARAM, LPARAM);
    LRESULT OnTop(WPARAM, LPARAM);
    LRESULT OnBottom(WPARAM, LPARAM);
    LRESULT OnLineHome(WPARAM, LPARAM);
    LRESULT OnLineEnd(WPARAM, LPARAM);
    LRESULT OnPageUp(WPARAM, LPARAM);
    LRESULT OnPageDown(WPARAM, LPARAM);
    LRESULT OnPageLeft(WPARAM, LPARAM);
    LRESULT OnPageRight(WPARAM, LPARAM);
    LRESULT OnScrollDown(WPARAM, LPARAM);
    LRESULT OnScrollUp(WPARAM, LPARAM);
    LRESULT OnLineUp(WPARAM, LPARAM);
    LRESULT OnLineDown(WPARAM, LPARAM);
    LRESULT OnCharLeft(WPARAM, LPARAM);
    LRESULT OnCharRight(WPARAM, LPARAM);
    LRESULT OnShowPos(WPARAM, LPARAM);
    void OnFilePrint();
    void ShowBar(int bar, bool show) override;

  private:
    // The view's font, or the system's fixed font when it has none.
    HGDIOBJ Font() const;
    // Draws one row of display columns from m_nLeftCol on, with the columns
    // from selFrom up to selTo on the highlight colour (selFrom -1: none).
    void DrawRow(HDC dc, int y, const char* text, int length, int selFrom, int selTo);
    void AutoScrollStep();
    // The rows between the drag mark and the caret repainted, the mark moved.
    void FollowDrag();
    void SetRowBar();
    DECLARE_MESSAGE_MAP()
};
