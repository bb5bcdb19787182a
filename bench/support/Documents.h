#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavrin::bench {

// Readable bytes kept after the end of every document text, so that readers
// which look ahead in blocks (simdjson) read the text in place.
inline constexpr std::size_t kReadPadding = 64;

// One input of the benchmarks: a name for the report and the exact bytes that
// every library reads.
struct Document {
    std::string name;
    std::string text;
};

// The three corpus files (canada.json, citm_catalog.json, twitter.json) from
// tests/data/corpus, or from $TAVRIN_CORPUS_DIR when that is set.
// Throws std::runtime_error when a file cannot be read.
std::vector<Document> CorpusDocuments();

// Documents made here, in shapes the corpus lacks and that every reader of
// the project can read (no decimals, no apostrophes): a flat array of
// integers, an array of small records and an array of many short arrays of
// integer pairs.
std::vector<Document> GeneratedDocuments();

// The corpus files followed by the generated documents.
std::vector<Document> AllDocuments();

}  // namespace tavrin::bench
