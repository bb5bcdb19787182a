#pragma once

namespace tavrin::test {

// Points the framework's log stream at a stream that drops every insertion,
// for the rest of the process: fuzz runs and benchmarks produce millions of
// lines that nobody reads. Cheap to call on every input.
void DiscardLog();

}  // namespace tavrin::test
