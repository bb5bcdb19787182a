#pragma once

namespace tavrin::bench {

// Points the framework's log stream at a stream that drops everything, so
// that benchmarks time the work and not the terminal. The conversion logs
// its source text and every nested set on each call.
void SilenceLog();

}  // namespace tavrin::bench
