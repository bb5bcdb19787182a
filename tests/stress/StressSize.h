#pragma once

#include <cstddef>

namespace tavrin::test {

// Size in bytes of the large generated documents: TAVRIN_STRESS_MB megabytes
// (make stress sets 100), 4 MB when it is not set, so that the ordinary and
// sanitizer test runs stay quick.
std::size_t StressDocumentBytes();

}  // namespace tavrin::test
