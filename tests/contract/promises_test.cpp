// What the codec counts on between two calls of a runtime.
#include "context.h"
#include "rtx.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

using support::Context;

namespace {

std::string output(RuntimeContext *ctx) {
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  return text ? std::string(text, length) : "none";
}

// The encoder of an enumeration tries an attribute at once and then in steps, and a root goes on without an attribute.
TEST(FailedPrimitive, LeavesTheOutputAndTheOpenTagAsTheyWere) {
  Context ctx;
  const RtxXmlString bad = {false, "text that is good at first \x01"};
  const RtxXmlString section = {true, bad.value};
  RtxNamePair pairs[] = {{"good", "v"}, {"bad", bad.value}};
  RtxListNode nodes[] = {{&pairs[0], &nodes[1], nullptr}, {&pairs[1], nullptr, &nodes[0]}};
  const RtxAttrList attributes = {{2, &nodes[0], &nodes[1]}};
  const std::function<int()> primitives[] = {
      [&] { return rtXmlEncString(ctx, &bad, nullptr, nullptr); },
      [&] { return rtXmlEncString(ctx, &bad, "child", nullptr); },
      [&] { return rtXmlEncString(ctx, &section, "child", nullptr); },
      [&] { return rtXmlEncUTF8Str(ctx, bad.value, "child", nullptr); },
      [&] { return rtXmlEncUTF8Attr2(ctx, "bad", 3, bad.value, std::string_view(bad.value).size()); },
      [&] { return rtXmlEncAnyAttr(ctx, &attributes); },
  };
  for (const auto &primitive : primitives) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
    EXPECT_EQ(primitive(), STATUS_INVALID_UTF8);
    EXPECT_EQ(output(ctx), "<e");
    EXPECT_EQ(rtXmlEncBoolAttr(ctx, true, "k", 1), 0);
    EXPECT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
    EXPECT_EQ(output(ctx), "<e k=\"true\"/>");
  }
}

// A document that is read, by a handler with a hook for each of its callbacks.
struct Reading {
  RtSaxHandler handler = {};
  std::function<void(const char *name, const char *const *attributes)> onStart;

  int read(RuntimeContext *ctx, const char *document) {
    rtxSetInputZ(ctx, document, std::string_view(document).size());
    RtSaxReader *reader = rtSaxCCreateXmlReader(
        ctx, this,
        [](void *self, const char *name, const char *, const char *const *attributes) {
          static_cast<Reading *>(self)->onStart(name, attributes);
          return 0;
        },
        [](void *, const char *, const char *) { return 0; }, [](void *, const char *, size_t) { return 0; });
    if (!reader) return STATUS_READER_FAILED;
    const int status = rtSaxCParse(reader);
    rtSaxCReleaseReader(reader);
    return status;
  }
};

// What a body's names mean does not depend on what its reader's host writes.
TEST(DocumentThatIsRead, DoesNotSeeWhatTheHostHasDeclared) {
  Context ctx;
  const char *const table[] = {"urn:host"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 1), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:host", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:host", false), 0);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "p", "urn:host", nullptr, 0), 0);
  Reading reading;
  size_t elements = 0;
  reading.onStart = [&](const char *, const char *const *) {
    ++elements;
    EXPECT_EQ(rtXmlNSGetIndex(ctx, "h"), RTXML_NS_NONE);
    EXPECT_EQ(rtXmlNSGetIndex(ctx, nullptr), RTXML_NS_NONE);
    EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE);
  };
  EXPECT_EQ(reading.read(ctx, "<a><h:b/></a>"), 0);
  EXPECT_EQ(elements, 2u);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "h"), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
}

TEST(PlaceOfAnElement, IsItsOwnWhateverWasLookedAtBefore) {
  Context ctx;
  Reading reading;
  reading.onStart = [&](const char *name, const char *const *attributes) {
    if (*name == 'a') rtxInitContextBuffer(ctx, attributes[1], std::string_view(attributes[1]).size());
    if (*name == 'b') rtxErrSetNewData(ctx, STATUS_UNEXPECTED_ELEMENT, "test", 1);
  };
  EXPECT_EQ(reading.read(ctx, "<r><a k='1'/><b l='2'/></r>"), 0);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_EQ(rtxErrAt(ctx, 0)->offset, 13u);
}

} // namespace
