// The one search request of the program: pattern, replacement and options,
// shared by every window so that a search carries over from one to the
// next, with the compiled pattern and the registers of the last match.
#pragma once
#include "framework/String.h"
#include "search/Pattern.h"

class CWnd;

struct SearchRequest {
    SearchRequest();
    ~SearchRequest();
    SearchRequest(const SearchRequest&) = delete;
    SearchRequest& operator=(const SearchRequest&) = delete;

    CString m_strFind;
    CString m_strReplace;
    int m_bForward = 1;
    int m_bMatchCase = 1;
    int m_bWholeWord = 0;
    int m_bRecompile = 1; // m_pattern is out of date
    int m_bSelectionOnly = 0;
    POINT m_ptDialog = {-1, -1}; // right edge and top of the dialog when it last closed
    PatternBuffer m_pattern;
    MatchRegisters m_regs = {};
};

extern SearchRequest g_searchRequest;

// Makes m_pattern current; a bad pattern is reported over the find dialog
// (or the main window) and stays to be compiled at the next try.
bool CompileRequest(SearchRequest* request);

// A first block of code for a pattern buffer; false without memory.
bool AllocatePattern(PatternBuffer& pattern);
// Compiles text into pattern, whose fold_case the caller has set, wrapped
// in \< and \> for whole words only; a PatternResult. Throws without
// memory for the wrapped text.
int CompileSearchText(const char* text, bool wholeWord, PatternBuffer* pattern);
// The string id of the message that tells a compile result.
UINT PatternMessage(int result);

// Where the search's messages go: the find dialog while it is open, else
// the window searched.
CWnd* SearchMessageOwner(CWnd* window);
