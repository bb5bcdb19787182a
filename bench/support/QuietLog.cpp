#include "support/QuietLog.h"

#include "base/ostream.h"

namespace tavrin::bench {

namespace {

class DiscardStream final : public tavrin::base::ostream {
public:
    ostream& operator<<(char) override { return *this; }
    ostream& operator<<(int) override { return *this; }
    ostream& operator<<(long long) override { return *this; }
    ostream& operator<<(std::uint32_t) override { return *this; }
    ostream& operator<<(const char*) override { return *this; }
};

DiscardStream gDiscard;

}  // namespace

void SilenceLog() { tavrin::base::cout = &gDiscard; }

}  // namespace tavrin::bench
