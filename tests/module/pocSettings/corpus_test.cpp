// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "capture.h"
#include "settings.h"
#include "xmlJudge.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace settings;
using support::Context;

namespace {

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

std::string printed(const poc_settingsType &record) {
  return support::captureStdout([&] { QxPrint_poc_settingsType("  r", &record); });
}

std::string orNone(const std::string &errors) { return errors.empty() ? "clean" : errors; }

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const char *corpus = std::getenv("IMSCODEC_CORPUS");
  if (corpus == nullptr || *corpus == '\0') GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const std::filesystem::path folder = std::filesystem::path(corpus) / "poc-settings";
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  ASSERT_FALSE(files.empty());

  std::string table;
  for (const std::filesystem::path &file : files) {
    SCOPED_TRACE(file.filename().string());
    const std::string text = contents(file);
    const bool wellFormed = support::parseXml(text).has_value();
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    support::HeapBalance balance(ctx);
    auto record = Record<poc_settingsType>::uninitialised(ctx);
    const int status = QxXmlD_poc_settings(ctx, record);
    record.owned = true;
    expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !wellFormed);
    const std::string decoded = errorsOf(ctx);
    rtxErrClear(ctx);
    const int checked = QxXmlV_poc_settings(ctx);
    expectRecordsWithPlace(ctx, checked);
    EXPECT_EQ(checked == STATUS_PARSE_FAILED, !wellFormed);
    table += file.filename().string() + ": decoded " + orNone(decoded) + ", validated " + orNone(errorsOf(ctx)) + "\n" +
             printed(*record);
    if (status != 0) continue;

    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, encodeRecord(ctx, record)), 0);
    auto again = Record<poc_settingsType>::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_poc_settings(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(printed(*again), printed(*record));
  }
  std::cout << table;
}

} // namespace
