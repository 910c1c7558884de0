// Checking a rule set without building a record. What decoder and validator agree on is asserted for both in
// decode_test.cpp, by expectReading.
#include "reading.h"

using namespace reading;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

std::string validity(const std::string &from, const std::string &until) {
  return document(
      conditions("<validity><from>" + from + "</from><until>" + until + "</until></validity><sphere value='s'/>"));
}

TEST(Validate, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
    EXPECT_EQ(errorList(ctx), "");
  });
  everySpelling(
      realLifeBody(), namespaceUri,
      [](RuntimeContext *ctx, const SpelledDocument &) {
        // Foreign elements with attributes of their own stand in conditions here only inside others.
        EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
        EXPECT_EQ(errorList(ctx), "");
      },
      false);
}

TEST(Validate, EveryPrefixFails) {
  for (support::Spelling spelling : support::allSpellings)
    support::everyPrefix(support::spell(fullBody, namespaceUri, spelling).text, QxXmlV_cp_ruleset);
  support::everyPrefix(
      document("<rulex k='v'/>" + rule("<bogus/><transformations/>") +
               conditions("<identity/><sphere/><validity><from>x</from></validity><bogus><f:x/></bogus>")),
      QxXmlV_cp_ruleset);
}

TEST(Validate, DatesThatTheDecoderOnlyKeeps) {
  for (const std::string bad :
       {"yesterday", "", "2024", "2024-01-02", "03:04:05Z", "2024-13-01T00:00:00Z", "2023-02-29T00:00:00Z",
        "2024-01-02T25:00:00Z", "2024-01-02 03:04:05Z", "2024-01-02T03:04:05+15:00", "2024-01-02T03:04:05Zulu"}) {
    const std::string good = "2024-01-02T03:04:05Z";
    EXPECT_EQ(decode(validity(bad, good)).status, 0);
    EXPECT_EQ(decode(validity(bad, bad)).record, "rule(r conditions[validity(" + bad + "," + bad + ") sphere(s)])");
    EXPECT_EQ(validate(validity(bad, good)).errors, "-44(" + bad + ",cp_validityType,from)@Vldt");
    EXPECT_EQ(validate(validity(good, bad)).errors, "-44(" + bad + ",cp_validityType,until)@Vldt");
    const Reading both = validate(validity(bad, bad));
    EXPECT_EQ(both.status, STATUS_INVALID_CONTENT);
    EXPECT_EQ(both.errors, "-44(" + bad + ",cp_validityType,from)@Vldt; -44(" + bad + ",cp_validityType,until)@Vldt");
  }
  for (const char *good :
       {"2024-01-02T03:04:05Z", "2024-02-29T23:59:59.999+14:00", "2024-01-02T03:04:05", "2024-01-02T24:00:00-05:30",
        " \n2024-01-02T03:04:05Z\t", "12024-01-02T03:04:05Z", "20<!--c-->24-01<![CDATA[-02T]]>03:04:05&#x5A;"})
    EXPECT_EQ(validate(validity(good, good)).errors, "") << good;
}

TEST(Validate, DatesAreNamedAsTheyAreSpelled) {
  everySpelling(
      "<q:ruleset><q:rule id='r'><q:conditions><q:validity><q:from>x</q:from><q:until>y</q:until></q:validity>"
      "</q:conditions></q:rule></q:ruleset>",
      namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
        EXPECT_EQ(QxXmlV_cp_ruleset(ctx), STATUS_INVALID_CONTENT);
        EXPECT_EQ(errorList(ctx), "-44(x,cp_validityType," + document.qualified("from") +
                                      ")@Vldt; -44(y,cp_validityType," + document.qualified("until") + ")@Vldt");
      });
}

TEST(Validate, TextOfADateKnowsItsPlace) {
  const std::string text =
      document("\n" + conditions("<validity>\n <from>2024-01-02T03:04:05Z</from>\n <until>later</until></validity>"));
  Context ctx;
  ASSERT_EQ(validate(ctx, text).status, STATUS_INVALID_CONTENT);
  EXPECT_EQ(support::placeText(*rtxErrAt(ctx, 0)),
            "4:9+" + std::to_string(text.find("later")) + " /ruleset/rule/conditions/validity/until");
}

TEST(Validate, IdentitiesAreNotCounted) {
  for (const char *content : {"<identity/>", "<identity> </identity>", "<identity/><identity/>"}) {
    EXPECT_EQ(decode(document(conditions(content))).status, STATUS_CONSTRAINT_VIOLATION);
    EXPECT_EQ(validate(document(conditions(content))).errors, "");
  }
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  const char *const plain = "<f:a xmlns:g='urn:g' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>"
                            "<f:b k='1'/></f:a>";
  const char *const more = "<f:a k='1'/>";
  for (const auto &wrap : {conditions, identity}) {
    EXPECT_EQ(validate(document(wrap(plain))).errors, "");
    EXPECT_EQ(validate(document(wrap(more))).errors, "-33(,k)@runtime/reader<Vldt");
  }
  for (const std::string element : {"actions", "transformations"})
    EXPECT_EQ(validate(document(rule("<" + element + ">" + plain + more + "</" + element + ">"))).errors, "");
}

TEST(Validate, NeedsNoStorageForWhatItReads) {
  const std::string text =
      document("<rule id='" + std::string(3000, 'i') + "'><conditions><sphere value='" + std::string(3000, 's') +
               "'/><f:a>" + std::string(20000, 't') + "</f:a></conditions></rule>");
  const auto peak = [&](auto read) {
    Context ctx;
    EXPECT_EQ(support::setInput(ctx, text), 0);
    support::HeapBalance balance(ctx);
    const size_t before = support::heapStats(ctx).used;
    EXPECT_EQ(read(ctx), 0);
    return support::heapStats(ctx).peakUsed - before;
  };
  EXPECT_GT(peak(decodeStatus), peak(QxXmlV_cp_ruleset) + 6000);
}

TEST(Validate, ReadsOnAfterAnError) {
  Context ctx;
  const Reading reading =
      validate(ctx, "<rules xmlns='"s + namespaceUri +
                        "'><rulex/><rule k='1'><bogus/><conditions><bogus/><identity><bogus/></identity><validity>"
                        "<from>x</from><until/></validity></conditions></rule></rules>");
  EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -3, -33, -103, -41, -41, -41, -44, -44}));
}

TEST(Validate, WithEveryErrorRefusedItReturnsSuccess) {
  Context ctx;
  rtxSetErrorLimit(ctx, 0);
  const Reading reading =
      validate(ctx, "<rules><rulex/><rule k='1'><bogus/><conditions><validity><from>x</from></validity></conditions>"
                    "</rule></rules>");
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

TEST(Validate, StatusOfTheParseComesFirst) {
  Context ctx;
  EXPECT_EQ(validate(ctx, "<rules><rulex/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -3, -104}));
}

TEST(Validate, SameInputCanBeCheckedAndRead) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document(rule(""))), 0);
  EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
  EXPECT_EQ(decodeInput(ctx).record, "rule(r)");
  EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
}

} // namespace
