// Find and replace in the editor window, on the control's own text block.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "search/FindPlan.h"
#include "search/ReplaceAll.h"
#include "search/Replacement.h"
#include "search/SearchRequest.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace
{

// The wait cursor for the length of a search.
class CWaitCursor
{
  public:
    CWaitCursor() : m_old(::SetCursor(::LoadCursorA(nullptr, IDC_WAIT))) {}
    ~CWaitCursor() { ::SetCursor(m_old); }

  private:
    HCURSOR m_old;
};

// \p of a replacement: the clipboard's text, nothing when there is none.
void AppendClipboard(HWND owner, std::string& out)
{
    if (!::OpenClipboard(owner))
        return;
    if (HANDLE data = ::GetClipboardData(CF_TEXT)) {
        if (const char* text = static_cast<const char*>(::GlobalLock(data))) {
            out += text;
            ::GlobalUnlock(data);
        }
    }
    ::CloseClipboard();
}

// The request's replacement for a match in text, \p taking the clipboard
// with the control as its owner.
void ExpandInEditor(HWND edit, const SearchRequest& request, const char* text,
                    const MatchRegisters& regs, std::string& out)
{
    ExpandReplacementText(
        request.m_strReplace.str(), text, regs,
        [edit](std::string& clip) { AppendClipboard(edit, clip); }, EditCaseMap, out);
}

} // namespace

// Only a selection within one line seeds the pattern.
int CKmFileEdit::GetFindSeed(CString& text)
{
    DWORD start, end;
    m_edit.GetSel(start, end);
    if (start == end)
        return 0;
    try {
        CEditText block(m_edit);
        const char* selected = block.text + start;
        const size_t length = end - start;
        if (memchr(selected, '\n', length))
            return 0;
        if (static_cast<size_t>(text.GetLength()) == length &&
            memcmp(text.c_str(), selected, length) == 0)
            return 0;
        text = CString(selected, static_cast<int>(length));
        return 1;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return 0;
    }
}

int CKmFileEdit::FindText(SearchRequest* request, bool interactive, long start, long range)
{
    if (!CompileRequest(request))
        return 0;
    CWaitCursor wait;
    const int size = ::GetWindowTextLengthA(m_edit.m_hWnd);
    DWORD selStart, selEnd;
    m_edit.GetSel(selStart, selEnd);
    const bool forward = request->m_bForward != 0;
    FindPlan plan = PlanFind(interactive, forward, start, range, static_cast<int>(selStart),
                             static_cast<int>(selEnd), size);
    CEditText text(m_edit);
    if (interactive && forward)
        StepOverRepeat(request->m_pattern, text.text, size, plan);
    for (;;) {
        const int found = SearchPattern(&request->m_pattern, text.text, size, plan.start,
                                        plan.range, &request->m_regs);
        if (found >= 0) {
            text.Unlock();
            m_edit.m_lastPos = selEnd;
            m_edit.SetSelection(static_cast<DWORD>(request->m_regs.start[0]),
                                static_cast<DWORD>(request->m_regs.end[0]));
            m_edit.CentreCaretLine();
            return 1;
        }
        if (--plan.passes <= 0)
            break;
        text.Unlock();
        const UINT question = forward ? IDS_RESTARTFROMSTART : IDS_RESTARTFROMEND;
        if (KmMessageBox(SearchMessageOwner(this), MB_OKCANCEL | MB_ICONQUESTION, question,
                         request->m_strFind.c_str()) != IDOK)
            return 0;
        RestartPlan(forward, size, plan);
        text.Lock();
    }
    text.Unlock();
    if (interactive)
        KmMessageBox(SearchMessageOwner(this), MB_ICONEXCLAMATION, IDS_CANNOTFIND,
                     request->m_strFind.c_str());
    return 0;
}

// The replaced text stays selected.
void CKmFileEdit::ReplaceSelection(SearchRequest* request)
{
    const char* replacement = ExpandReplacement(request);
    if (!replacement) {
        OutOfMemoryNotice();
        return;
    }
    m_edit.SendMessage(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(replacement));
    const DWORD from = static_cast<DWORD>(request->m_regs.start[0]);
    m_edit.SetSelection(from, from + static_cast<DWORD>(strlen(replacement)));
    free(const_cast<char*>(replacement));
}

// A heap block the caller frees; null without memory.
const char* CKmFileEdit::ExpandReplacement(SearchRequest* request)
{
    try {
        std::string out;
        {
            CEditText text(m_edit);
            ExpandInEditor(m_edit.m_hWnd, *request, text.text, request->m_regs, out);
        }
        char* block = static_cast<char*>(malloc(out.size() + 1));
        if (block)
            memcpy(block, out.c_str(), out.size() + 1);
        return block;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

// Every match of the whole text, or of the selection, replaced in one pass
// over a copy and given to the control as one edit, which one Undo takes
// back. A replacement that holds the pattern is not searched again.
void CKmFileEdit::ReplaceAll(SearchRequest* request)
{
    DWORD selStart, selEnd;
    m_edit.GetSel(selStart, selEnd);
    const int size = ::GetWindowTextLengthA(m_edit.m_hWnd);
    int position = 0, range = size;
    if (request->m_bSelectionOnly) {
        position = static_cast<int>(selStart);
        range = static_cast<int>(selEnd - selStart);
    }
    CKmFrame* frame = theApp.Frame();
    if (frame)
        frame->BeginBusy(false);
    ReplaceAllResult result;
    if (range > 0 && CompileRequest(request)) {
        try {
            CEditText text(m_edit);
            const HWND edit = m_edit.m_hWnd;
            auto expand = [edit, request](const char* matched, const MatchRegisters& regs,
                                          std::string& out) {
                ExpandInEditor(edit, *request, matched, regs, out);
            };
            ReplaceAllInText(&request->m_pattern, text.text, size, position, range, expand, result);
        } catch (const std::bad_alloc&) {
            OutOfMemoryNotice();
            result = ReplaceAllResult();
        }
    }
    if (result.count > 0) {
        m_edit.SetSelection(static_cast<DWORD>(result.from), static_cast<DWORD>(result.to));
        m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(result.text.c_str()));
    }
    if (frame)
        frame->EndBusy();
    if (result.count == 0)
        KmMessageBox(SearchMessageOwner(this), MB_ICONEXCLAMATION, IDS_CANNOTFIND,
                     request->m_strFind.c_str());
}
