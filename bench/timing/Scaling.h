#pragma once

#include <benchmark/benchmark.h>

#include <vector>

#include "support/Documents.h"

namespace tavrin::bench {

// One operation over one document, timed per iteration.
using DocumentLoop = void (*)(benchmark::State&, const Document&);

// Generated documents in five shapes, each at a base size n and at 8n:
// flat integer arrays, flat double arrays, wide objects, deep nesting (within
// the parser's depth bound) and one long string. Named "<shape>/<size>".
const std::vector<Document>& ScalingDocuments();

// Registers `loop` as "scaling/<operation>/<shape>/<size>" over every scaling
// document. A linear operation takes about 8 times as long at 8n.
void RegisterScaling(const char* operation, DocumentLoop loop);

// The scaling of Node::Deserialize, Node::Serialize, json::Deserialize,
// json::Serialize and the conversion.
void RegisterAllScaling();

}  // namespace tavrin::bench
