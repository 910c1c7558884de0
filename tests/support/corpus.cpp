#include "corpus.h"

#include "errors.h"
#include "input.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>

namespace support {

std::filesystem::path folderNamedBy(const char *variable) {
  const char *value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

std::vector<std::filesystem::path> filesIn(const std::filesystem::path &folder, const std::string &beginning) {
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file() && entry.path().filename().string().starts_with(beginning))
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<CorpusBody> corpusBodies(const std::string &kind) {
  std::vector<CorpusBody> bodies;
  for (const std::filesystem::path &file : filesIn(folderNamedBy("IMSCODEC_CORPUS") / kind)) {
    std::string text = contents(file);
    std::optional<XmlElement> tree = parseXml(text);
    bodies.push_back({file.filename().string(), std::move(text), std::move(tree)});
  }
  return bodies;
}

void everyCorpusBody(const std::string &kind,
                     const std::function<std::string(RuntimeContext *ctx, const CorpusBody &body)> &test) {
  if (folderNamedBy("IMSCODEC_CORPUS").empty()) GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const std::vector<CorpusBody> bodies = corpusBodies(kind);
  ASSERT_FALSE(bodies.empty());
  std::string table;
  for (const CorpusBody &body : bodies) {
    SCOPED_TRACE(body.name);
    Context ctx;
    ASSERT_EQ(setInput(ctx, body.text), 0);
    HeapBalance balance(ctx);
    table += body.name + (body.tree ? "" : " (not well-formed)") + ": " + test(ctx, body) + "\n";
  }
  std::cout << table;
}

void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << errorText(*error);
}

std::string statusList(RuntimeContext *ctx) {
  std::string all;
  for (int status : statuses(ctx))
    all += (all.empty() ? "" : " ") + std::to_string(status);
  return all.empty() ? "0" : all;
}

std::string orClean(const std::string &errors) { return errors.empty() ? "clean" : errors; }

} // namespace support
