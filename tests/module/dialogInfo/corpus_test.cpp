// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "output.h"
#include "reading.h"
#include "xmlJudge.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace reading;
using support::Context;

namespace {

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Whatever is wrong is recorded, and knows its place.
void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

// What is decoded without error is written, and read again as the same record.
void expectSameAgain(RuntimeContext *ctx, const Record &record, const void *data) {
  const std::string text = support::encoded(ctx, [data](RuntimeContext *c) { return info.encode(c, data); });
  Context other;
  const Reading again = decode(other, info, text);
  EXPECT_EQ(again.status, 0) << again.errors << " in " << text;
  EXPECT_EQ(again.record, record.text());
  EXPECT_TRUE(support::parseXml(text));
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const char *corpus = std::getenv("IMSCODEC_CORPUS");
  if (corpus == nullptr || *corpus == '\0') GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const std::filesystem::path folder = std::filesystem::path(corpus) / "dialog-info";
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
    table += file.filename().string() + (tree ? "" : " (not well-formed)") + ": ";
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    {
      support::HeapBalance balance(ctx);
      Record record(ctx, types::info);
      const int status = record.decode(info);
      expectRecordsWithPlace(ctx, status);
      EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
      table += "decoded " + (status == 0 ? "clean" : support::errors(ctx));
      if (status == 0) expectSameAgain(ctx, record, record.data());
      table += "\n  " + record.text() + "\n";
    }
    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    support::HeapBalance balance(ctx);
    const int status = info.validate(ctx);
    expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
    table += "  validated " + (status == 0 ? "clean" : recorded(ctx)) + "\n";
  }
  std::cout << table;
}

} // namespace
