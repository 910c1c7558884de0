// Documents inside SIP messages.
#pragma once

#include "source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

// What was found in a file.
struct Findings {
  std::vector<Source> documents;
  std::vector<std::string> refusals; // "NAME: reason", each for something that cannot be used
};

// The documents of a file: the file itself if it begins like XML or is empty, else the bodies of known types in the
// SIP message, or the header fields and body of one, that it is or holds. A message of more than limit bytes is
// refused; what is too long for a document the codec tells. Finds or refuses something in any case.
Findings findDocuments(Source file, std::size_t limit);

} // namespace cli
