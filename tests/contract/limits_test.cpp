// Every limit that a host may choose, from both sides.

#include "wildcard.h"

#include <algorithm>

namespace contract {
namespace {

std::string repeated(std::string_view piece, size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (size_t i = 0; i < count; ++i)
    text += piece;
  return text;
}

// ---- Documents that measure so and so much of what a limit counts

// Each character of the text is one byte before it is transcoded and two after.
std::string ofBytesOnceTranscoded(size_t measure) {
  const std::string head = "<?xml version='1.0' encoding='ISO-8859-1'?><a>";
  const size_t rest = measure - head.size() - 4;
  return head + std::string(rest / 2, '\xE9') + std::string(rest % 2, 'x') + "</a>";
}

std::string ofDepth(size_t measure) { return repeated("<e>\n", measure) + repeated("</e>", measure); }

std::string ofAttributes(size_t measure) {
  std::string text = "<r>\n<a";
  for (size_t i = 1; i <= measure; ++i)
    text += i % 3 == 0 ? " xmlns:p" + std::to_string(i) + "='u>'" : " k" + std::to_string(i) + "=\"'\"";
  return text + "/></r>";
}

// In elements, attributes and processing instructions.
std::string ofNames(size_t measure) {
  std::string text = "<r>";
  for (size_t i = 3; i <= measure; ++i) {
    const std::string name = "n" + std::to_string(i);
    if (i % 3 == 0)
      text += "\n<" + name + "/>";
    else
      text += i % 3 == 1 ? "<r " + name + "=''/>" : "<?" + name + " ?>";
  }
  return text + "\n<last/></r>";
}

// So long that the parser need not be asked.
std::string ofLongAttributes(size_t measure) {
  std::string text = ofAttributes(measure);
  return text.insert(text.find("<a") + 2, 3000, ' ');
}

std::string ofTagBytes(size_t measure) {
  const std::string_view tag = "<a k='>'/>";
  return "<r>\n<a k='>" + std::string(measure - tag.size(), 'v') + "'/></r>";
}

std::string ofTagBytesBetweenOthers(size_t measure) {
  const std::string_view tag = "<a k=''>";
  return "<r><!--<" + std::string(9000, 'c') + "--><![CDATA[<" + std::string(9000, 's') + "]]><a k='" +
         std::string(measure - tag.size(), 'v') + "'>" + std::string(9000, 't') + "</a></r>";
}

std::string ofText(size_t measure) {
  return "<r>t\n<a>" + std::string(measure / 2, 'x') + "<b>not counted</b>" + std::string(measure - measure / 2, 'y') +
         "</a>t</r>";
}

std::string ofTextThatBeginsWithAReference(size_t measure) {
  return "<r>\n<a>&amp;" + std::string(measure - 1, 'x') + "</a></r>";
}

std::string ofTextThatBeginsWithASection(size_t measure) {
  return "<r>\n<a><![CDATA[<]]>" + std::string(measure - 1, 'x') + "</a></r>";
}

std::string ofTextBeyondAscii(size_t measure) {
  return "<r>\n<a>\xC3\xA9" + std::string(measure - 2, 'x') + "</a></r>";
}

// ---- Where they are refused: the offset of what is too much, in a document of one too many

size_t atStart(std::string_view) { return 0; }
size_t atDeepest(std::string_view document) { return document.rfind("<e>"); }
size_t atLastAttribute(std::string_view document) {
  return std::max(document.rfind(" k") + 1, document.rfind(" xmlns") + 1);
}
size_t atTag(std::string_view document) { return document.find("<a"); }
size_t atLastName(std::string_view document) { return document.find("<last"); }
size_t atText(std::string_view document) { return document.find("<a>") + 3; }
size_t inSection(std::string_view document) { return document.find("[<]") + 1; }

// ---- The table

struct Limit {
  const char *test;
  const char *option;
  void (*choose)(RuntimeOptions &, size_t);
  size_t chosen;    // 0: the default
  size_t effective; // what holds then
  std::string (*document)(size_t measure);
  size_t (*place)(std::string_view document);
  bool transcoded = false;
};

void input(RuntimeOptions &options, size_t value) { options.inputLimit = value; }
void depth(RuntimeOptions &options, size_t value) { options.depthLimit = static_cast<uint32_t>(value); }
void attributes(RuntimeOptions &options, size_t value) { options.attributeLimit = static_cast<uint32_t>(value); }
void names(RuntimeOptions &options, size_t value) { options.nameLimit = static_cast<uint32_t>(value); }
void tag(RuntimeOptions &options, size_t value) { options.tagLimit = value; }
void text(RuntimeOptions &options, size_t value) { options.textLimit = value; }

constexpr size_t mebi = size_t{1} << 20;
constexpr Limit limits[] = {
    {"InputOnceTranscoded", "inputLimit", input, 500, 500, ofBytesOnceTranscoded, atStart, true},
    {"Depth", "depthLimit", depth, 7, 7, ofDepth, atDeepest},
    {"DepthByDefault", "depthLimit", depth, 0, 256, ofDepth, atDeepest},
    {"DepthAboveTheGreatest", "depthLimit", depth, UINT32_MAX, 256, ofDepth, atDeepest},
    {"Attributes", "attributeLimit", attributes, 5, 5, ofAttributes, atLastAttribute},
    {"AttributesOfALongTag", "attributeLimit", attributes, 5, 5, ofLongAttributes, atLastAttribute},
    {"AttributesByDefault", "attributeLimit", attributes, 0, 128, ofAttributes, atLastAttribute},
    {"AttributesAboveTheGreatest", "attributeLimit", attributes, UINT32_MAX, 128, ofAttributes, atLastAttribute},
    {"AttributesOfALongTagAboveTheGreatest", "attributeLimit", attributes, UINT32_MAX, 128, ofLongAttributes,
     atLastAttribute},
    {"Names", "nameLimit", names, 2000, 2000, ofNames, atLastName},
    {"NamesByDefault", "nameLimit", names, 0, 4096, ofNames, atLastName},
    {"Tag", "tagLimit", tag, 5000, 5000, ofTagBytes, atTag},
    {"TagBetweenOtherLongThings", "tagLimit", tag, 5000, 5000, ofTagBytesBetweenOthers, atTag},
    {"TagByDefault", "tagLimit", tag, 0, 4 * mebi, ofTagBytes, atTag},
    {"TagOfTheLeastLimit", "tagLimit", tag, 2048, 2048, ofTagBytes, atTag},
    {"TagBelowTheLeastLimit", "tagLimit", tag, 10, 2048, ofTagBytes, atTag},
    {"TagBelowTheLeastLimitBetweenOtherLongThings", "tagLimit", tag, 10, 2048, ofTagBytesBetweenOthers, atTag},
    {"Text", "textLimit", text, 30, 30, ofText, atText},
    {"TextThatBeginsWithAReference", "textLimit", text, 30, 30, ofTextThatBeginsWithAReference, atText},
    {"TextThatBeginsWithASection", "textLimit", text, 30, 30, ofTextThatBeginsWithASection, inSection},
    {"TextBeyondAscii", "textLimit", text, 30, 30, ofTextBeyondAscii, atText},
};

class Limits : public testing::TestWithParam<Limit> {};
INSTANTIATE_TEST_SUITE_P(Of, Limits, testing::ValuesIn(limits), [](const auto &row) { return row.param.test; });

TEST_P(Limits, AreReachedAndNotPassed) {
  const Limit &limit = GetParam();
  RuntimeOptions options = defaultOptions();
  if (limit.chosen != 0) limit.choose(options, limit.chosen);
  Context ctx(options);
  for (int round = 0; round < 2; ++round) {
    Recorder recorder;
    ASSERT_EQ(read(ctx, limit.document(limit.effective), recorder), 0);
    ASSERT_EQ(rtxErrCount(ctx), 0u);

    const std::string document = limit.document(limit.effective + 1);
    Recorder refused;
    ASSERT_EQ(read(ctx, document, refused), STATUS_LIMIT_EXCEEDED);
    ASSERT_EQ(statuses(ctx), "-107");
    const RtxError &error = *rtxErrAt(ctx, 0);
    ASSERT_EQ(error.paramCount, 2u);
    EXPECT_EQ(error.params[0].kind, RTX_PARAM_TEXT);
    EXPECT_EQ(error.params[1].kind, RTX_PARAM_UINT);
    EXPECT_EQ(params(ctx, 0), limit.option + ("|" + std::to_string(limit.effective)));
    const size_t offset = limit.place(document);
    const std::string_view before = std::string_view(document).substr(0, offset);
    EXPECT_EQ(error.offset, offset);
    EXPECT_EQ(error.line, 1u + static_cast<size_t>(std::count(before.begin(), before.end(), '\n')));
    EXPECT_EQ(error.column, offset - (before.rfind('\n') + 1) + 1);
    EXPECT_EQ(error.transcoded, limit.transcoded);
    rtxErrClear(ctx);
  }
}

// ---- What has no place in a document, or another status

TEST(LimitDefaults, AreTheDocumentedOnes) {
  const RuntimeOptions options = defaultOptions();
  EXPECT_EQ(options.attributeLimit, 128u);
  EXPECT_EQ(options.nameLimit, 4096u);
  EXPECT_EQ(options.tagLimit, 4 * mebi);
  EXPECT_EQ(options.textLimit, 16 * mebi);
}

TEST(LimitDefaults, OfTheInputAreReachedAndNotPassed) {
  Context ctx;
  const std::string spaces(16 * mebi + 1, ' ');
  for (const auto set : {rtxSetInput, rtxSetInputZ}) {
    EXPECT_EQ(set(ctx, spaces.data() + 1, 16 * mebi), 0);
    EXPECT_EQ(set(ctx, spaces.data(), 16 * mebi + 1), STATUS_LIMIT_EXCEEDED);
    EXPECT_EQ(params(ctx, 0), "inputLimit|16777216");
    rtxErrClear(ctx);
  }
  Recorder after;
  EXPECT_EQ(read(ctx, "<a/>", after), 0);
}

TEST(LimitDefaults, OfATextAreReachedAndNotPassed) {
  RuntimeOptions options = defaultOptions();
  options.inputLimit = 17 * mebi;
  Context ctx(options);
  size_t length = 0;
  Recorder recorder;
  recorder.onText = [&](const char *, size_t count) {
    length += count;
    recorder.log.clear();
    return 0;
  };
  EXPECT_EQ(read(ctx, ofText(16 * mebi), recorder), 0);
  EXPECT_GE(length, 16 * mebi);
  EXPECT_EQ(read(ctx, ofText(16 * mebi + 1), recorder), STATUS_LIMIT_EXCEEDED);
  EXPECT_EQ(params(ctx, 0), "textLimit|16777216");
}

TEST(LimitDefaults, OfTheHeapAreReachedAndNotPassed) {
  Context ctx;
  void *all = rtxMemHeapAlloc(ctx, 32 * mebi);
  EXPECT_NE(all, nullptr);
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 1), nullptr);
  rtxMemHeapFreePtr(ctx, all);
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 32 * mebi + 1), nullptr);
}

TEST(LimitDefaults, OfErrorsAreReachedAndNotPassed) {
  Context ctx;
  uint32_t allowed = 0;
  EXPECT_EQ(insideElement(ctx, "<r/>", "r",
                          [&](const char *const *) {
                            for (int i = 0; i < 300; ++i)
                              allowed += rtSaxIncErrors(ctx) != 0 ? 1 : 0;
                            return 0;
                          }),
            0);
  EXPECT_EQ(allowed, 100u);
  for (int i = 0; i < 300; ++i)
    rtxErrSetNewData(ctx, -16, "s", i);
  EXPECT_NE(rtxErrAt(ctx, 100), nullptr);
  EXPECT_EQ(rtxErrAt(ctx, 100)->sites[0].line, 299);
  EXPECT_EQ(rtxErrAt(ctx, 101), nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 300u);
}

// A limit of 0 is a limit like any other.
TEST(LimitsOfNothing, RefuseTheFirst) {
  const struct {
    void (*choose)(RuntimeOptions &, size_t);
    const char *good; // null: there is none
    const char *bad;
    const char *params;
  } rows[] = {{depth, nullptr, "<a/>", "depthLimit|0"},
              {attributes, "<a/>", "<a k=''/>", "attributeLimit|0"},
              {names, nullptr, "<a/>", "nameLimit|0"},
              {text, "<a><b/></a>", "<a>t</a>", "textLimit|0"}};
  for (const auto &row : rows) {
    SCOPED_TRACE(row.params);
    RuntimeOptions options = defaultOptions();
    row.choose(options, 0);
    Context ctx(options);
    Recorder recorder;
    if (row.good != nullptr) {
      EXPECT_EQ(read(ctx, row.good, recorder), 0);
    }
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    EXPECT_EQ(read(ctx, row.bad, recorder), STATUS_LIMIT_EXCEEDED);
    EXPECT_EQ(params(ctx, 0), row.params);
  }
}

// The runtime's own records that lack storage have a place: the element that could not be kept.
TEST(HeapLimit, TellsWhereInTheDocumentItWasReached) {
  const std::string document = "<r>\n<a/>\n <b>" + std::string(5000, 'x') + "</b></r>";
  const auto readWithin = [&](size_t heapLimit, const auto &judge) {
    RuntimeOptions options = defaultOptions();
    options.heapLimit = heapLimit;
    Context ctx(options);
    {
      WildcardHost host(ctx);
      const int status = read(ctx, document, host);
      judge(ctx, status);
    }
    rtxContextReset(ctx);
    WildcardHost after(ctx);
    EXPECT_EQ(read(ctx, "<r><a/></r>", after), 0);
    EXPECT_EQ(after.entries.size(), 1u);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  };

  size_t needed = 0;
  readWithin(mebi, [&](RuntimeContext *ctx, int status) {
    EXPECT_EQ(status, 0);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    needed = stats(ctx).peakUsed;
  });
  readWithin(needed, [](RuntimeContext *ctx, int status) {
    EXPECT_EQ(status, 0);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  });
  readWithin(needed - 1, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(statuses(ctx), "-10");
    const RtxError &error = *rtxErrAt(ctx, 0);
    EXPECT_EQ(error.line, 3u);
    EXPECT_EQ(error.column, 2u);
    EXPECT_EQ(error.offset, 10u);
    EXPECT_STREQ(error.elementPath, "/r/b");
  });
}

} // namespace
} // namespace contract
