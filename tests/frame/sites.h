// Every place in the codec where an error is found or passed on, from the tables.
#pragma once

#include "Schema.h"

#include <string>
#include <vector>

namespace frame {

struct Site {
  std::string where; // type or document, row and step
  std::string path;
  int line;
};

// The types that documents lead to, each once, enumerations likewise.
struct Reachable {
  std::vector<const ims::TypeSchema *> types;
  std::vector<const ims::EnumSchema *> enumerations;
};
Reachable reachable(const std::vector<const ims::DocumentSchema *> &documents);

// All sites of these documents and of everything that they lead to.
std::vector<Site> sites(const std::vector<const ims::DocumentSchema *> &documents);

} // namespace frame
