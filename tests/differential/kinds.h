// The kinds of difference between the library's validators and the schemas. docs/differences.md says why each is meant.
#pragma once

#include "judges.h"

#include <span>
#include <string_view>

namespace differential {

// A complaint that the other side does not make.
template <class Complaint> struct Kind {
  std::string_view name;
  bool (*covers)(const Complaint &complaint);
};

std::span<const Kind<SchemaComplaint>> acceptedByLibrary();
std::span<const Kind<LibraryComplaint>> acceptedBySchema();

} // namespace differential
