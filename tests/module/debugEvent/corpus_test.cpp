// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "debugInfo.h"
#include "xmlJudge.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace debugInfo;
using support::Context;

namespace {

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Whether a decoder has nothing to say against an element: judged from the tree, by the rule in words.
bool inOrder(const support::XmlElement &element);

bool childrenInOrder(const support::XmlElement &element, const std::vector<std::string> &names, size_t required) {
  size_t next = 0;
  for (const support::XmlElement &child : element.children) {
    const size_t kind = static_cast<size_t>(std::find(names.begin(), names.end(), child.name) - names.begin());
    if (kind == names.size() || kind < next || (kind > next && next < required) || !inOrder(child)) return false;
    next = kind + 1;
  }
  return true;
}

bool inOrder(const support::XmlElement &element) {
  const auto attributes = [&](std::vector<std::string> names) {
    std::vector<std::string> found;
    for (const auto &[name, value] : element.attributes)
      found.push_back(name);
    std::sort(names.begin(), names.end());
    return found == names;
  };
  const auto all = [&](const char *name) {
    return std::all_of(element.children.begin(), element.children.end(),
                       [&](const support::XmlElement &child) { return child.name == name && inOrder(child); });
  };
  const std::string &name = element.name;
  if (name == "debuginfo") return attributes({"version", "state"}) && all("debugconfig");
  if (name == "debugconfig") return attributes({"aor"}) && all("session");
  if (name == "session")
    return attributes({"id"}) && childrenInOrder(element, {"start-trigger", "stop-trigger", "control"}, 3);
  if (name == "start-trigger")
    return childrenInOrder(element, {"from", "to", "icsi", "iari", "method", "time", "debug-id"}, 0);
  if (name == "stop-trigger") return childrenInOrder(element, {"time", "time-period", "reason"}, 0);
  if (name == "control") return childrenInOrder(element, {"interface", "depth", "debug-id"}, 1);
  if (name == "reason") return element.text == "dialog_established" || element.text == "session_end";
  if (name == "depth") return element.text == "maximum" || element.text == "minimum";
  if (name == "debug-id")
    return element.text.size() % 2 == 0 &&
           element.text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
  return element.attributes.empty();
}

void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const char *corpus = std::getenv("IMSCODEC_CORPUS");
  if (corpus == nullptr || *corpus == '\0') GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(std::filesystem::path(corpus) / "debuginfo"))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  ASSERT_FALSE(files.empty());

  const Document &document = documentOf("debuginfo");
  std::string table;
  for (const std::filesystem::path &file : files) {
    SCOPED_TRACE(file.filename().string());
    const std::string text = contents(file);
    const auto tree = support::parseXml(text);
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    std::string value;
    {
      support::HeapBalance balance(ctx);
      Held held(ctx, document);
      const int status = document.decode(ctx, held);
      held.owned = true;
      expectRecordsWithPlace(ctx, status);
      if (!tree) {
        EXPECT_EQ(status, STATUS_PARSE_FAILED);
      } else if (inOrder(*tree)) {
        EXPECT_EQ(status, 0) << support::errors(ctx);
      }
      value = dump(document, held);
      if (status == 0) {
        EXPECT_EQ(decode(document, encode(ctx, document, held)).value, value) << "written and read again";
      }
    }
    const std::string decoded = brief(ctx);
    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    const int status = document.validate(ctx);
    expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
    table += file.filename().string() + (tree ? "" : " (not well-formed)") + "\n  decoded: " + decoded +
             "\n  validated: " + brief(ctx) + "\n  " + value + "\n";
  }
  std::cout << table;
}

} // namespace
