#pragma once

#include <cstdint>

#include "base/ostream.h"

namespace tavrin::fuzz {

// A log stream that drops every insertion: fuzzing produces millions of
// error lines that nobody reads.
class DiscardStream final : public tavrin::base::ostream {
public:
    using tavrin::base::ostream::operator<<;
    ostream& operator<<(char) override { return *this; }
    ostream& operator<<(int) override { return *this; }
    ostream& operator<<(long long) override { return *this; }
    ostream& operator<<(std::uint32_t) override { return *this; }
    ostream& operator<<(const char*) override { return *this; }
};

// Points the framework's log stream at a DiscardStream for the rest of the
// process. Cheap to call on every input.
inline void DiscardLog() {
    static DiscardStream discard;
    tavrin::base::cout = &discard;
}

}  // namespace tavrin::fuzz
