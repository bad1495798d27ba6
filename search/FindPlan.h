// Where a find in an editor searches: the start, the range and the number
// of passes, worked out from the selection, the direction and the pattern.
// Platform-free.
#pragma once
#include "search/Pattern.h"

struct FindPlan {
    int start;
    int range;  // positive forward, negative backward
    int passes; // 2 when the user may be asked to restart at the other end
};

// start -1: from the selection [selStart, selEnd); otherwise start and range
// as given. A non-interactive find makes one pass.
FindPlan PlanFind(bool interactive, bool forward, long start, long range, int selStart, int selEnd,
                  int size);

// Interactive forward finds step over what would find the same place again:
// a line start for a pattern with ^, else a CR and then an LF at the start.
void StepOverRepeat(const PatternBuffer& pb, const char* text, int size, FindPlan& plan);

// The second pass, after the user agreed to restart: the whole text from
// the other end.
void RestartPlan(bool forward, int size, FindPlan& plan);
