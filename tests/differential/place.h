// The place in a body that an error points at.
#pragma once

#include <string>
#include <vector>

namespace differential {

struct Place {
  std::vector<std::string> before; // the start tags of the elements before it in the same parent
  size_t attributes;               // of its tag before the place, declarations included
  std::string text;                // directly inside it, still escaped
};

// The innermost element that is open at offset. For bodies as written() writes them.
Place placeAt(const std::string &body, size_t offset);

} // namespace differential
