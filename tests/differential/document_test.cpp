// The kinds of difference, the examples of them and the document about them name the same kinds.
#include "examples.h"
#include "kinds.h"

#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>

using namespace differential;

namespace {

template <class Kinds> std::set<std::string> namesOf(const Kinds &kinds) {
  std::set<std::string> names;
  for (const auto &kind : kinds)
    EXPECT_TRUE(names.emplace(kind.name).second) << kind.name << " is listed twice";
  return names;
}

// The first column of the table under each heading of the document.
std::set<std::string> documented(const std::string &heading) {
  static const std::regex row("\\| `([a-z-]+)` \\|.*");
  std::ifstream file(IMSCODEC_SOURCE_DIR "/docs/differences.md");
  EXPECT_TRUE(file);
  std::set<std::string> names;
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("#")) inside = line == "## " + heading;
    std::smatch found;
    if (!inside || !std::regex_match(line, found, row)) continue;
    EXPECT_TRUE(names.insert(found[1]).second) << found[1] << " is listed twice";
  }
  return names;
}

TEST(DifferencesDocument, ListsExactlyTheKinds) {
  EXPECT_EQ(documented("Accepted by the validators alone"), namesOf(acceptedByLibrary()));
  EXPECT_EQ(documented("Accepted by the schemas alone"), namesOf(acceptedBySchema()));
}

TEST(DifferencesDocument, EachKindHasAnExample) {
  std::set<std::string> shown;
  for (const Example &example : examples())
    shown.emplace(example.kind);
  std::set<std::string> listed = namesOf(acceptedByLibrary());
  listed.merge(namesOf(acceptedBySchema()));
  EXPECT_EQ(shown, listed);
}

} // namespace
