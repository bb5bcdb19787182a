#pragma once

#include <benchmark/benchmark.h>

#include <vector>

#include "support/Documents.h"

namespace tavrin::bench {

// Runs the registered conversion on the document once per iteration; the
// result string is overwritten each time. Fails the benchmark when the
// conversion returns false.
void ConvertLoop(benchmark::State& state, const Document& doc);

// "convert/tavrin/<document>" for every document. The documents must outlive
// the run.
void RegisterConvert(const std::vector<Document>& docs);

}  // namespace tavrin::bench
