// Checking push-to-talk settings without building a record: where that differs from reading them. That it agrees
// otherwise is shown beside the tests of reading.
#include "settings.h"

using namespace settings;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

struct Difference {
  std::string document;
  const char *decoderErrors;
  const char *validatorErrors;
};

void expectDifference(const Difference &c) {
  SCOPED_TRACE(c.document);
  EXPECT_EQ(decode(c.document).errors, c.decoderErrors);
  const Reading checked = validate(c.document);
  EXPECT_EQ(checked.errors, c.validatorErrors);
  EXPECT_EQ(checked.status, *c.validatorErrors == '\0' ? 0 : std::stoi(c.validatorErrors));
}

TEST(Validate, EverySpelling) {
  everySpelling("<q:poc-settings r=\"1\">\n<q:entity k=\"2\" id=\"a\"><q:isb-settings k=\"3\">"
                "<q:incoming-session-barring active=\"true\"/><x:f xmlns:x=\"urn:x\">t<q:bogus/></x:f></q:isb-settings>"
                "<q:am-settings><q:answer-mode>manual</q:answer-mode></q:am-settings></q:entity></q:poc-settings>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
                  EXPECT_EQ(QxXmlV_poc_settings(ctx), 0);
                  EXPECT_EQ(support::errors(ctx), "");
                });
}

TEST(Validate, EveryPrefixFails) {
  support::everyPrefix(entityDocument("<isb-settings k='1'><incoming-session-barring k='1' active='x'><b/>t"
                                      "</incoming-session-barring><x:f xmlns:x='u' k='1'>t<y/></x:f></isb-settings>"
                                      "<am-settings><answer-mode>auto</answer-mode></am-settings>"),
                       QxXmlV_poc_settings);
}

// Where a foreign element may stand, and a body around it.
struct Around {
  const char *before;
  const char *after;
};
constexpr Around placesOfForeignElements[] = {
    {"", ""},
    {"<entity id='e'>", "</entity>"},
    {"<entity id='e'><isb-settings><incoming-session-barring active='1'/>", "</isb-settings></entity>"},
    {"<entity id='e'><am-settings><answer-mode>manual</answer-mode>", "</am-settings></entity>"},
    {"<entity id='e'><ipab-settings><incoming-personal-alert-barring active='1'/>", "</ipab-settings></entity>"},
    {"<entity id='e'><sss-settings><simultaneous-sessions-support active='1'/>", "</sss-settings></entity>"},
};

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  for (const Around &around : placesOfForeignElements)
    expectDifference({document(around.before + "<x:f xmlns:x='u' k='1' xml:lang='en' x:l='2'/>"s + around.after), "",
                      "-33(,k)@runtime/reader; -33(,xml:lang)@runtime/reader; -33(,x:l)@runtime/reader<Vldt"});
}

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  for (const Around &around : placesOfForeignElements)
    expectDifference({document(around.before +
                               "<x:f xmlns:x='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>"
                               "text<entity/><x:g y='2'>auto</x:g><answer-mode k='1'>auto</answer-mode>"
                               "<incoming-session-barring active='no'><b/></incoming-session-barring></x:f>"s +
                               around.after),
                      "", ""});
}

TEST(Validate, OfTheAttributesOfAnEntityOnlyTheIdIsLookedFor) {
  for (const char *attributes : {"id='e'", "id=''", "k='v' xml:lang='en' id='e'",
                                 "xmlns:p='u' p:k='v' id='e' xsi:type='t'", "active='no' ID='x' id='e'"})
    expectDifference({document("<entity "s + attributes + "/>"), "", ""});
  for (const char *attributes : {"", "ID='e'", "xmlns:p='u' p:id='e'", "k='v'"})
    expectDifference({document("<entity "s + attributes + "/>"), "-103(entityType,id)@runtime/reader<SAX",
                      "-103(entityType,id)@runtime/reader<Vldt"});
}

TEST(Validate, TakesNoStorageForWhatADecoderKeeps) {
  const std::string value(5000, 'v');
  const std::string text =
      document("<entity id='" + value + "' k='" + value + "'/><x:f xmlns:x='u'>" + value + "</x:f>");
  Context decoding;
  ASSERT_EQ(support::setInput(decoding, text), 0);
  EXPECT_EQ(decodeStatus(decoding), 0);
  Context checking;
  ASSERT_EQ(support::setInput(checking, text), 0);
  support::HeapBalance balance(checking);
  EXPECT_EQ(QxXmlV_poc_settings(checking), 0);
  EXPECT_LT(support::heapStats(checking).peakUsed + 3 * value.size(), support::heapStats(decoding).peakUsed);
}

TEST(Validate, ValuesAreCheckedThoughNobodyKeepsThem) {
  EXPECT_EQ(validate(entityDocument("<sss-settings><simultaneous-sessions-support active='x'/></sss-settings>")).errors,
            "-101@Vldt; -45(sssSettingType_simultaneous_sessions_support,active)@Vldt");
  EXPECT_EQ(validate(entityDocument("<am-settings><answer-mode>auto</answer-mode></am-settings>")).errors,
            "-4(auto)@Vldt; -44(auto,amSettingType,answer-mode)@Vldt");
}

TEST(Validate, WithoutInputThereIsNoReader) {
  Context ctx;
  EXPECT_EQ(QxXmlV_poc_settings(ctx), STATUS_READER_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-26@Vldt");
  RuntimeContext none{};
  EXPECT_EQ(QxXmlV_poc_settings(&none), STATUS_READER_FAILED);
}

TEST(Validate, EarlierErrorIsReturned) {
  Context ctx;
  EXPECT_EQ(validate(ctx, document("<entity/>")).status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(validate(ctx, document("<entity id='e'/>")).status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

} // namespace
