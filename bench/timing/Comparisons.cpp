#include "timing/Comparisons.h"

#include "libraries/JsonCpp.h"
#include "libraries/Legacy.h"
#include "libraries/Nlohmann.h"
#include "libraries/RapidJson.h"
#include "libraries/Simdjson.h"
#include "libraries/Tavrin.h"
#include "timing/Throughput.h"

namespace tavrin::bench {

namespace {

template <class... Libraries>
void RegisterAll(const std::vector<Document>& docs) {
    for (const Document& doc : docs) (RegisterParse<Libraries>(doc), ...);
    for (const Document& doc : docs) (RegisterSerialize<Libraries>(doc), ...);
}

}  // namespace

void RegisterComparisons(const std::vector<Document>& docs) {
    RegisterAll<TavrinLibrary, LegacyLibrary, RapidJsonLibrary, NlohmannLibrary, JsonCppLibrary,
                SimdjsonLibrary>(docs);
    // RapidJSON converting numbers as exactly as ours does: reading only, its
    // writer is the one above.
    for (const Document& doc : docs) RegisterParse<RapidJsonExactLibrary>(doc);
}

}  // namespace tavrin::bench
