#include "search/SearchCommands.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/MenuRules.h"
#include "resources/KmIds.h"

#include <commdlg.h>

IMPLEMENT_DYNAMIC(CSearchCommands, CKmCommands)

namespace
{
const UINT g_findReplaceMessage = ::RegisterWindowMessageA(FINDMSGSTRINGA);
}

// clang-format off
BEGIN_MESSAGE_MAP(CSearchCommands, CKmCommands)
    ON_REGISTERED_MESSAGE(&g_findReplaceMessage, OnNotYetMessage)
    ON_MESSAGE(WM_KM_GREP, OnNotYetMessage)
    ON_COMMAND_RANGE(ID_SEARCH_FIND, ID_SEARCH_REPLACENEXT, OnNotYet)
    ON_COMMAND_RANGE(ID_SEARCH_GREP, ID_SEARCH_GREP, OnNotYet)
END_MESSAGE_MAP()
// clang-format on

// Find Next and Previous need a pattern, unless the selection of the active
// window lies within one line and will serve as the pattern.
void CSearchCommands::UpdatePopup(HMENU popup, int position, CKmChild* child)
{
    if (position != POPUP_SEARCH)
        return;
    EnableItem(popup, ID_SEARCH_FIND, true);
    EnableItem(popup, ID_SEARCH_REPLACE, true);
    const bool pattern = !theApp.searchPattern.IsEmpty();
    EnableItem(popup, ID_SEARCH_REPLACENEXT, pattern);
    const bool seeded = child && child->GetSelectionKind() == 1;
    EnableItem(popup, ID_SEARCH_FINDNEXT, pattern || seeded);
    EnableItem(popup, ID_SEARCH_FINDPREV, pattern || seeded);
}
