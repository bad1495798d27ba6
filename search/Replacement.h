// The replacement text of find and replace as the user types it: & and \0
// to \9 for the match and its groups, \n for CR LF, \t, \p for the
// clipboard, and the case switches \u \l \U \L \E. Platform-free.
#pragma once
#include "search/CaseMap.h"
#include "search/Pattern.h"

#include <functional>
#include <string>

// Appends the clipboard's text to its argument; asked only for \p.
using ClipboardText = std::function<void(std::string&)>;

// Appends to `out` what replaces the match in `regs` over `text`. A group
// that is unset (-1) gives nothing.
void ExpandReplacementText(const std::string& replace, const char* text, const MatchRegisters& regs,
                           const ClipboardText& clipboard, const CaseMap& cases, std::string& out);
