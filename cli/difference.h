// What differs between two documents of one kind.
#pragma once

#include "json.h"

#include <string>
#include <vector>

namespace cli {

struct Difference {
  std::string path; // of schema names, such as dialog[id="a"].state.code; the root's name for a simple document
  Json before;      // null: absent
  Json after;
};

// Compares two values of a kind member by member. Items of a list are matched by their id where their type requires
// one, else by their position, which counts from 0. Declarations of namespaces do not count.
std::vector<Difference> differences(const ims::DocumentSchema &kind, const void *before, const void *after);

} // namespace cli
