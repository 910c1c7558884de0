// The places that error records name, reached through real input and output. Those that only a failing runtime leads to
// are reached in the folder recording.
#include "composing.h"
#include "pinnedLines.h"

#include <algorithm>
#include <set>

using namespace composing;
using support::Context;

namespace {

std::set<std::string> reachedPlaces(RuntimeContext *ctx) {
  std::set<std::string> places;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    for (uint32_t site = 0; site < error->siteCount; ++site)
      places.insert(error->sites[site].path + ":"s + std::to_string(error->sites[site].line));
  return places;
}

// Encodes into every size too small, and collects the errors.
std::set<std::string> overflows(const support::Encode &encode) {
  std::set<std::string> all;
  Context ctx;
  const size_t whole = support::encoded(ctx, encode).size();
  for (size_t size = 0; size <= whole; ++size) {
    rtxErrClear(ctx);
    std::vector<char> buffer(size + 1);
    EXPECT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    EXPECT_EQ(encode(ctx), STATUS_BUFFER_OVERFLOW);
    all.insert(support::errors(ctx));
  }
  return all;
}

std::string trail(std::initializer_list<int> lines) {
  std::string text = "-1";
  for (int line : lines)
    text += (text == "-1" ? "@" : "<") + "QxXmlIsComposingEnc:"s + std::to_string(line);
  return text;
}

void fillRecord(Record &record) { record.lastactive("then").contenttype("text/plain").refresh(90).foreign("<x/>"); }

TEST(PinnedLines, OutputTooSmallForADocument) {
  const std::set<std::string> seen = overflows([](RuntimeContext *ctx) {
    Record record(ctx, "active");
    fillRecord(record);
    return QxXmlE_tns_isComposing(ctx, record);
  });
  // A step of the contents that finds no room may leave some for the check behind it, or none.
  std::set<std::string> possible = {trail({165}), trail({202, 168}), trail({234, 174})};
  for (int line : {86, 95, 105, 117, 123, 128}) {
    possible.insert(trail({line, 171}));
    possible.insert(trail({line}) + "; " + trail({218, 171}));
  }
  possible.insert({trail({196, 168}), trail({199, 168}), trail({232, 174})});
  EXPECT_TRUE(std::includes(possible.begin(), possible.end(), seen.begin(), seen.end()))
      << testing::PrintToString(seen);

  const std::string all = testing::PrintToString(seen);
  for (int line : {165, 168, 171, 174, 196, 199, 86, 95, 105, 117, 123, 232})
    EXPECT_NE(all.find(":" + std::to_string(line)), std::string::npos) << line << " not in " << all;
}

TEST(PinnedLines, OutputTooSmallForAType) {
  const std::set<std::string> seen = overflows([](RuntimeContext *ctx) {
    Record record(ctx, "active");
    fillRecord(record);
    return QxXmlET_tns__isComposing(ctx, record, "typing", nullptr);
  });
  std::set<std::string> possible = {trail({62, 43}), trail({64, 43}), trail({128, 46}), trail({140, 49}),
                                    trail({142, 49})};
  for (int line : {86, 95, 105, 117, 123})
    possible.insert(trail({line, 46}));
  EXPECT_TRUE(std::includes(possible.begin(), possible.end(), seen.begin(), seen.end()))
      << testing::PrintToString(seen);
  const std::string all = testing::PrintToString(seen);
  for (int line : {62, 43, 46, 49, 140, 86, 95, 105, 117, 123})
    EXPECT_NE(all.find(":" + std::to_string(line)), std::string::npos) << line << " not in " << all;
}

struct Case {
  PinnedLine line;
  std::function<void(RuntimeContext *ctx)> provoke;
};

void encodeBad(RuntimeContext *ctx, const char *state, const char *lastactive, const char *contenttype) {
  Record record(ctx, state);
  record.lastactive(lastactive).contenttype(contenttype);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  QxXmlE_tns_isComposing(ctx, record);
}

auto decoding(const char *content) {
  return [content](RuntimeContext *ctx) { decode(ctx, document(content)); };
}

auto validating(const char *content) {
  return [content](RuntimeContext *ctx) { validate(ctx, document(content)); };
}

TEST(PinnedLines, FirstPlaceOfErrorsInInputAndRecord) {
  const std::string longState = document("<state>" + std::string(200000, 'x') + "</state>");
  const Case cases[] = {
      {{"Enc", 83}, [](RuntimeContext *ctx) { encodeBad(ctx, "\xFF", "", ""); }},
      {{"Enc", 91}, [](RuntimeContext *ctx) { encodeBad(ctx, "", "\xFF", ""); }},
      {{"Enc", 101}, [](RuntimeContext *ctx) { encodeBad(ctx, "", "", "\xFF"); }},
      {{"Enc", 86}, [](RuntimeContext *ctx) { encodeBad(ctx, "\x02", "", ""); }},
      {{"Enc", 95}, [](RuntimeContext *ctx) { encodeBad(ctx, "", "\x02", ""); }},
      {{"Enc", 105}, [](RuntimeContext *ctx) { encodeBad(ctx, "", "", "\x02"); }},
      {{"Enc", 113},
       [](RuntimeContext *ctx) {
         Record record(ctx, "s");
         record.refresh(0);
         EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
         QxXmlE_tns_isComposing(ctx, record);
       }},
      {{"Dec", 62},
       [](RuntimeContext *ctx) {
         tns__isComposing record;
         QxXmlD_tns_isComposing(ctx, &record);
       }},
      {{"SAX", 73}, [](RuntimeContext *ctx) { decode(ctx, "<composing/>"); }},
      {{"SAX", 236}, decoding("<state/><refresh>0</refresh>")},
      {{"SAX", 251}, decoding("<state/><refresh>abc</refresh>")},
      {{"SAX", 169}, [&](RuntimeContext *ctx) { decode(ctx, longState); }},
      {{"Vldt", 295}, [](RuntimeContext *ctx) { QxXmlV_tns_isComposing(ctx); }},
      {{"Vldt", 72}, [](RuntimeContext *ctx) { validate(ctx, "<composing/>"); }},
      {{"Vldt", 218}, validating("<state/><refresh>0</refresh>")},
      {{"Vldt", 231}, validating("<state/><refresh>abc</refresh>")},
      {{"Vldt", 231}, validating("<state/><lastactive>abc</lastactive>")},
      {{"Vldt", 159}, [&](RuntimeContext *ctx) { validate(ctx, longState); }},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.line.text());
    Context ctx([](RuntimeOptions &options) { options.heapLimit = 64 * 1024; });
    c.provoke(ctx);
    const RtxError *error = rtxErrAt(ctx, 0);
    ASSERT_NE(error, nullptr);
    ASSERT_GE(error->siteCount, 1u);
    EXPECT_EQ(error->sites[0].path, c.line.file());
    EXPECT_EQ(error->sites[0].line, c.line.line);
    EXPECT_EQ(error->siteTotal, error->siteCount);
  }
}

TEST(PinnedLines, PlacesInATrail) {
  const Case cases[] = {
      {{"SAX", 110}, decoding("<bogus/>")},
      {{"SAX", 133}, decoding("<state k=\"v\"/>")},
      {{"Vldt", 109}, validating("<bogus/>")},
      {{"Vldt", 123}, validating("<state k=\"v\"/>")},
      {{"Enc", 171}, [](RuntimeContext *ctx) { encodeBad(ctx, "\xFF", "", ""); }},
  };
  for (const Case &c : cases) {
    Context ctx;
    c.provoke(ctx);
    EXPECT_EQ(reachedPlaces(ctx).count(c.line.text()), 1u) << c.line.text() << " in " << support::errors(ctx);
    EXPECT_EQ(rtxErrCount(ctx), 1u);
    EXPECT_EQ(rtxErrAt(ctx, 0)->siteCount, 2u);
  }
}

TEST(PinnedLines, AreDistinctInTheirFile) {
  std::set<std::string> all;
  for (const PinnedLine &line : pinnedLines)
    EXPECT_TRUE(all.insert(line.text()).second) << line.text();
}

} // namespace
