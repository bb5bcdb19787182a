#include "timing/Scaling.h"

#include <string>

#include "json/Parser.h"
#include "libraries/Legacy.h"
#include "libraries/Tavrin.h"
#include "support/Shapes.h"
#include "timing/Convert.h"
#include "timing/Throughput.h"

namespace tavrin::bench {

namespace {

struct Shape {
    const char* name;
    std::string (*make)(std::size_t);
    std::size_t baseSize;
};

// Deep nesting reaches 8n objects (and one array inside the last) within
// the parser's bound.
constexpr std::size_t kMaxDepth =
    static_cast<std::size_t>(tavrin::plugin::json::Parser::kDefaultMaxDepth);
constexpr std::size_t kBaseDepth = (kMaxDepth - 1) / 8;
static_assert(8 * kBaseDepth + 1 <= kMaxDepth, "the deep documents stay within the depth bound");

const Shape kShapes[] = {
    {"int_array", IntArray, 4096},     {"double_array", DoubleArray, 4096},
    {"wide_object", WideObject, 1024}, {"deep_nesting", DeepNesting, kBaseDepth},
    {"long_string", LongString, 16384},
};

}  // namespace

const std::vector<Document>& ScalingDocuments() {
    static const std::vector<Document> docs = [] {
        std::vector<Document> made;
        for (const Shape& shape : kShapes)
            for (std::size_t size : {shape.baseSize, 8 * shape.baseSize})
                made.push_back({std::string(shape.name) + "/" + std::to_string(size), shape.make(size)});
        return made;
    }();
    return docs;
}

void RegisterScaling(const char* operation, DocumentLoop loop) {
    for (const Document& doc : ScalingDocuments()) {
        const std::string name = std::string("scaling/") + operation + "/" + doc.name;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [loop, &doc](benchmark::State& state) { loop(state, doc); });
    }
}

void RegisterAllScaling() {
    RegisterScaling("parse", ParseLoop<TavrinLibrary>);
    RegisterScaling("parser_parse", ParseLoop<TavrinParserLibrary>);
    RegisterScaling("serialize", SerializeLoop<TavrinLibrary>);
    RegisterScaling("convert", ConvertLoop);
    RegisterScaling("legacy_parse", ParseLoop<LegacyLibrary>);
    RegisterScaling("legacy_serialize", SerializeLoop<LegacyLibrary>);
}

}  // namespace tavrin::bench
