#include "stress/StressSize.h"

#include <cstdlib>

namespace tavrin::test {

std::size_t StressDocumentBytes() {
    constexpr std::size_t kDefaultMegabytes = 4;
    const char* text = std::getenv("TAVRIN_STRESS_MB");
    const unsigned long megabytes = text != nullptr ? std::strtoul(text, nullptr, 10) : 0;
    return (megabytes != 0 ? megabytes : kDefaultMegabytes) * 1024 * 1024;
}

}  // namespace tavrin::test
