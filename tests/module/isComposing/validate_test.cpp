// Checking a composing indication without building a record.
#include "composing.h"

using namespace composing;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

TEST(Validate, EverySpelling) {
  everySpelling("<q:isComposing>\n<q:state>active</q:state> <q:lastactive> 2024-01-02T03:04:05Z\n</q:lastactive>"
                "<q:contenttype>text/plain</q:contenttype><q:refresh> 90 </q:refresh>"
                "<x:f xmlns:x=\"urn:x\">t<q:bogus/></x:f></q:isComposing>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
                  EXPECT_EQ(QxXmlV_tns_isComposing(ctx), 0);
                  EXPECT_EQ(support::errors(ctx), "");
                });
}

TEST(Validate, EveryPrefixFails) {
  support::everyPrefix(document("<state k='1'>a</state><lastactive>x</lastactive><refresh>0</refresh>"
                                "<x:f xmlns:x='u'>t<x:g/></x:f>"),
                       QxXmlV_tns_isComposing);
}

TEST(Validate, EachErrorHasItsOwnLine) {
  struct Case {
    std::string document;
    int status;
    const char *errors;
  };
  const Case cases[] = {
      {"<composing><state/></composing>", -3, "-3(isComposing,composing)@QxXmlIsComposingVldt:72"},
      {document("<refresh>5</refresh>"), -41, "-41(refresh)@runtime/reader<QxXmlIsComposingVldt:109"},
      {document("<state>s</state><bogus/>"), -41, "-41(bogus)@runtime/reader<QxXmlIsComposingVldt:109"},
      {document("<state k='v'/>"), -33, "-33(state,k)@runtime/reader<QxXmlIsComposingVldt:123"},
      {document("<state/><refresh>0</refresh>"), -16, "-16(refresh,0u)@QxXmlIsComposingVldt:218"},
      {document("<state/><refresh>abc</refresh>"), -44, "-44(abc,tns__isComposing,refresh)@QxXmlIsComposingVldt:231"},
      {document("<state/><refresh/>"), -44, "-44(,tns__isComposing,refresh)@QxXmlIsComposingVldt:231"},
      {document("<state/><lastactive>yesterday</lastactive>"), -44,
       "-44(yesterday,tns__isComposing,lastactive)@QxXmlIsComposingVldt:231"},
      {document("<state/><lastactive/>"), -44, "-44(,tns__isComposing,lastactive)@QxXmlIsComposingVldt:231"},
      {document("<state/><lastactive>2023-02-29T00:00:00Z</lastactive>"), -44,
       "-44(2023-02-29T00:00:00Z,tns__isComposing,lastactive)@QxXmlIsComposingVldt:231"},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.document);
    const Reading reading = validate(c.document);
    EXPECT_EQ(reading.status, c.status);
    EXPECT_EQ(reading.errors, c.errors);
  }
}

TEST(Validate, ReadsOnAfterAnError) {
  Context ctx;
  const Reading reading = validate(
      ctx,
      "<composing xmlns=\""s + namespaceUri +
          "\"><state k=\"1\">s</state><bogus><x/></bogus><lastactive>l</lastactive><refresh>0</refresh></composing>");
  EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -33, -41, -44, -16}));
}

TEST(Validate, KnowsMoreThanTheDecoderOfLastactiveOnly) {
  for (const char *text : {"yesterday", "", "2024-01-02", "2024-13-01T00:00:00Z"}) {
    const std::string body = document("<state/><lastactive>"s + text + "</lastactive>");
    EXPECT_EQ(decode(body).status, 0);
    EXPECT_EQ(validate(body).status, STATUS_INVALID_CONTENT) << text;
  }
  for (const char *text : {"", "no content type at all", "2024"}) {
    const std::string body = document("<state>"s + text + "</state><contenttype>" + text + "</contenttype>");
    EXPECT_EQ(validate(body).status, 0) << text;
  }
}

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  const Reading reading = validate(document(
      "<state/><x:f xmlns:x='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>text<state/><bogus "
      "k='1'>t</bogus><refresh>abc</refresh><x:g y='2'/></x:f><x:h xmlns:x='u'>0</x:h>"));
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  const Reading reading = validate(document("<state/><x:f xmlns:x='u' k='1'/>"));
  EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
  EXPECT_EQ(reading.errors, "-33(,k)@runtime/reader<QxXmlIsComposingVldt:123");
}

TEST(Validate, AttributesOfTheRootAreNotLookedAt) {
  EXPECT_EQ(validate("<isComposing k='1' xml:lang='en'><state/></isComposing>").status, 0);
}

TEST(Validate, EmptyDocumentIsInOrder) {
  EXPECT_EQ(validate("<isComposing/>").status, 0);
  EXPECT_EQ(validate(document("")).status, 0);
}

TEST(Validate, WithoutInputThereIsNoReader) {
  Context ctx;
  EXPECT_EQ(QxXmlV_tns_isComposing(ctx), STATUS_READER_FAILED);
  EXPECT_EQ(support::errors(ctx), "-26@QxXmlIsComposingVldt:295");
}

TEST(Validate, StatusOfTheParseComesFirst) {
  Context ctx;
  EXPECT_EQ(validate(ctx, "<composing><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -41, -104}));
}

TEST(Validate, EarlierErrorIsReturned) {
  Context ctx;
  EXPECT_EQ(validate(ctx, document("<state/><refresh>0</refresh>")).status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(validate(ctx, document("<state/>")).status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Validate, WithEveryErrorRefusedItReturnsSuccess) {
  Context ctx;
  rtxSetErrorLimit(ctx, 0);
  const Reading reading =
      validate(ctx, "<composing xmlns=\""s + namespaceUri +
                        "\"><state k='1'>s</state><bogus/><lastactive>l</lastactive><refresh>0</refresh></composing>");
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

} // namespace
