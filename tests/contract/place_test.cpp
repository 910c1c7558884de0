// Where errors are found.

#include "contract.h"

#include <cstring>

namespace contract {
namespace {

struct Spot {
  uint32_t line;
  uint32_t column;
  size_t offset;
};

Spot spotOf(std::string_view document, size_t offset) {
  Spot spot = {1, 1, offset};
  for (size_t i = 0; i < offset; ++i) {
    if (document[i] == '\n') {
      ++spot.line;
      spot.column = 1;
    } else {
      ++spot.column;
    }
  }
  return spot;
}

void expectPlace(RuntimeContext *ctx, uint32_t index, const Spot &spot, std::string_view path) {
  const RtxError *error = rtxErrAt(ctx, index);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->line, spot.line);
  EXPECT_EQ(error->column, spot.column);
  EXPECT_EQ(error->offset, spot.offset);
  EXPECT_EQ(error->elementPath, path);
}

constexpr std::string_view placed = "<?xml version='1.0'?>\n"
                                    "<root>\n"
                                    "  <first x='1'\n"
                                    "         bad='2' />\n"
                                    "  <second>\n"
                                    "\t<inner  wrong=\"3\">some text</inner>\n"
                                    "    <entity>&lt;rest</entity>\r\n"
                                    "    <mixed>a<x/>b</mixed>\n"
                                    "  </second><third/>\n"
                                    "</root>\n";

TEST(Place, OfAnElementIsItsOpeningBracket) {
  for (const auto &[name, path] : {std::pair("root", "/root"), std::pair("first", "/root/first"),
                                   std::pair("second", "/root/second"), std::pair("inner", "/root/second/inner"),
                                   std::pair("x", "/root/second/mixed/x"), std::pair("third", "/root/third")}) {
    Context ctx;
    EXPECT_EQ(insideElement(ctx, placed, name, [&](const char *const *) { return rtxErrSetNewData(ctx, -41, "s", 1); }),
              0);
    const size_t offset = placed.find(std::string("<") + name);
    expectPlace(ctx, 0, spotOf(placed, offset), path);
    EXPECT_FALSE(rtxErrAt(ctx, 0)->transcoded);
  }
}

TEST(Place, OfAnElementIsTheSameForInputInPlace) {
  Context ctx;
  const std::string text(placed);
  ASSERT_EQ(rtxSetInputZ(ctx, text.c_str(), text.size()), 0);
  Recorder recorder;
  recorder.onStart = [&](const char *local, const char *, const char *const *) {
    return std::strcmp(local, "inner") == 0 ? rtxErrSetNewData(ctx, -41, "s", 1) : 0;
  };
  EXPECT_EQ(readInput(ctx, recorder), 0);
  expectPlace(ctx, 0, spotOf(placed, placed.find("<inner")), "/root/second/inner");
}

TEST(Place, OfAnAttributeIsItsName) {
  const struct {
    const char *element;
    const char *attribute;
    const char *path;
  } rows[] = {{"first", "bad", "/root/first"}, {"first", "x", "/root/first"}, {"inner", "wrong", "/root/second/inner"}};
  for (const auto &row : rows) {
    Context ctx;
    EXPECT_EQ(insideElement(ctx, placed, row.element,
                            [&](const char *const *attributes) {
                              for (; *attributes != nullptr; attributes += 2) {
                                EXPECT_EQ(rtxInitContextBuffer(ctx, attributes[1], std::strlen(attributes[1])), 0);
                                if (std::strcmp(attributes[0], row.attribute) != 0) continue;
                                rtxErrAddStrParm(ctx, "type");
                                rtxErrAddStrParm(ctx, attributes[0]);
                                rtxErrSetNewData(ctx, STATUS_INVALID_ATTRIBUTE, "s", 1);
                              }
                              return 0;
                            }),
              0);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    expectPlace(
        ctx, 0,
        spotOf(placed, placed.find(std::string(row.attribute) + "=", placed.find(std::string("<") + row.element))),
        row.path);
  }
}

TEST(Place, OfAnUnexpectedAttributeIsItsName) {
  Context ctx;
  EXPECT_EQ(
      insideElement(ctx, placed, "first",
                    [&](const char *const *attributes) { return rtSaxReportUnexpAttrs(ctx, attributes, "first"), 0; }),
      0);
  ASSERT_EQ(statuses(ctx), "-33 -33");
  expectPlace(ctx, 0, spotOf(placed, placed.find("x='1'")), "/root/first");
  expectPlace(ctx, 1, spotOf(placed, placed.find("bad=")), "/root/first");
}

TEST(Place, OfARefusedElementIsItsOpeningBracketEvenAfterAttributes) {
  Context ctx;
  EXPECT_EQ(insideElement(ctx, placed, "inner",
                          [&](const char *const *) {
                            uint8_t state = 0;
                            rtSaxLookupElemID8(ctx, &state, 0, "inner", "inner", -1, nullptr, nullptr, 0, 0);
                            return 0;
                          }),
            0);
  ASSERT_EQ(statuses(ctx), "-41");
  expectPlace(ctx, 0, spotOf(placed, placed.find("<inner")), "/root/second/inner");
}

// Reads a document, collects text as handlers do, and records an error at the end tag of the element called name.
void failText(Context &ctx, std::string_view document, std::string_view name) {
  Recorder recorder;
  recorder.onStart = [&](const char *, const char *, const char *const *) {
    return rtxMemBufReset(&ctx->reader->text), 0;
  };
  recorder.onText = [&](const char *bytes, size_t length) {
    return rtxMemBufAppend(&ctx->reader->text, bytes, length);
  };
  recorder.onEnd = [&](const char *local, const char *) {
    if (name != local) return 0;
    RtxMemBuf &text = ctx->reader->text;
    rtxInitContextBuffer(ctx, text.data + text.start, text.used - text.start);
    rtxMemBufReset(&text);
    rtxErrAddCtxtBufParm(ctx);
    return rtxErrSetNewData(ctx, STATUS_INVALID_CONTENT, "s", 1);
  };
  EXPECT_EQ(read(ctx, document, recorder), 0);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Place, OfATextIsItsFirstByte) {
  Context plain;
  failText(plain, placed, "inner");
  expectPlace(plain, 0, spotOf(placed, placed.find("some text")), "/root/second/inner");
  Context entity;
  failText(entity, placed, "entity");
  expectPlace(entity, 0, spotOf(placed, placed.find("&lt;rest")), "/root/second/entity");
  Context behind;
  constexpr std::string_view second = "<r>\n <a>first&amp;second &#65; third</a></r>";
  failText(behind, second, "a");
  expectPlace(behind, 0, spotOf(second, second.find("first")), "/r/a");
}

TEST(Place, OfACdataSectionIsWhereItOrItsTextBegins) {
  constexpr std::string_view document = "<r>\n <a><![CDATA[text]]></a></r>";
  Context ctx;
  failText(ctx, document, "a");
  const size_t offset = rtxErrAt(ctx, 0)->offset;
  EXPECT_TRUE(offset == document.find("<![CDATA[") || offset == document.find("text")) << offset;
  expectPlace(ctx, 0, spotOf(document, offset), "/r/a");
}

TEST(Place, InsideACharactersCallbackIsThatText) {
  constexpr std::string_view document = "<r>\n<a>\n  12x4</a></r>";
  Context ctx;
  Recorder recorder;
  recorder.onText = [&](const char *, size_t) {
    if (recorder.log.find("<a>") == std::string::npos || rtxErrCount(ctx) > 0) return 0;
    return rtxErrSetNewData(ctx, STATUS_INVALID_LEXICAL_FORM, "s", 1);
  };
  EXPECT_EQ(read(ctx, document, recorder), 0);
  expectPlace(ctx, 0, spotOf(document, document.find("<a>") + 3), "/r/a");
}

TEST(Place, OfABrokenDocumentIsAtOrBehindTheLastGoodTag) {
  constexpr std::string_view document = "<r>\n <a/>\n <b></c>\n</r>";
  Context ctx;
  Recorder recorder;
  EXPECT_EQ(read(ctx, document, recorder), STATUS_PARSE_FAILED);
  const RtxError *error = rtxErrAt(ctx, 0);
  EXPECT_EQ(error->line, 3u);
  EXPECT_GE(error->offset, document.find("<b>"));
  EXPECT_LE(error->offset, document.find("\n</r>"));
  const Spot spot = spotOf(document, error->offset);
  EXPECT_EQ(error->line, spot.line);
  EXPECT_EQ(error->column, spot.column);
  EXPECT_STREQ(error->elementPath, "/r/b");
}

TEST(Place, OfADocumentThatEndsEarlyIsWithinIt) {
  for (size_t length = 1; length + 2 < placed.size(); ++length) {
    Context ctx;
    Recorder recorder;
    const std::string_view part = placed.substr(0, length);
    ASSERT_EQ(read(ctx, part, recorder), STATUS_PARSE_FAILED) << length;
    const RtxError *error = rtxErrAt(ctx, 0);
    EXPECT_LE(error->offset, length);
    EXPECT_GE(error->line, 1u);
    EXPECT_LE(error->line, spotOf(part, length).line) << length;
  }
}

TEST(Place, OfAColonThatDoesNotBelongIsItsName) {
  constexpr std::string_view elementName = "<r>\n  <a:b:c/></r>";
  Context ctx;
  Recorder recorder;
  EXPECT_EQ(read(ctx, elementName, recorder), STATUS_PARSE_FAILED);
  EXPECT_EQ(rtxErrAt(ctx, 0)->line, 2u);
  EXPECT_EQ(rtxErrAt(ctx, 0)->offset, elementName.find("<a:b:c"));
}

TEST(Place, OutsideAParseIsNone) {
  Context ctx;
  Recorder recorder;
  EXPECT_EQ(read(ctx, placed, recorder), 0);
  rtxErrSetNewData(ctx, -16, "s", 1);
  expectPlace(ctx, 0, {0, 0, 0}, "");
}

TEST(Place, CountsTheByteOrderMark) {
  Context ctx;
  EXPECT_EQ(insideElement(ctx, "\xEF\xBB\xBF<r>\n<a/></r>", "a",
                          [&](const char *const *) { return rtxErrSetNewData(ctx, -41, "s", 1); }),
            0);
  expectPlace(ctx, 0, {2, 1, 7}, "/r/a");
  EXPECT_FALSE(rtxErrAt(ctx, 0)->transcoded);
}

TEST(Place, CountsBytesOfTheUtf8FormOfTranscodedInput) {
  Context ctx;
  constexpr std::string_view document = "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9<a/></r>";
  EXPECT_EQ(insideElement(ctx, document, "a", [&](const char *const *) { return rtxErrSetNewData(ctx, -41, "s", 1); }),
            0);
  const auto offset = static_cast<uint32_t>(document.find("<a/>") + 1);
  expectPlace(ctx, 0, {1, offset + 1, offset}, "/r/a");
  EXPECT_TRUE(rtxErrAt(ctx, 0)->transcoded);

  Context wide;
  EXPECT_EQ(insideElement(wide, utf16("<r>\n  <a/></r>", false), "a",
                          [&](const char *const *) { return rtxErrSetNewData(wide, -41, "s", 1); }),
            0);
  EXPECT_EQ(rtxErrAt(wide, 0)->line, 2u);
  EXPECT_EQ(rtxErrAt(wide, 0)->column, 3u);
  EXPECT_TRUE(rtxErrAt(wide, 0)->transcoded);
}

TEST(Place, CountsColumnsInBytes) {
  Context ctx;
  constexpr std::string_view document = "<r>\xE2\x82\xAC\xC3\xA9<a/></r>";
  EXPECT_EQ(insideElement(ctx, document, "a", [&](const char *const *) { return rtxErrSetNewData(ctx, -41, "s", 1); }),
            0);
  expectPlace(ctx, 0, {1, 9, 8}, "/r/a");
}

TEST(Place, InsideASkippedElementBelongsToTheBrokenDocument) {
  constexpr std::string_view document = "<r>\n<bad>\n<x></y></bad></r>";
  Context ctx;
  Recorder recorder;
  recorder.onStart = [](const char *local, const char *, const char *const *) { return *local == 'b' ? -41 : 0; };
  EXPECT_EQ(read(ctx, document, recorder), STATUS_PARSE_FAILED);
  EXPECT_EQ(rtxErrAt(ctx, 0)->line, 3u);
  EXPECT_STREQ(rtxErrAt(ctx, 0)->elementPath, "/r/bad/x");
}

} // namespace
} // namespace contract
