// A body for each kind of difference, written by hand.
#pragma once

#include "vocabulary.h"

#include <span>
#include <string>

namespace differential {

struct Example {
  std::string_view kind;
  std::string_view vocabulary; // its URI
  std::string_view root;       // whose validator is asked
  std::string body;
};

std::span<const Example> examples();

} // namespace differential
