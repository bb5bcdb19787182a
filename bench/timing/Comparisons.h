#pragma once

#include <vector>

#include "support/Documents.h"

namespace tavrin::bench {

// Parse and serialize of every document on the project's readers and on
// each peer library, grouped by document so that the libraries of one
// document run next to each other. The documents must outlive the run.
void RegisterComparisons(const std::vector<Document>& docs);

}  // namespace tavrin::bench
