// Reallocation that a test can make fail; transparent otherwise.
#include "PatternTestUtil.h"

#include <stddef.h>

int g_reallocFailsAfter = -1;

extern "C" void* __real_realloc(void* block, size_t size);

extern "C" void* __wrap_realloc(void* block, size_t size)
{
    if (g_reallocFailsAfter == 0)
        return nullptr;
    if (g_reallocFailsAfter > 0)
        g_reallocFailsAfter--;
    return __real_realloc(block, size);
}
