// Each document of the library under failures of every allocation, and with no room at every byte of its output. What
// fails is the host's allocator, the malloc of the codec, and each of the runtime's functions that need storage.
#include "faults.h"

#include "capture.h"
#include "errors.h"
#include "output.h"
#include "rtx.h"
#include "samples.h"
#include "scarceRuntime.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using faults::Sample;
using faults::Value;
using support::Context;
using support::Outcome;

namespace {

int setInput(RuntimeContext *ctx, const Sample &sample) {
  return rtxSetInput(ctx, sample.body.data(), sample.body.size());
}

Outcome noStorage(int status, bool recorded = true) {
  EXPECT_EQ(status, STATUS_NO_MEMORY);
  return {status, {}, recorded};
}

// The status of reading says which step found no storage: the one that makes the reader, before anything else is done,
// or one that converts a child's text.
Outcome failedReading(RuntimeContext *ctx, int status) {
  if (status == STATUS_READER_FAILED)
    EXPECT_EQ(support::statuses(ctx), std::vector<int>{STATUS_READER_FAILED});
  else
    EXPECT_TRUE(status == STATUS_NO_MEMORY || status == STATUS_INVALID_CONTENT) << status;
  return {status, {}};
}

// Without the positions in lists: one that lacks an item counts on without it.
std::set<std::string> printedLines(const std::string &text) {
  static const std::regex position(R"(\[\d+\])");
  std::istringstream stream(text);
  std::set<std::string> lines;
  for (std::string line; std::getline(stream, line);)
    lines.insert(std::regex_replace(line, position, "[]"));
  return lines;
}

// What is printed of a value that was not read to its end is printed of the whole one too, or shows a member as it was
// before it was read. A document of one text has the text that was collected, which may be none.
void expectPartOf(const std::string &part, const std::string &whole) {
  static const std::regex nothingRead(R"(r = (""|)|.* = (<null>|0|false|"full"|"xpath"|"automatic"))");
  const std::set<std::string> known = printedLines(whole);
  for (const std::string &line : printedLines(part))
    EXPECT_TRUE(known.contains(line) || std::regex_match(line, nothingRead)) << line;
}

std::string printed(const Sample &sample, const Value &value) {
  return support::captureStdout([&] { sample.print(value); });
}

Outcome decodeAndPrint(RuntimeContext *ctx, const Sample &sample, const std::string &whole) {
  if (int status = setInput(ctx, sample)) return noStorage(status);
  Value value(ctx, sample);
  const int status = sample.decode(ctx, value);
  const std::string text = printed(sample, value);
  if (status == 0) return {0, text};
  if (status == STATUS_READER_FAILED)
    EXPECT_TRUE(value.isUntouched());
  else
    expectPartOf(text, whole);
  return failedReading(ctx, status);
}

// A document of a simple type has no validator.
Outcome validate(RuntimeContext *ctx, const Sample &sample) {
  if (int status = setInput(ctx, sample)) return noStorage(status);
  const int status = sample.validate(ctx);
  if (status == STATUS_NOT_SUPPORTED) return {status, {}, false};
  return status != 0 ? failedReading(ctx, status) : Outcome{};
}

// Where an encoder itself makes room it says only that there is none.
void expectNoRoom(int status) { EXPECT_TRUE(status == STATUS_NO_MEMORY || status == STATUS_BUFFER_OVERFLOW) << status; }

Outcome decodeAndEncode(RuntimeContext *ctx, const Sample &sample) {
  if (int status = setInput(ctx, sample)) return noStorage(status);
  Value value(ctx, sample);
  if (int status = sample.decode(ctx, value)) return failedReading(ctx, status);
  if (int status = rtxSetOutputDynamic(ctx)) return noStorage(status, false);
  const int status = sample.encode(ctx, value);
  if (status == 0) return {0, support::outputText(ctx)};
  expectNoRoom(status);
  return {status, {}};
}

class EveryDocument : public testing::TestWithParam<size_t> {
protected:
  const Sample &sample = faults::allSamples()[GetParam()];
};

INSTANTIATE_TEST_SUITE_P(Library, EveryDocument, testing::Range(size_t{0}, faults::allSamples().size()),
                         [](const auto &tested) { return std::string(faults::allSamples()[tested.param].name); });

TEST(Documents, AreAllThere) { EXPECT_EQ(faults::allSamples().size(), 27u); }

// What is printed of the whole value.
std::string wholePrint(const Sample &sample) {
  Context ctx;
  EXPECT_EQ(setInput(ctx, sample), 0);
  Value value(ctx, sample);
  EXPECT_EQ(sample.decode(ctx, value), 0) << support::errors(ctx);
  return printed(sample, value);
}

TEST_P(EveryDocument, IsReadAndPrintedUnderEveryFailedAllocation) {
  const std::string whole = wholePrint(sample);
  EXPECT_GT(support::faults([&](RuntimeContext *ctx) { return decodeAndPrint(ctx, sample, whole); }).failed, 3u);
}

TEST_P(EveryDocument, IsValidatedUnderEveryFailedAllocation) {
  EXPECT_GT(support::faults([&](RuntimeContext *ctx) { return validate(ctx, sample); }).failed, 0u);
}

TEST_P(EveryDocument, IsWrittenUnderEveryFailedAllocation) {
  EXPECT_GT(support::faults([&](RuntimeContext *ctx) { return decodeAndEncode(ctx, sample); }).failed, 10u);
}

// The documents together reach every function that is to fail.
TEST(Documents, LetEveryFunctionThatNeedsStorageFail) {
  for (const Sample &sample : faults::allSamples())
    support::faults([&](RuntimeContext *ctx) { return decodeAndEncode(ctx, sample); });
  EXPECT_EQ(support::refusedFunctions(),
            (std::set<std::string_view>{"SAXAnyInit", "rtXmlDecXmlStr", "rtXmlNSPush", "rtXmlNSSetNamespace",
                                        "rtXmlNSSetURITable", "rtxCheckBuffer", "rtxDListAppend", "rtxMemBufAppend",
                                        "rtxMemHeapAlloc", "rtxUTF8Strdup"}));
}

TEST_P(EveryDocument, IsReadAndWrittenWithinEveryHeapLimit) {
  const std::string whole = wholePrint(sample);
  const auto read = support::everyHeapLimit([&](RuntimeContext *ctx) { return decodeAndPrint(ctx, sample, whole); });
  const auto written = support::everyHeapLimit([&](RuntimeContext *ctx) { return decodeAndEncode(ctx, sample); });
  const bool usesHeap = sample.valueSize != sizeof(uint16_t); // a code does not
  EXPECT_EQ(read.failed != 0, usesHeap);
  EXPECT_EQ(written.failed != 0, usesHeap);
}

// Decodes into value, which then can be encoded.
void decode(RuntimeContext *ctx, const Sample &sample, Value &value) {
  ASSERT_EQ(setInput(ctx, sample), 0);
  ASSERT_EQ(sample.decode(ctx, value), 0) << support::errors(ctx);
}

TEST_P(EveryDocument, FitsAFixedOutputOrSaysSo) {
  constexpr char canary = '\x5A';
  constexpr size_t canaries = 64;
  const auto encodeIn = [&](size_t size, std::string &written) {
    Context ctx;
    Value value(ctx, sample);
    decode(ctx, sample, value);
    std::vector<char> buffer(size + canaries, canary);
    EXPECT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    const int status = sample.encode(ctx, value);
    written = support::outputText(ctx);
    EXPECT_EQ(rtxErrGetFirstError(ctx), status);
    EXPECT_TRUE(status != 0 || buffer[written.size()] == '\0');
    const auto behind = buffer.begin() + static_cast<std::ptrdiff_t>(size);
    EXPECT_EQ(std::count(behind, buffer.end(), canary), static_cast<std::ptrdiff_t>(canaries));
    return status;
  };
  std::string whole;
  ASSERT_EQ(encodeIn(5000, whole), 0);
  for (size_t size = 0; size <= whole.size() + 3; ++size) {
    SCOPED_TRACE("output of " + std::to_string(size) + " bytes for a text of " + std::to_string(whole.size()));
    std::string written;
    EXPECT_EQ(encodeIn(size, written), size > whole.size() ? 0 : STATUS_BUFFER_OVERFLOW);
    EXPECT_LE(written.size(), size);
    EXPECT_TRUE(size > whole.size() ? written == whole : whole.starts_with(written)) << written;
    if (HasFailure()) return;
  }
}

// A host's allocator that can be shut; the runtime's functions ask no other.
class Store {
public:
  void configure(RuntimeOptions &options) {
    options.allocate = [](void *self, size_t size) { return static_cast<Store *>(self)->allocate(size); };
    options.release = [](void *, void *block) { std::free(block); };
    options.allocatorUser = this;
  }

  bool shut = false;
  size_t refused = 0;

private:
  void *allocate(size_t size) {
    if (!shut) return std::malloc(size);
    ++refused;
    return nullptr;
  }
};

TEST_P(EveryDocument, SurvivesAnOutputThatGrowsNoFurtherAtEveryByte) {
  Store store;
  Context ctx([&](RuntimeOptions &options) { store.configure(options); });
  Value value(ctx, sample);
  decode(ctx, sample, value);
  const auto encode = [&](RuntimeContext *c) { return sample.encode(c, value); };
  const std::string whole = support::encoded(ctx, encode); // from now on encoding asks for a longer output at most
  const size_t needed = whole.size() + 1;
  for (size_t room = 0; room <= needed; ++room) {
    SCOPED_TRACE("room for " + std::to_string(room) + " bytes of " + std::to_string(needed));
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(rtxCheckBuffer(ctx, needed), 0);
    const size_t before = ctx->buffer.size - room;
    ctx->buffer.byteIndex = before; // as if so much had been written
    store.refused = 0;
    store.shut = true;
    const int status = encode(ctx);
    store.shut = false;
    EXPECT_EQ(store.refused != 0, room < needed);
    const std::string written = support::outputText(ctx).substr(before);
    EXPECT_LE(written.size(), room);
    EXPECT_TRUE(whole.starts_with(written)) << written;
    if (room == needed)
      EXPECT_EQ(status, 0) << support::errors(ctx);
    else
      expectNoRoom(status);
    EXPECT_EQ(rtxErrGetFirstError(ctx) == 0, status == 0);
    rtxErrClear(ctx);
    EXPECT_EQ(support::encoded(ctx, encode), whole);
    if (HasFailure()) return;
  }
}

} // namespace
