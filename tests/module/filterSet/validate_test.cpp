// Checking notification filters without building a record.
#include "cases.h"
#include "commaLocale.h"
#include "filters.h"

using namespace filters;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

class ValidateCase : public testing::TestWithParam<const std::vector<Case> &(*)()> {};
INSTANTIATE_TEST_SUITE_P(Attributes, ValidateCase, testing::Values(attributeCases));
INSTANTIATE_TEST_SUITE_P(Children, ValidateCase, testing::Values(childCases));
INSTANTIATE_TEST_SUITE_P(Bindings, ValidateCase, testing::Values(bindingCases));
INSTANTIATE_TEST_SUITE_P(Texts, ValidateCase, testing::Values(textCases));

TEST_P(ValidateCase, GivesTheErrorsOfTheDecoderButForTheStatedOnes) {
  for (const Case &c : GetParam()()) {
    SCOPED_TRACE(c.document.substr(0, 500));
    const std::string expected = c.validatorErrors ? *c.validatorErrors : support::byValidator(c.errors);
    const Reading reading = validate(c.document);
    EXPECT_EQ(reading.status, statusOf(expected));
    EXPECT_EQ(reading.errors, expected);
  }
}

TEST(Validate, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    EXPECT_EQ(QxXmlV_filter_set(ctx), 0);
    EXPECT_EQ(errorList(ctx), "");
  });
}

TEST(Validate, EveryPrefixFails) {
  support::everyPrefix(support::spell(fullBody, namespaceUri, support::Spelling::onePrefix).text, QxXmlV_filter_set);
  support::everyPrefix(document("<ns-bindings><x/><ns-binding prefix='p' k='1'><y/></ns-binding></ns-bindings>"
                                "<bogus/><filter><what><include type='r'>a<b/>c</include><z/></what></filter>"),
                       QxXmlV_filter_set);
}

TEST(Validate, BindingsMayBeEmpty) {
  const std::string text = document("<ns-bindings/>");
  EXPECT_EQ(decode(text).errors, "-16(NSBindings.count,0)@SAX");
  const Reading reading = validate(text);
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  for (const auto &around : {inFilter, inWhat, inTrigger}) {
    const Reading reading =
        validate(around("<x:f xmlns:x='u'>text<include type='regex' k='1'/><ns-binding/><x:g y='2'>0</x:g></x:f><x:h "
                        "xmlns:x='u'/>"));
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(reading.errors, "");
  }
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  for (const auto &around : {inFilter, inWhat, inTrigger})
    EXPECT_EQ(validate(around("<x:f xmlns:x='u' k='1'/>")).errors, "-33(,k)@runtime/reader<Vldt");
}

TEST(Validate, DecimalDoesNotDependOnTheLocale) {
  const support::CommaLocale locale;
  if (!locale.found) GTEST_SKIP() << "no locale with a decimal comma on this machine";
  EXPECT_EQ(validate(inTrigger("<changed by='2.5'/><changed by='2,5'/>")).errors, "");
}

TEST(Validate, WithoutInputThereIsNoReader) {
  Context ctx;
  EXPECT_EQ(QxXmlV_filter_set(ctx), STATUS_READER_FAILED);
  EXPECT_EQ(errorList(ctx), "-26@Vldt");
  RuntimeContext none{};
  EXPECT_EQ(QxXmlV_filter_set(&none), STATUS_READER_FAILED);
}

TEST(Validate, StatusOfTheParseComesFirst) {
  Context ctx;
  EXPECT_EQ(validate(ctx, "<filters><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -41, -104}));
}

TEST(Validate, EarlierErrorIsReturned) {
  Context ctx;
  EXPECT_EQ(validate(ctx, document("<filter/>")).status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(validate(ctx, document("<filter id='a'/>")).status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Validate, ErrorsBeyondTheLimitAreNotRecorded) {
  for (uint32_t limit : {0u, 1u, 2u}) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading reading = validate(ctx, "<filters><bogus/><ns-bindings><x/></ns-bindings><filter/></filters>");
    EXPECT_EQ(rtxErrCount(ctx), limit);
    EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH);
  }
}

} // namespace
