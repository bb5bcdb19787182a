#include "support/DiscardLog.h"

#include <cstdint>

#include "base/ostream.h"

namespace tavrin::test {

namespace {

class DiscardStream final : public tavrin::base::ostream {
public:
    using tavrin::base::ostream::operator<<;
    ostream& operator<<(char) override { return *this; }
    ostream& operator<<(int) override { return *this; }
    ostream& operator<<(long long) override { return *this; }
    ostream& operator<<(std::uint32_t) override { return *this; }
    ostream& operator<<(const char*) override { return *this; }
};

}  // namespace

void DiscardLog() {
    static DiscardStream discard;
    tavrin::base::cout = &discard;
}

}  // namespace tavrin::test
