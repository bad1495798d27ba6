#include "views/HexFileView.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/Messages.h"
#include "search/SearchRequest.h"
#include "views/FileSource.h"
#include "views/FixedRecordFile.h"
#include "views/GotoAddressDialog.h"
#include "views/ViewLayout.h"

#include <algorithm>
#include <vector>

IMPLEMENT_DYNAMIC(CHexFileView, CFileView)

// clang-format off
BEGIN_MESSAGE_MAP(CHexFileView, CFileView)
    ON_MESSAGE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
    ON_MESSAGE(FVM_POINTTOPOS, OnPointToPos)
    ON_MESSAGE(FVM_NORMALIZEPOS, OnNormalizePos)
    ON_MESSAGE(FVM_SHOWPOS, OnShowPos)
    ON_MESSAGE(WM_KM_GETPOS, OnGetPos)
    ON_MESSAGE(WM_KM_GOTOPOS, OnGotoPos)
    ON_COMMAND(ID_SEARCH_GOTOLINE, OnGotoAddress)
    ON_COMMAND(ID_HELP_FILESTATS, OnFileStats)
END_MESSAGE_MAP()
// clang-format on

namespace
{

const int kRowColumns = HEX_ROW_SIZE - 1;
// The search reads blocks of 16384 bytes that overlap by 256, so that a
// match of up to 256 bytes over a border is found.
const uint32_t kFindBlock = 16384;
const uint32_t kFindStep = 0x3F00;
const uint32_t kFindOverlap = kFindBlock - kFindStep;
const uint32_t kTopBit = 0x80000000u;

FilePos ByteAt(uint32_t offset)
{
    FilePos pos;
    pos.line = static_cast<int32_t>(offset / HEX_ROW_BYTES);
    pos.col = static_cast<int32_t>(offset % HEX_ROW_BYTES);
    return pos;
}

} // namespace

CHexFileView* CHexFileView::Open(const char* path, unsigned long flags)
{
    CHexFileView* view = new CHexFileView(flags);
    if (!view->Start(path, IDI_EDITFILE))
        return nullptr;
    view->Normalize(view->m_posCaret);
    view->m_posAnchor = view->m_posCaret;
    view->PlaceCaret();
    return view;
}

bool CHexFileView::OpenFile(const char* path, const std::function<bool()>& makeWindow)
{
    auto file = std::make_unique<CFixedRecordFile>(HEX_ROW_BYTES);
    file->m_whileOpening = makeWindow;
    if (!OpenRecordFile(*file, path))
        return false;
    m_pFile = std::move(file);
    m_nMaxCols = kRowColumns;
    RefreshBars();
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    ShowFileInfo();
    return true;
}

uint32_t CHexFileView::OffsetOf(const FilePos& pos) const
{
    return static_cast<uint32_t>(pos.line) * HEX_ROW_BYTES + static_cast<uint32_t>(pos.col);
}

void CHexFileView::ShowFileInfo()
{
    ShowInfo(IDS_HEXFILEINFO);
}

void CHexFileView::OnFileStats()
{
    ShowFileInfo();
}

// The hex view has no Copy, and no words to look up.
void CHexFileView::UpdatePopup(HMENU menu, int index)
{
    CFileView::UpdatePopup(menu, index);
    if (index == POPUP_EDIT)
        GrayItem(menu, ID_EDIT_COPY);
    if (index == POPUP_HELP)
        for (UINT id : {ID_HELP_CONTEXT, ID_HELP_SDK, ID_HELP_ENVIRONMENT})
            GrayItem(menu, id);
}

int CHexFileView::ReadRow(char* row)
{
    unsigned char bytes[HEX_ROW_BYTES];
    const uint32_t offset = static_cast<uint32_t>(m_pFile->m_nCurRecord) * HEX_ROW_BYTES;
    const int count = m_pFile->ReadRecord(reinterpret_cast<char*>(bytes), 0);
    return count ? FormatHexRow(offset, bytes, count, row) : 0;
}

// Only the hexadecimal part is highlighted, never the characters.
void CHexFileView::GetRowSpan(int, int& first, int& last)
{
    first = HEX_FIRST_COL;
    last = HEX_END_COL;
}

LRESULT CHexFileView::OnPointToPos(WPARAM, LPARAM lParam)
{
    FilePos& pos = *reinterpret_cast<FilePos*>(lParam);
    pos.col = HexByteAt(pos.dispCol);
    return OnNormalizePos(0, lParam);
}

// Behind the end of the file the caret goes to the end of the last row; in
// a file of whole rows the phantom row's byte 0 is the end itself.
LRESULT CHexFileView::OnNormalizePos(WPARAM, LPARAM lParam)
{
    FilePos& pos = *reinterpret_cast<FilePos*>(lParam);
    pos.col = std::max(0, std::min<int32_t>(pos.col, HEX_ROW_BYTES));
    if (m_pFile &&
        uint64_t(std::max(pos.line, 0)) * HEX_ROW_BYTES + pos.col > m_pFile->m_nFileLength) {
        pos.line = RecordCount() - 1;
        pos.col = static_cast<int32_t>(m_pFile->m_nFileLength % HEX_ROW_BYTES);
    }
    pos.dispCol = HexColumnOf(pos.col);
    return 0;
}

LRESULT CHexFileView::OnShowPos(WPARAM wParam, LPARAM lParam)
{
    return CFileView::OnShowPos(wParam, lParam * HEX_ROW_BYTES);
}

LRESULT CHexFileView::OnGetPos(WPARAM, LPARAM lParam)
{
    uint32_t* out = reinterpret_cast<uint32_t*>(lParam);
    out[0] = static_cast<uint32_t>(m_posCaret.line) * HEX_ROW_BYTES;
    out[1] = static_cast<uint32_t>(m_posCaret.col + 1);
    return 0;
}

LRESULT CHexFileView::OnGotoPos(WPARAM wParam, LPARAM lParam)
{
    GotoPosition(static_cast<long>(lParam), static_cast<long>(wParam));
    return 0;
}

void CHexFileView::GotoPosition(long offset, long)
{
    if (!m_pFile)
        return;
    uint32_t at = static_cast<uint32_t>(offset) & ~kTopBit;
    if (at >= m_pFile->m_nFileLength)
        at = m_pFile->m_nFileLength - 1;
    FilePos anchor = ByteAt(at);
    ++anchor.col;
    m_posPrev = m_posCaret;
    SelectRange(anchor, ByteAt(at));
}

void CHexFileView::OnGotoAddress()
{
    CGotoAddressDialog dialog(KmGetMainWindow(), OffsetOf(m_posPrev));
    if (dialog.DoModal() == IDOK)
        GotoPosition(static_cast<long>(dialog.m_address), 0);
}

LRESULT CHexFileView::OnLButtonDblClk(WPARAM, LPARAM)
{
    FilePos anchor = m_posCaret, caret = m_posCaret;
    anchor.col = 0;
    caret.col = HEX_ROW_BYTES;
    if (m_pFile)
        SelectRange(anchor, caret);
    return 0;
}

// Block by block through the file; an interactive forward search steps
// over what would find the same place again.
int CHexFileView::FindText(SearchRequest* request, bool interactive, long, long)
{
    if (!m_pFile || RecordCount() == 0 || !CompileRequest(request))
        return 0;
    std::vector<char> block;
    try {
        block.resize(kFindBlock);
    } catch (const std::bad_alloc&) {
        ::MessageBeep(0);
        return 0;
    }
    CKmFrame* frame = theApp.Frame();
    if (frame)
        frame->BeginBusy(false);
    const uint32_t length = m_pFile->m_nFileLength;
    const bool forward = request->m_bForward != 0;
    FilePos start, end;
    GetOrderedSelection(start, end);
    uint32_t blockPos = 0;
    int from = 0, passes = 1;
    if (forward) {
        const uint32_t offset = std::min(OffsetOf(end), length);
        if (length > kFindBlock)
            blockPos = offset;
        else
            from = static_cast<int>(offset);
        if (interactive && offset != 0)
            passes = 2;
    } else {
        const uint32_t offset = std::min(OffsetOf(start), length);
        if (offset > kFindBlock) {
            blockPos = offset - kFindBlock;
            from = static_cast<int>(kFindBlock - 1);
        } else {
            from = offset ? static_cast<int>(offset - 1) : 0;
        }
        if (interactive && offset < length)
            passes = 2;
    }
    bool found = false, stepped = !(interactive && forward);
    try {
        for (;;) {
            const int size = static_cast<int>(m_pFile->ReadAt(blockPos, block.data(), kFindBlock));
            const char* text = block.data();
            if (!stepped) {
                stepped = true;
                const bool lineStart = blockPos + from == 0 || (from > 0 && text[from - 1] == '\n');
                if (request->m_pattern.has_line_start && lineStart) {
                    ++from;
                } else {
                    from += from < size && text[from] == '\r';
                    from += from < size && text[from] == '\n';
                }
            }
            from = std::min(from, size);
            if (SearchText(*request, text, size, from)) {
                found = true;
                break;
            }
            if (forward && blockPos + size < length) {
                blockPos += kFindStep, from = 0;
                continue;
            }
            if (!forward && blockPos > 0) {
                if (blockPos >= kFindStep) {
                    blockPos -= kFindStep, from = static_cast<int>(kFindBlock - 1);
                } else {
                    from = static_cast<int>(blockPos + kFindOverlap);
                    blockPos = 0;
                }
                continue;
            }
            if (--passes <= 0 || !AskRestart(*request))
                break;
            blockPos = forward || length <= kFindBlock ? 0 : length - kFindBlock;
            from = forward ? 0 : static_cast<int>(std::min(length, kFindBlock) - 1);
        }
    } catch (const CFileException& error) {
        CString title;
        GetTitle(title);
        ReportFileError(title, error, MB_ICONEXCLAMATION);
        passes = -1;
    }
    if (frame)
        frame->EndBusy();
    if (found) {
        m_posPrev = m_posCaret;
        SelectRange(ByteAt(blockPos + static_cast<uint32_t>(request->m_regs.start[0])),
                    ByteAt(blockPos + static_cast<uint32_t>(request->m_regs.end[0])));
        return 1;
    }
    if (interactive && passes == 0)
        ReportNotFound(*request);
    return 0;
}
