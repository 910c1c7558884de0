// Where checking a document differs from reading it. Where it does not, the tests of reading do both.
#include "debugInfo.h"

using namespace debugInfo;
using support::Context;

namespace {

TEST(Validate, EveryPrefixFails) {
  for (const Document *document : recordDocuments())
    for (support::Spelling spelling : support::allSpellings)
      support::everyPrefix(support::spell(completeBody(*document), namespaceUri, spelling).text, document->validate);
}

TEST(Validate, BuildsNothing) {
  // The decoder keeps every text of this document, the validator none.
  const std::string text =
      element("debugconfig", "aor='" + std::string(3000, 'a') + "'",
              "<session id='" + std::string(3000, 'i') + "'><start-trigger><from>" + std::string(3000, 'f') +
                  "</from><to>" + std::string(3000, 't') + "</to></start-trigger></session>");
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(documentOf("debugconfig").validate(ctx), 0);
  const size_t validating = support::heapStats(ctx).peakUsed;
  EXPECT_EQ(decodeInput(ctx, documentOf("debugconfig")).status, 0);
  EXPECT_GT(support::heapStats(ctx).peakUsed, validating + 9000);
}

TEST(Validate, TimesAreNotConverted) {
  for (const char *time : {"", "yesterday", "2023-02-29T00:00:00Z", "2024-03-01 00:00:00.0"}) {
    const std::string child = "<time>"s + time + "</time>";
    EXPECT_EQ(validate("start-trigger", element("start-trigger", child)).errors, "");
    EXPECT_EQ(validate("stop-trigger", element("stop-trigger", child + "<time-period>x</time-period>")).errors, "");
    EXPECT_EQ(decode("start-trigger", element("start-trigger", child)).errors, "");
  }
}

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  const std::string text =
      element("debuginfo", "version='0' state='full'",
              "<x:f xmlns:x='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>text<bogus k='1'>t"
              "</bogus><debugconfig><session version='x'/></debugconfig><x:g y='2'/></x:f><x:h xmlns:x='u'>0</x:h>");
  EXPECT_EQ(validate("debuginfo", text).errors, "");
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  const std::string text = element("debuginfo", "version='0' state='full'",
                                   "<x:f xmlns:x='u' k='1' x:l='2'><x:g m='3'/></x:f><y xmlns='v' n='4'/>");
  const Reading reading = validate("debuginfo", text);
  EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
  EXPECT_EQ(reading.errors, "-33(,k); -33(,x:l); -33(,n)");
  EXPECT_EQ(decode("debuginfo", text).errors, "");
}

TEST(Validate, ValuesOfIdAndAorDoNotMatterButTheirPresence) {
  const std::string empty = element("debugconfig", "aor=''", "<session id=''/>");
  EXPECT_EQ(validate("debugconfig", empty).errors, "");
  const std::string missing = element("debugconfig", "<session/>");
  EXPECT_EQ(validate("debugconfig", missing).errors, "-103(tns__debugconfig,aor); -103(tns__session,id)");
  EXPECT_EQ(decode("debugconfig", missing).errors, "-103(tns__debugconfig,aor); -103(tns__session,id)");
}

TEST(Validate, ReadsOnAfterAnError) {
  const std::string text =
      "<other xmlns=\""s + namespaceUri +
      "\" version='x' state='y' k='1'><bogus><from/></bogus><debugconfig aor='a'><session><start-trigger><from l='1'/>"
      "<debug-id>4</debug-id></start-trigger><stop-trigger><reason>r</reason></stop-trigger><control><interface/>"
      "<depth>d</depth><debug-id>4x</debug-id></control></session></debugconfig></other>";
  const std::string errors =
      "-3(debuginfo,other); -101; -45(tns__debuginfo,version); -4(y); -45(tns__debuginfo,state); "
      "-33(tns__debuginfo,k); -41(bogus); -103(tns__session,id); -33(from,l); -44(4,tns__start_trigger,debug-id); "
      "-4(r); -44(r,tns__stop_trigger,reason); -4(d); -44(d,tns__control,depth); -101";
  EXPECT_EQ(validate("debuginfo", text).errors, errors);
  EXPECT_EQ(decode("debuginfo", text).errors, errors);
}

TEST(Validate, StatusOfTheParseComesFirst) {
  Context ctx;
  EXPECT_EQ(validate(ctx, documentOf("control"), "<other><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -41, -104}));
}

TEST(Validate, WithEveryErrorRefusedItReturnsSuccess) {
  Context ctx;
  rtxSetErrorLimit(ctx, 0);
  const std::string text =
      element("other", "k='1'", "<bogus/><debugconfig><session><control/></session></debugconfig>");
  const Reading reading = validate(ctx, documentOf("debuginfo"), text);
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

TEST(Validate, DoesNotTouchTheRegistrySlot) {
  Context ctx;
  for (const Document *document : recordDocuments())
    EXPECT_EQ(validate(ctx, *document, spelled(completeBody(*document), "")).status, 0);
  EXPECT_EQ(ctx->globalData, nullptr);
}

} // namespace
