// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "files.h"
#include "filters.h"

#include <cstdlib>
#include <iostream>

using namespace filters;
using support::Context;

namespace {

void expectPlaces(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const char *corpus = std::getenv("IMSCODEC_CORPUS");
  if (corpus == nullptr || *corpus == '\0') GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const auto files = filesIn(std::filesystem::path(corpus) / "simple-filter", "");
  ASSERT_FALSE(files.empty());
  std::string table;
  for (const std::filesystem::path &file : files) {
    SCOPED_TRACE(file.filename().string());
    const std::string text = contents(file);
    const auto tree = support::parseXml(text);
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    support::HeapBalance balance(ctx);
    Record<FilterSetType> record(ctx, Start::raw);
    const int status = QxXmlD_filter_set(ctx, record);
    record.owned = true;
    expectPlaces(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
    const std::string decoded = errorList(ctx);
    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    const int checked = QxXmlV_filter_set(ctx);
    expectPlaces(ctx, checked);
    const std::string validated = errorList(ctx);
    rtxErrClear(ctx);
    if (status == 0) {
      const std::string written = encodeRecord(ctx, record);
      const auto again = support::parseNamespacedXml(written);
      ASSERT_TRUE(again) << written;
      EXPECT_EQ(meaning(*again), meaning(*tree));
      EXPECT_EQ(decode(ctx, written).record, dump(*record));
    }
    table += file.filename().string() + (tree ? "" : " (not well-formed)") + ": decoded " +
             (decoded.empty() ? "clean" : decoded) + ", validated " + (validated.empty() ? "clean" : validated) + "\n" +
             printed<FilterSetType>("  set", record);
  }
  std::cout << table;
}

} // namespace
