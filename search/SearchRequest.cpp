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

} // namespace

SearchRequest::SearchRequest()
{
    AllocatePattern(m_pattern);
}

SearchRequest::~SearchRequest()
{
    free(m_pattern.buffer);
}

bool AllocatePattern(PatternBuffer& pattern)
{
    pattern.buffer = static_cast<unsigned char*>(malloc(kFirstPatternBlock));
    pattern.allocated = pattern.buffer ? kFirstPatternBlock : 0;
    return pattern.buffer != nullptr;
}

UINT PatternMessage(int result)
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

// Whole word is no more than this wrapping, regular expressions too.
int CompileSearchText(const char* text, bool wholeWord, PatternBuffer* pattern)
{
    std::string source = text;
    if (wholeWord)
        source = "\\<" + source + "\\>";
    return CompilePattern(source.data(), static_cast<int>(source.size()), pattern);
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
        result =
            CompileSearchText(request->m_strFind, request->m_bWholeWord != 0, &request->m_pattern);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return false;
    }
    if (result != PATTERN_OK) {
        KmMessageBox(SearchMessageOwner(nullptr), MB_ICONEXCLAMATION, PatternMessage(result));
        return false;
    }
    BuildFirstCharMap(&request->m_pattern);
    request->m_bRecompile = 0;
    return true;
}
