// Documents whose root holds only text.

#include "contract.h"

namespace contract {
namespace {

struct Outcome {
  int status = 0;
  std::string text;
  std::string errors;
};

Outcome readSimple(Context &ctx, std::string_view document, const char *rootName) {
  Outcome outcome;
  ExactBytes bytes(document);
  EXPECT_EQ(rtxSetInput(ctx, bytes.data(), bytes.size()), 0);
  SaxTypeHandler handler{};
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &handler, SAXSimpleTypeStartElement, SAXSimpleTypeEndElement, SAXSimpleTypeCharacters);
  EXPECT_NE(reader, nullptr);
  const int prepared = SAXSimpleTypeInit(ctx, &handler, rootName);
  EXPECT_EQ(prepared, 0);
  EXPECT_EQ(handler.startElement, SAXSimpleTypeStartElement);
  EXPECT_EQ(handler.endElement, SAXSimpleTypeEndElement);
  EXPECT_EQ(handler.characters, SAXSimpleTypeCharacters);
  EXPECT_EQ(handler.level, 0);
  outcome.status = rtSaxCParse(reader);
  if (outcome.status == 0) {
    EXPECT_EQ(handler.level, 0);
    outcome.text.assign(ctx->buffer.data == nullptr ? "" : ctx->buffer.data, ctx->buffer.size);
  }
  if (handler.release != nullptr) handler.release(ctx, reinterpret_cast<RtSaxHandler *>(&handler));
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  rtSaxCReleaseReader(reader);
  outcome.errors = statuses(ctx);
  return outcome;
}

TEST(SimpleDocument, GivesItsTextInTheTextBuffer) {
  for (const auto &[document, text] :
       {std::pair("<type>partial</type>"s, "partial"s), std::pair("<type/>"s, ""s), std::pair("<type></type>"s, ""s),
        std::pair("<type> a\n b </type>"s, " a\n b "s), std::pair("<type>a&lt;b<![CDATA[c]]>d</type>"s, "a<bcd"s),
        std::pair("<p:type xmlns:p='u' xsi:nil='false'>x</p:type>"s, "x"s),
        std::pair("<!-- --><type xmlns='u'>a<!-- -->b</type>"s, "ab"s),
        std::pair("<type>" + std::string(100000, 'x') + "</type>", std::string(100000, 'x'))}) {
    Context ctx;
    const Outcome outcome = readSimple(ctx, document, "type");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, text);
    EXPECT_EQ(outcome.errors, "");
  }
}

TEST(SimpleDocument, ConvertsFromThere) {
  Context ctx;
  SaxTypeHandler handler{};
  ASSERT_EQ(rtxSetInput(ctx, "<n> 42 </n>", 11), 0);
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &handler, SAXSimpleTypeStartElement, SAXSimpleTypeEndElement, SAXSimpleTypeCharacters);
  ASSERT_NE(reader, nullptr);
  ASSERT_EQ(SAXSimpleTypeInit(ctx, &handler, "n"), 0);
  ASSERT_EQ(rtSaxCParse(reader), 0);
  uint32_t value = 0;
  EXPECT_EQ(rtXmlDecUInt(ctx, &value), 0);
  EXPECT_EQ(value, 42u);
  rtSaxCReleaseReader(reader);
}

TEST(SimpleDocument, OfAnotherRootIsRecordedAndReadOn) {
  Context ctx;
  const Outcome outcome = readSimple(ctx, "<p:other xmlns:p='u'>text</p:other>", "type");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.text, "text");
  ASSERT_EQ(outcome.errors, "-3");
  EXPECT_EQ(params(ctx, 0), "type|other");
}

TEST(SimpleDocument, TakesAnyRootWithoutAName) {
  Context ctx;
  const Outcome outcome = readSimple(ctx, "<other>text</other>", nullptr);
  EXPECT_EQ(outcome.text, "text");
  EXPECT_EQ(outcome.errors, "");
}

TEST(SimpleDocument, SkipsChildren) {
  Context ctx;
  const Outcome outcome = readSimple(ctx, "<type>par<p:b k='1'>zz<c/></p:b>tial<d/></type>", "type");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.text, "partial");
  ASSERT_EQ(outcome.errors, "-41 -41");
  EXPECT_EQ(params(ctx, 0), "p:b");
  EXPECT_EQ(params(ctx, 1), "d");
}

TEST(SimpleDocument, ReportsAttributes) {
  Context ctx;
  const Outcome outcome = readSimple(ctx, "<type xmlns='u' a='1' xsi:type='t' b='2'>x</type>", "type");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.text, "x");
  ASSERT_EQ(outcome.errors, "-33 -33");
  EXPECT_EQ(params(ctx, 0), "type|a");
  EXPECT_EQ(params(ctx, 1), "type|b");
}

TEST(SimpleDocument, RecordsNoMoreThanTheCounterAllows) {
  Context ctx;
  rtxSetErrorLimit(ctx, 1);
  const Outcome outcome = readSimple(ctx, "<other a='1'>x<b/>y</other>", "type");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.text, "xy");
  EXPECT_EQ(outcome.errors, "-3");
  Context silent;
  rtxSetErrorLimit(silent, 0);
  EXPECT_EQ(readSimple(silent, "<other a='1'>x<b/>y</other>", "type").errors, "");
}

TEST(SimpleDocument, ThatIsBrokenIsRefused) {
  constexpr std::string_view document = "<type>partial</type>";
  for (size_t length = 0; length < document.size(); ++length) {
    Context ctx;
    EXPECT_EQ(readSimple(ctx, document.substr(0, length), "type").status, STATUS_PARSE_FAILED);
  }
}

TEST(SimpleDocument, MayFollowAnother) {
  Context ctx;
  readSimple(ctx, "<type>left ov", "type");
  rtxErrClear(ctx);
  for (int i = 0; i < 3; ++i) {
    const Outcome outcome = readSimple(ctx, "<type>full</type>", "type");
    EXPECT_EQ(outcome.text, "full");
    EXPECT_EQ(outcome.errors, "");
  }
}

TEST(SimpleDocument, WithoutStorageIsNotPassedForAWholeOne) {
  const std::string document = "<type>" + std::string(100000, 'x') + "</type>";
  Context ctx;
  readSimple(ctx, "<type>warm</type>", "type");
  ASSERT_EQ(rtxSetInputZ(ctx, document.c_str(), document.size()), 0);
  SaxTypeHandler handler{};
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &handler, SAXSimpleTypeStartElement, SAXSimpleTypeEndElement, SAXSimpleTypeCharacters);
  ASSERT_NE(reader, nullptr);
  ASSERT_EQ(SAXSimpleTypeInit(ctx, &handler, "type"), 0);
  ctx.allocator.failNext(1, true);
  rtSaxCParse(reader);
  EXPECT_GT(ctx.allocator.refused, 0u);
  ctx.allocator.heal();
  rtSaxCReleaseReader(reader);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_NO_MEMORY);
}

TEST(SimpleHandler, WorksWithoutAReader) {
  Context ctx;
  SaxTypeHandler handler{};
  ASSERT_EQ(SAXSimpleTypeInit(ctx, &handler, "type"), 0);
  EXPECT_EQ(SAXSimpleTypeStartElement(&handler, "type", "type", nullptr), 0);
  EXPECT_EQ(handler.level, 1);
  EXPECT_EQ(SAXSimpleTypeCharacters(&handler, "fu", 2), 0);
  EXPECT_EQ(SAXSimpleTypeCharacters(&handler, "ll", 2), 0);
  EXPECT_EQ(SAXSimpleTypeEndElement(&handler, "type", "type"), 0);
  EXPECT_EQ(handler.level, 0);
  EXPECT_EQ(std::string_view(ctx->buffer.data, ctx->buffer.size), "full");
  EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

} // namespace
} // namespace contract
