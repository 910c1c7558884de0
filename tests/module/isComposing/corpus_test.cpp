// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "capture.h"
#include "composing.h"
#include "xmlJudge.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace composing;
using support::Context;

namespace {

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string list(const std::vector<int> &statuses) {
  std::string all;
  for (int status : statuses)
    all += (all.empty() ? "" : " ") + std::to_string(status);
  return all.empty() ? "0" : all;
}

// Whether a decoder has nothing to say against the body: judged from the tree, by the rule in words.
bool inOrder(const support::XmlElement &root) {
  if (root.name != "isComposing") return false;
  const std::vector<std::string> names = {"state", "lastactive", "contenttype", "refresh"};
  size_t next = 0;
  for (const support::XmlElement &child : root.children) {
    if (child.uri != namespaceUri && !child.uri.empty()) return false;
    const size_t kind = static_cast<size_t>(std::find(names.begin(), names.end(), child.name) - names.begin());
    if (kind == names.size() || kind < next || (next == 0 && kind != 0) || !child.attributes.empty()) return false;
    if (child.name == "refresh" && (child.text.empty() || child.text.size() > 9 || child.text[0] == '0' ||
                                    child.text.find_first_not_of("0123456789") != std::string::npos))
      return false;
    next = kind + 1;
  }
  return true;
}

void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const char *corpus = std::getenv("IMSCODEC_CORPUS");
  if (corpus == nullptr || *corpus == '\0') GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const std::filesystem::path folder = std::filesystem::path(corpus) / "iscomposing";
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  ASSERT_FALSE(files.empty());

  std::string table;
  for (const std::filesystem::path &file : files) {
    SCOPED_TRACE(file.filename().string());
    const std::string text = contents(file);
    const auto tree = support::parseXml(text);
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    std::string printed;
    {
      support::HeapBalance balance(ctx);
      Record record(ctx);
      const int status = QxXmlD_tns_isComposing(ctx, record);
      record.initialised = true;
      expectRecordsWithPlace(ctx, status);
      if (!tree) {
        EXPECT_EQ(status, STATUS_PARSE_FAILED);
      } else if (inOrder(*tree)) {
        EXPECT_EQ(status, 0) << support::errors(ctx);
      }
      printed = support::captureStdout([&] { QxPrint_tns__isComposing("  ", record); });
    }
    const std::string decoded = list(support::statuses(ctx));
    rtxErrClear(ctx);
    const int status = QxXmlV_tns_isComposing(ctx);
    expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
    table += file.filename().string() + (tree ? "" : " (not well-formed)") + ": decoded " + decoded + ", validated " +
             list(support::statuses(ctx)) + "\n" + printed;
  }
  std::cout << table;
}

} // namespace
