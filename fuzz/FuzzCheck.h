#pragma once

#include <cstdio>
#include <cstdlib>

// A property a fuzz target checks on every input. A violation prints what
// broke and aborts, which libFuzzer reports as a crash and saves the input.
#define TAVRIN_FUZZ_CHECK(condition)                                                     \
    do {                                                                                  \
        if (!(condition)) {                                                               \
            std::fprintf(stderr, "%s:%d: property violated: %s\n", __FILE__, __LINE__,   \
                         #condition);                                                     \
            std::abort();                                                                 \
        }                                                                                 \
    } while (false)
