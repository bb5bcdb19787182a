// Speed of the project's readers, writers and conversion against peer JSON
// libraries on the same bytes. Run through `make bench`; the JSON output
// (--benchmark_format=json) feeds bench/report.py.
#include <benchmark/benchmark.h>

#include "support/Documents.h"
#include "support/DiscardLog.h"
#include "support/WarmHeap.h"
#include "timing/Comparisons.h"
#include "timing/Convert.h"
#include "timing/Scaling.h"

int main(int argc, char** argv) {
    tavrin::test::DiscardLog();
    tavrin::bench::KeepFreedMemory();
    static const std::vector<tavrin::bench::Document> docs = tavrin::bench::AllDocuments();
    tavrin::bench::RegisterComparisons(docs);
    tavrin::bench::RegisterConvert(docs);
    tavrin::bench::RegisterAllScaling();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
