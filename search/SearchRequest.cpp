#include "search/SearchRequest.h"

#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "search/FindDialog.h"

#include <cstdlib>
#include <string>

SearchRequest g_searchRequest;

namespace
{

const uint32_t kFirstPatternBlock = 40;

UINT CompileMessage(int result)
{
    switch (result) {
    case PATTERN_NO_MEMORY:
        return IDS_OUTOFMEMORY;
    case PATTERN_TOO_COMPLEX:
        return IDS_PATTERN_TOOCOMPLEX;
    case PATTERN_UNMATCHED_OPEN:
        return IDS_PATTERN_UNMATCHEDOPEN;
    case PATTERN_UNMATCHED_CLOSE:
        return IDS_PATTERN_UNMATCHEDCLOSE;
    default:
        return IDS_PATTERN_INVALID;
    }
}

} // namespace

SearchRequest::SearchRequest()
{
    m_pattern.buffer = static_cast<unsigned char*>(malloc(kFirstPatternBlock));
    m_pattern.allocated = m_pattern.buffer ? kFirstPatternBlock : 0;
}

SearchRequest::~SearchRequest()
{
    free(m_pattern.buffer);
}

CWnd* SearchMessageOwner(CWnd* window)
{
    return g_findDialog ? g_findDialog : window;
}

bool CompileRequest(SearchRequest* request)
{
    if (!request->m_bRecompile)
        return true;
    request->m_pattern.fold_case = !request->m_bMatchCase;
    int result;
    try {
        // Whole word is no more than this wrapping, regular expressions too.
        std::string text = request->m_strFind.str();
        if (request->m_bWholeWord)
            text = "\\<" + text + "\\>";
        result = CompilePattern(text.data(), static_cast<int>(text.size()), &request->m_pattern);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return false;
    }
    if (result != PATTERN_OK) {
        KmMessageBox(SearchMessageOwner(nullptr), MB_ICONEXCLAMATION, CompileMessage(result));
        return false;
    }
    BuildFirstCharMap(&request->m_pattern);
    request->m_bRecompile = 0;
    return true;
}
