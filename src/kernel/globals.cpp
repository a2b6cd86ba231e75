#include "kernel/globals.h"

#include "kernel/err.h"

#define VESKOR_DEFINE_RUN_WIDE(type, name, start) type name = start;
VESKOR_RUN_WIDE(VESKOR_DEFINE_RUN_WIDE)
#undef VESKOR_DEFINE_RUN_WIDE

void resetRunWide()
{
#define VESKOR_RESET_RUN_WIDE(type, name, start) name = start;
    VESKOR_RUN_WIDE(VESKOR_RESET_RUN_WIDE)
#undef VESKOR_RESET_RUN_WIDE
    Err.Clear();
}
