// Checking a 3GPP IMS body without building a record: where that differs from reading it. That it agrees otherwise is
// shown beside the tests of reading.
#include "body.h"

using namespace body;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

void expectDifference(const std::string &text, const char *decoderErrors, const char *validatorErrors) {
  SCOPED_TRACE(text);
  EXPECT_EQ(decode(text).errors, decoderErrors);
  const Reading checked = validate(text);
  EXPECT_EQ(checked.errors, validatorErrors);
  EXPECT_EQ(checked.status, support::firstStatus(validatorErrors));
}

TEST(Validate, EverySpelling) {
  everySpelling("<q:ims-3gpp version=\"abc\" k=\"1\"><q:alternative-service k=\"2\"><q:type>t</q:type>"
                "<q:reason>r</q:reason><x:f xmlns:x=\"u\">t<q:bogus/></x:f></q:alternative-service></q:ims-3gpp>",
                "urn:any", [](RuntimeContext *ctx, const SpelledDocument &) {
                  EXPECT_EQ(QxXmlV_ims_3gpp(ctx), 0);
                  EXPECT_EQ(support::errors(ctx), "");
                });
}

TEST(Validate, EveryPrefixFails) {
  support::everyPrefix(alternative("<reason/><type k='1'>t</type><reason>r</reason><x k='1'>t<y/></x>"),
                       QxXmlV_ims_3gpp);
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  const std::string foreign = "<x:f xmlns:x='u' k='1' xml:lang='en' x:l='2'/>";
  const char *const errors = "-33(,k)@runtime/reader; -33(,xml:lang)@runtime/reader; -33(,x:l)@runtime/reader<Vldt";
  expectDifference(document("<service-info/>" + foreign), "", errors);
  expectDifference(alternative("<type/><reason/>" + foreign), "", errors);
}

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  const std::string foreign = "<x:f xmlns:x='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>"
                              "text<type k='1'/><x:g y='2'>t</x:g><ims-3gpp/></x:f>";
  expectDifference(document("<service-info/>" + foreign), "", "");
  expectDifference(alternative("<type/><reason/>" + foreign), "", "");
}

// The decoder stores each of them, the validator has no use for storage.
TEST(Validate, TakesNoStorageForTextsAndAttributes) {
  const std::string value(5000, 'v');
  const std::string text = "<ims-3gpp version='1' k='" + value + "'><alternative-service k='" + value + "'><type>" +
                           value + "</type><reason>" + value + "</reason><x:f xmlns:x='u'>" + value +
                           "</x:f></alternative-service></ims-3gpp>";
  Context decoding;
  ASSERT_EQ(support::setInput(decoding, text), 0);
  EXPECT_EQ(decodeStatus(decoding), 0);
  Context checking;
  ASSERT_EQ(support::setInput(checking, text), 0);
  support::HeapBalance balance(checking);
  EXPECT_EQ(QxXmlV_ims_3gpp(checking), 0);
  EXPECT_LT(support::heapStats(checking).peakUsed + 5 * value.size(), support::heapStats(decoding).peakUsed);
}

TEST(Validate, WithoutInputThereIsNoReader) {
  Context ctx;
  EXPECT_EQ(QxXmlV_ims_3gpp(ctx), STATUS_READER_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-26@Vldt");
  RuntimeContext none{};
  EXPECT_EQ(QxXmlV_ims_3gpp(&none), STATUS_READER_FAILED);
}

TEST(Validate, EarlierErrorIsReturned) {
  Context ctx;
  EXPECT_EQ(validate(ctx, "<ims-3gpp/>").status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(validate(ctx, document("")).status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

} // namespace
