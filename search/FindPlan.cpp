#include "search/FindPlan.h"

FindPlan PlanFind(bool interactive, bool forward, long start, long range, int selStart, int selEnd,
                  int size)
{
    FindPlan plan;
    if (start != -1) {
        plan.start = static_cast<int>(start);
        plan.range = static_cast<int>(range);
    } else if (forward) {
        plan.start = selEnd;
        plan.range = size - selEnd;
    } else {
        plan.start = selStart > 0 ? selStart - 1 : 0;
        plan.range = -plan.start;
    }
    // From the end where a restart would begin, a second pass adds nothing.
    const int restartPoint = forward ? 0 : size - 1;
    plan.passes = interactive && plan.start != restartPoint ? 2 : 1;
    return plan;
}

void StepOverRepeat(const PatternBuffer& pb, const char* text, int size, FindPlan& plan)
{
    auto stepOver = [&](char byte) {
        if (plan.start < size && text[plan.start] == byte) {
            plan.start++;
            plan.range--;
        }
    };
    const bool atLineStart = plan.start == 0 || text[plan.start - 1] == '\n';
    if (pb.has_line_start && atLineStart) {
        plan.start++;
        plan.range--;
    } else {
        stepOver('\r');
        stepOver('\n');
    }
    if (plan.range < 0)
        plan.range = 0;
}

void RestartPlan(bool forward, int size, FindPlan& plan)
{
    plan.start = forward ? 0 : size;
    plan.range = forward ? size : -size;
}
