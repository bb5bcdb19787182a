#include "support/Documents.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "support/Shapes.h"

namespace tavrin::bench {

namespace {

std::string CorpusDir() {
    if (const char* dir = std::getenv("TAVRIN_CORPUS_DIR")) return dir;
    return std::string(TAVRIN_DATA_DIR) + "/corpus";
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Document Padded(std::string name, std::string text) {
    text.reserve(text.size() + kReadPadding);
    return {std::move(name), std::move(text)};
}

}  // namespace

std::vector<Document> CorpusDocuments() {
    std::vector<Document> docs;
    for (const char* name : {"canada.json", "citm_catalog.json", "twitter.json"})
        docs.push_back(Padded(name, ReadFile(CorpusDir() + "/" + name)));
    return docs;
}

std::vector<Document> GeneratedDocuments() {
    std::vector<Document> docs;
    docs.push_back(Padded("integers", IntArray(100000)));
    docs.push_back(Padded("records", RecordArray(5000)));
    docs.push_back(Padded("rings", RingArray(2000)));
    return docs;
}

std::vector<Document> AllDocuments() {
    std::vector<Document> docs = CorpusDocuments();
    for (Document& doc : GeneratedDocuments()) docs.push_back(std::move(doc));
    return docs;
}

}  // namespace tavrin::bench
