#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "support/Documents.h"

// Parse and serialize benchmarks of one library over one document. A library
// is a class with kName, a Tree type, Parse(text, tree) -> bool and
// Serialize(tree) -> std::string (see libraries/). Throughput is counted in
// bytes of the input document, so the speeds of one document compare across
// libraries and across workloads.
namespace tavrin::bench {

template <class Library>
std::string BenchmarkName(const char* workload, const Document& doc) {
    return std::string(workload) + "/" + Library::kName + "/" + doc.name;
}

inline void CountDocumentBytes(benchmark::State& state, const Document& doc) {
    state.SetBytesProcessed(state.iterations() * static_cast<long long>(doc.text.size()));
}

// The work of one iteration, kept out of line so that an instruction profile
// (bench/profile.sh) can collect exactly it.
template <class Library>
[[gnu::noinline]] bool TimedParse(Library& library, const std::string& text) {
    typename Library::Tree tree;
    return library.Parse(text, tree);
}

template <class Library>
[[gnu::noinline]] std::string TimedSerialize(Library& library, typename Library::Tree& tree) {
    return library.Serialize(tree);
}

// Parses the document into a fresh tree and releases it, once per iteration.
template <class Library>
void ParseLoop(benchmark::State& state, const Document& doc) {
    Library library;
    for (auto _ : state) {
        const bool ok = TimedParse(library, doc.text);
        benchmark::DoNotOptimize(ok);
        if (!ok) {
            state.SkipWithError("does not read this document");
            break;
        }
    }
    CountDocumentBytes(state, doc);
}

// Writes a tree parsed once beforehand as compact text, once per iteration.
template <class Library>
void SerializeLoop(benchmark::State& state, const Document& doc) {
    Library library;
    typename Library::Tree tree;
    if (!library.Parse(doc.text, tree)) {
        state.SkipWithError("does not read this document");
        return;
    }
    for (auto _ : state) {
        std::string text = TimedSerialize(library, tree);
        benchmark::DoNotOptimize(text.data());
    }
    CountDocumentBytes(state, doc);
}

// The document must outlive the benchmark run.
template <class Library>
void RegisterParse(const Document& doc) {
    benchmark::RegisterBenchmark(BenchmarkName<Library>("parse", doc).c_str(),
                                 [&doc](benchmark::State& state) { ParseLoop<Library>(state, doc); });
}

template <class Library>
void RegisterSerialize(const Document& doc) {
    benchmark::RegisterBenchmark(
        BenchmarkName<Library>("serialize", doc).c_str(),
        [&doc](benchmark::State& state) { SerializeLoop<Library>(state, doc); });
}

}  // namespace tavrin::bench
