// A compiled pattern that frees its code, and short ways to run it.
#pragma once

#include "search/Pattern.h"

#include <stdlib.h>
#include <string>
#include <vector>

// How many more reallocations succeed before every one fails; -1 for no
// failures. The test program is linked with --wrap=realloc.
extern int g_reallocFailsAfter;

struct Compiled {
    PatternBuffer pb;
    int result;

    explicit Compiled(const std::string& pattern, bool fold = false)
    {
        pb.fold_case = fold ? 1 : 0;
        result = CompilePattern(pattern.data(), static_cast<int>(pattern.size()), &pb);
        if (result == PATTERN_OK)
            BuildFirstCharMap(&pb);
    }
    ~Compiled() { free(pb.buffer); }
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    int Search(const std::string& text, int start, int range, MatchRegisters* regs = nullptr)
    {
        return SearchPattern(&pb, text.data(), static_cast<int>(text.size()), start, range, regs);
    }
    // Forward over the whole text.
    int Find(const std::string& text, MatchRegisters* regs = nullptr)
    {
        return Search(text, 0, static_cast<int>(text.size()), regs);
    }
};
