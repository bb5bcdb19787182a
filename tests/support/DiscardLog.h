#pragma once

#include "base/ostream.h"

namespace tavrin::test {

// Points the framework's log stream at a stream that drops every insertion,
// for the rest of the process: fuzz runs and benchmarks produce millions of
// lines that nobody reads. Cheap to call on every input.
inline void DiscardLog() {
    struct Discard final : tavrin::base::ostream {
        using ostream::operator<<;
        ostream& operator<<(char) override { return *this; }
        ostream& operator<<(int) override { return *this; }
        ostream& operator<<(long long) override { return *this; }
        ostream& operator<<(std::uint32_t) override { return *this; }
        ostream& operator<<(const char*) override { return *this; }
    };
    static Discard discard;
    tavrin::base::cout = &discard;
}

}  // namespace tavrin::test
