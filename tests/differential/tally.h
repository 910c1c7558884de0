// Counts differences by their kinds.
#pragma once

#include "kinds.h"

#include <algorithm>
#include <map>
#include <set>

namespace differential {

class Tally {
public:
  // Each complaint about a body that the other side accepts must be of exactly one kind.
  void compare(const std::string &body, const std::vector<SchemaComplaint> &theirs,
               const std::vector<LibraryComplaint> &ours) {
    ++bodies;
    if (theirs.empty() && ours.empty()) ++acceptedByBoth;
    if (ours.empty()) explain(body, theirs, acceptedByLibrary());
    if (theirs.empty()) explain(body, ours, acceptedBySchema());
  }

  std::set<std::string_view> kinds() const {
    std::set<std::string_view> names;
    for (const auto &[name, count] : counts)
      names.insert(name);
    return names;
  }

  size_t bodies = 0;
  size_t acceptedByBoth = 0;
  std::map<std::string_view, size_t> counts;
  std::map<std::string, std::string> unexplained; // the beginning of a complaint, the first such case

private:
  template <class Complaint>
  void explain(const std::string &body, const std::vector<Complaint> &complaints,
               std::span<const Kind<Complaint>> table) {
    for (const Complaint &complaint : complaints) {
      std::string found;
      unsigned matches = 0;
      for (const Kind<Complaint> &kind : table) {
        if (!kind.covers(complaint)) continue;
        ++counts[kind.name];
        ++matches;
        found += " " + std::string(kind.name);
      }
      if (matches != 1)
        unexplained.try_emplace(complaint.message.substr(0, std::min(complaint.message.find(" at "), size_t{60})) +
                                    found,
                                complaint.message + "\nkinds:" + found + "\nbody: " + body);
    }
  }
};

} // namespace differential
