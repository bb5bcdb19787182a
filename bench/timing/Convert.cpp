#include "timing/Convert.h"

#include <string>

#include "support/RegisteredConvert.h"
#include "timing/Throughput.h"

namespace tavrin::bench {

namespace {

// One call, kept out of line for the instruction profile (bench/profile.sh).
[[gnu::noinline]] bool TimedConvert(RegisteredConvert& convert, tavrin::base::AttrSet& arguments) {
    return convert(arguments);
}

}  // namespace

void ConvertLoop(benchmark::State& state, const Document& doc) {
    RegisteredConvert convert;
    std::string result;
    tavrin::base::AttrSet arguments = RegisteredConvert::Arguments(doc.text, result);
    for (auto _ : state) {
        if (!TimedConvert(convert, arguments)) {
            state.SkipWithError("the conversion failed");
            break;
        }
        benchmark::DoNotOptimize(result.data());
    }
    CountDocumentBytes(state, doc);
}

void RegisterConvert(const std::vector<Document>& docs) {
    for (const Document& doc : docs) {
        const std::string name = "convert/tavrin/" + doc.name;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [&doc](benchmark::State& state) { ConvertLoop(state, doc); });
    }
}

}  // namespace tavrin::bench
