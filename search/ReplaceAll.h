// Replace All in one pass over the text. It makes the same searches and the
// same steps over line ends as replacing one hit at a time in the text and
// searching on behind the inserted text would, including the byte before
// each search position as the changed text would have it, but it copies
// the text once instead of once per hit. Where hit by hit would find the
// same empty match at the same place for ever (a search from the same
// place, with the same byte before it, as the search before), the loop
// ends instead. Platform-free.
#pragma once
#include "search/Pattern.h"

#include <functional>
#include <string>

// Appends the replacement of the match in `regs` (offsets into `text`).
using ExpandMatch =
    std::function<void(const char* text, const MatchRegisters& regs, std::string& out)>;

struct ReplaceAllResult {
    int from = 0;     // the stretch [from, to) of the original text
    int to = 0;       //   that `text` replaces
    std::string text; // empty stretch and text when nothing was found
    int count = 0;    // replacements made
};

// Replaces every match that starts in [position, position + range) of the
// `size` bytes at `text`; `pb` is compiled and has its first-character map.
void ReplaceAllInText(PatternBuffer* pb, const char* text, int size, int position, int range,
                      const ExpandMatch& expand, ReplaceAllResult& result);
