#include "search/SearchCommands.h"

#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "resources/KmIds.h"
#include "search/FindDialog.h"
#include "search/GlobalSearch.h"
#include "search/GrepDialog.h"
#include "search/SearchRequest.h"

#include <commdlg.h>

IMPLEMENT_DYNAMIC(CSearchCommands, CKmCommands)

namespace
{
const UINT g_findReplaceMessage = ::RegisterWindowMessageA(FINDMSGSTRINGA);
}

// clang-format off
BEGIN_MESSAGE_MAP(CSearchCommands, CKmCommands)
    ON_REGISTERED_MESSAGE(&g_findReplaceMessage, OnFindReplace)
    ON_MESSAGE(WM_KM_GREP, OnGrepRequest)
    ON_COMMAND(ID_SEARCH_FIND, OnFind)
    ON_COMMAND(ID_SEARCH_REPLACE, OnReplace)
    ON_COMMAND(ID_SEARCH_FINDNEXT, OnFindNext)
    ON_COMMAND(ID_SEARCH_FINDPREV, OnFindPrev)
    ON_COMMAND(ID_SEARCH_REPLACENEXT, OnReplaceNext)
    ON_COMMAND(ID_SEARCH_GREP, OnGrep)
END_MESSAGE_MAP()
// clang-format on

// The pattern and the replacement are not kept beyond the frame. The
// global search's dialog has no owner to take it along.
CSearchCommands::~CSearchCommands()
{
    g_searchRequest.m_strFind.Empty();
    g_searchRequest.m_strReplace.Empty();
    if (CGrepDialog* dialog = g_grepDialog) {
        g_grepDialog = nullptr;
        dialog->DestroyWindow();
    }
}

// Find Next and Previous need a pattern, unless the selection of the active
// window lies within one line and will serve as the pattern.
void CSearchCommands::UpdatePopup(HMENU popup, int position, CKmChild* child)
{
    if (position != POPUP_SEARCH)
        return;
    EnableItem(popup, ID_SEARCH_FIND, true);
    EnableItem(popup, ID_SEARCH_REPLACE, true);
    const bool pattern = !g_searchRequest.m_strFind.IsEmpty();
    EnableItem(popup, ID_SEARCH_REPLACENEXT, pattern);
    const bool seeded = child && child->GetSelectionKind() == 1;
    EnableItem(popup, ID_SEARCH_FINDNEXT, pattern || seeded);
    EnableItem(popup, ID_SEARCH_FINDPREV, pattern || seeded);
}

void CSearchCommands::CloseDialogs()
{
    if (g_findDialog) {
        g_findDialog->SendMessage(WM_COMMAND, IDCANCEL);
        g_findDialog = nullptr;
    }
}

void CSearchCommands::OnFind()
{
    if (g_findDialog)
        ::BringWindowToTop(g_findDialog->m_hWnd);
    else if (!m_frame.m_pActiveChild)
        m_frame.Alert(MB_ICONEXCLAMATION);
    else
        CKmFindReplaceDialog::Open(true);
}

void CSearchCommands::OnReplace()
{
    CKmChild* child = m_frame.m_pActiveChild;
    if (g_findDialog)
        ::BringWindowToTop(g_findDialog->m_hWnd);
    else if (child && !(child->m_flags & CF_READONLY))
        CKmFindReplaceDialog::Open(false);
    else
        m_frame.Alert(MB_ICONEXCLAMATION);
}

void CSearchCommands::OnFindNext()
{
    FindAgain(true);
}

void CSearchCommands::OnFindPrev()
{
    FindAgain(false);
}

// After a regular-expression match the selection differs from the pattern,
// so a Find Next from the keyboard takes the matched text as the pattern.
void CSearchCommands::FindAgain(bool forward)
{
    SearchRequest& request = g_searchRequest;
    request.m_bForward = forward;
    CKmChild* child = m_frame.m_pActiveChild;
    if (!child) {
        m_frame.Alert(MB_ICONEXCLAMATION);
        return;
    }
    if (child->GetFindSeed(request.m_strFind))
        request.m_bRecompile = 1;
    if (request.m_strFind.IsEmpty()) {
        OnFind();
        return;
    }
    child->FindText(&request, true, -1, 0);
    if (g_findDialog)
        g_findDialog->SetFindText(request.m_strFind);
}

void CSearchCommands::OnReplaceNext()
{
    SearchRequest& request = g_searchRequest;
    request.m_bForward = 1;
    CKmChild* child = m_frame.m_pActiveChild;
    if (!child)
        m_frame.Alert(MB_ICONEXCLAMATION);
    else if (child->FindText(&request, true, -1, 0))
        child->ReplaceSelection(&request);
}

LRESULT CSearchCommands::OnFindReplace(WPARAM, LPARAM lParam)
{
    const FINDREPLACEA& fr = *reinterpret_cast<const FINDREPLACEA*>(lParam);
    CKmFindReplaceDialog* dialog = g_findDialog;
    if (!dialog)
        return 0;
    if (fr.Flags & FR_DIALOGTERM) {
        RECT rect;
        ::GetWindowRect(dialog->m_hWnd, &rect);
        g_searchRequest.m_ptDialog = {rect.right, rect.top};
        g_findDialog = nullptr;
        ::SetWindowPos(m_frame.m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        return 0;
    }
    CKmChild* child = m_frame.m_pActiveChild;
    if (!child || (!dialog->m_bFindOnly && (child->m_flags & CF_READONLY)))
        m_frame.Alert(MB_ICONEXCLAMATION);
    else
        RunDialogRequest(fr, child);
    if (g_findDialog)
        ::BringWindowToTop(g_findDialog->m_hWnd);
    return 0;
}

void CSearchCommands::RunDialogRequest(const FINDREPLACEA& fr, CKmChild* child)
{
    SearchRequest& request = g_searchRequest;
    request.m_strFind = fr.lpstrFindWhat;
    request.m_bForward = (fr.Flags & FR_DOWN) != 0;
    request.m_strReplace = fr.lpstrReplaceWith;
    const int matchCase = (fr.Flags & FR_MATCHCASE) != 0;
    const int wholeWord = (fr.Flags & FR_WHOLEWORD) != 0;
    // The plain assignment may clear a pending recompile: kept as it is.
    if (matchCase != request.m_bMatchCase || wholeWord != request.m_bWholeWord)
        request.m_bRecompile = 1;
    else
        request.m_bRecompile = g_findDialog->TakeChanged();
    request.m_bMatchCase = matchCase;
    request.m_bWholeWord = wholeWord;
    request.m_bSelectionOnly = g_findDialog->ScopeChecked();

    if (fr.Flags & FR_REPLACEALL) {
        child->ReplaceAll(&request);
    } else if (fr.Flags & FR_REPLACE) {
        // An unchanged pattern replaces the present match without moving on.
        if ((!request.m_bRecompile && !request.m_bSelectionOnly) ||
            child->FindText(&request, true, -1, 0))
            child->ReplaceSelection(&request);
    } else {
        child->FindText(&request, true, -1, 0);
    }
}

void CSearchCommands::OnGrep()
{
    CGrepDialog::Open();
}

// The dialog's OK, or its closing.
LRESULT CSearchCommands::OnGrepRequest(WPARAM, LPARAM lParam)
{
    CGrepDialog* dialog = reinterpret_cast<CGrepDialog*>(lParam);
    if (dialog->m_bClosing)
        g_grepDialog = nullptr;
    else
        RunGrep(*dialog);
    return 0;
}
