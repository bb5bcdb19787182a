// Heap held by each library's tree of each document, per byte of input, and
// for the project's Node the floor its layout forces (memory/NodeFloor.h).
// One iteration each: the counts do not vary from run to run. Run through
// `make bench`; the JSON output feeds bench/report.py.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "libraries/JsonCpp.h"
#include "libraries/Legacy.h"
#include "libraries/Nlohmann.h"
#include "libraries/RapidJson.h"
#include "libraries/Simdjson.h"
#include "libraries/Tavrin.h"
#include "memory/Footprint.h"
#include "memory/NodeFloor.h"
#include "support/Documents.h"
#include "support/DiscardLog.h"

namespace tavrin::bench {

namespace {

void Report(benchmark::State& state, const Footprint& footprint, const Document& doc) {
    if (!footprint.read) {
        state.SkipWithError("does not read this document");
        return;
    }
    const double size = static_cast<double>(doc.text.size());
    state.counters["heap_per_byte"] = static_cast<double>(footprint.heldBytes) / size;
    state.counters["peak_per_byte"] = static_cast<double>(footprint.peakBytes) / size;
    state.counters["held_bytes"] = static_cast<double>(footprint.heldBytes);
}

template <class Library>
void RegisterFootprint(const Document& doc) {
    const std::string name = std::string("memory/") + Library::kName + "/" + doc.name;
    benchmark::RegisterBenchmark(name.c_str(), [&doc](benchmark::State& state) {
        Footprint footprint;
        for (auto _ : state) footprint = MeasureFootprint<Library>(doc.text, [](auto&) {});
        Report(state, footprint, doc);
    })->Iterations(1);
}

// Ours, with the floor of its layout beside it.
template <>
void RegisterFootprint<TavrinLibrary>(const Document& doc) {
    const std::string name = std::string("memory/") + TavrinLibrary::kName + "/" + doc.name;
    benchmark::RegisterBenchmark(name.c_str(), [&doc](benchmark::State& state) {
        Footprint footprint;
        std::size_t floor = 0;
        for (auto _ : state)
            footprint = MeasureFootprint<TavrinLibrary>(
                doc.text, [&floor](TavrinLibrary::Tree& tree) { floor = NodeFloorBytes(tree); });
        Report(state, footprint, doc);
        if (floor == 0) return;
        state.counters["floor_per_byte"] =
            static_cast<double>(floor) / static_cast<double>(doc.text.size());
        state.counters["floor_ratio"] =
            static_cast<double>(footprint.heldBytes) / static_cast<double>(floor);
    })->Iterations(1);
}

template <class... Libraries>
void RegisterAll(const std::vector<Document>& docs) {
    for (const Document& doc : docs) (RegisterFootprint<Libraries>(doc), ...);
}

}  // namespace

}  // namespace tavrin::bench

int main(int argc, char** argv) {
    using namespace tavrin::bench;
    tavrin::test::DiscardLog();
    static const std::vector<Document> docs = AllDocuments();
    RegisterAll<TavrinLibrary, LegacyLibrary, RapidJsonLibrary, NlohmannLibrary, JsonCppLibrary,
                SimdjsonLibrary>(docs);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
