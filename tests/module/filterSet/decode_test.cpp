// Reading notification filters into a record.
#include "cases.h"
#include "commaLocale.h"
#include "filters.h"

#include <algorithm>

using namespace filters;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

constexpr std::string_view fullRecord =
    "(package=presence @k=v){bindings{p=urn:p q=urn:q} "
    "filter(id=a uri=sip:a@example.com domain=example.com remove=true enabled=false @k=v)"
    "{what{include(type=namespace @v:k=1 @l=2 xmlns:v=urn:v)[urn:p] include[/p:a] "
    "exclude(type=xpath @v:k=1 @l=2 xmlns:v=urn:v)[/p:a/p:b] any[<x:f xmlns:x=\"urn:x\"/>]} "
    "trigger{changed(from=CLOSED to=OPEN by=2.5 @v:k=1 @l=2 xmlns:v=urn:v)[/p:a/p:c] "
    "added[/p:d] added[/p:e] removed[/p:f] any[<x:g xmlns:x=\"urn:x\">t</x:g>]} any[<x:h xmlns:x=\"urn:x\"/>]} "
    "filter(id=b)}";

std::string without(std::string text, const std::string &part) {
  for (size_t at = 0; (at = text.find(part)) != std::string::npos;)
    text.erase(at, part.size());
  return text;
}

TEST(Decode, FullRecordIsTheOneBuiltByHand) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  EXPECT_EQ(dump(*record), fullRecord);
}

TEST(Decode, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &spelled) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.status, 0);
    std::string record = reading.record;
    if (spelled.spelling == support::Spelling::ownDeclarations) {
      // Expressions keep the declarations of their own element.
      record = without(record, " xmlns="s + namespaceUri);
      record = without(record, "(xmlns="s + namespaceUri + ")");
    }
    EXPECT_EQ(record, fullRecord);
    EXPECT_EQ(reading.errors, "");
  });
}

TEST(Decode, ErrorsNameTheElementAsItIsSpelled) {
  everySpelling("<q:filter-set><q:ns-bindings><q:binding/><q:ns-binding prefix='p' urn='u'><q:filter/></q:ns-binding>"
                "</q:ns-bindings><q:filter id='a'><q:what><q:exclude>x<q:b/></q:exclude><q:include/></q:what>"
                "<q:trigger><q:added k='1'/></q:trigger></q:filter></q:filter-set>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &spelled) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
                  EXPECT_EQ(reading.errors, "-3(ns_binding," + spelled.qualified("binding") + ")@SAX; -41(" +
                                                spelled.qualified("filter") + ")@SAX; -41(" + spelled.qualified("b") +
                                                ")@SAX; -41(" + spelled.qualified("include") +
                                                ")@runtime/reader<SAX; -33(added,k)@runtime/reader<SAX");
                });
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  support::everyPrefix(support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text, decodeStatus);
  support::everyPrefix(support::spell(fullBody, namespaceUri, support::Spelling::mixedPrefixes).text, decodeStatus);
  support::everyPrefix(document("<ns-bindings><x/><ns-binding prefix='p' k='1'><y/></ns-binding></ns-bindings>"
                                "<bogus><x/></bogus><filter><what><include type='r'>a<b/>c</include><z/></what>"
                                "<trigger><added k='1'>t</added></trigger></filter>"),
                       decodeStatus);
}

class DecodeCase : public testing::TestWithParam<const std::vector<Case> &(*)()> {};
INSTANTIATE_TEST_SUITE_P(Attributes, DecodeCase, testing::Values(attributeCases));
INSTANTIATE_TEST_SUITE_P(Children, DecodeCase, testing::Values(childCases));
INSTANTIATE_TEST_SUITE_P(Bindings, DecodeCase, testing::Values(bindingCases));
INSTANTIATE_TEST_SUITE_P(Texts, DecodeCase, testing::Values(textCases));

TEST_P(DecodeCase, GivesItsRecordAndItsErrors) {
  for (const Case &c : GetParam()()) {
    SCOPED_TRACE(c.document.substr(0, 500));
    const Reading reading = decode(c.document);
    EXPECT_EQ(reading.status, statusOf(c.errors));
    EXPECT_EQ(reading.record, c.record);
    EXPECT_EQ(reading.errors, c.errors);
  }
}

// ---- Orders --------------------------------------------------------------------------------------------------------

// The children of a type, in the order in which they may stand; foreign ones last, if it takes them.
struct Grammar {
  const char *name;
  std::string (*around)(const std::string &content);
  std::string (*record)(const std::string &children);
  struct Child {
    const char *name;
    const char *xml;
    const char *record;
    bool once;
  };
  std::vector<Child> children;
  bool takesForeign;
};

constexpr Grammar::Child foreignChild = {"x:f", "<x:f xmlns:x=\"u\"/>", "any[<x:f xmlns:x=\"u\"/>]", false};

const Grammar grammars[] = {
    {"what",
     inWhat,
     whatOf,
     {{"include", "<include>i</include>", "include[i]", false},
      {"exclude", "<exclude>e</exclude>", "exclude[e]", false},
      foreignChild},
     true},
    {"trigger",
     inTrigger,
     triggerOf,
     {{"changed", "<changed>c</changed>", "changed[c]", false},
      {"added", "<added>a</added>", "added[a]", false},
      {"removed", "<removed>r</removed>", "removed[r]", false},
      foreignChild},
     true},
    {"filter",
     inFilter,
     filterOf,
     {{"what", "<what/>", "what", true}, {"trigger", "<trigger/>", "trigger", false}, foreignChild},
     true},
    {"filter-set",
     [](const std::string &content) { return document(content); },
     [](const std::string &children) { return children.empty() ? "" : "{" + children + "}"; },
     {{"ns-bindings", "<ns-bindings><ns-binding prefix=\"p\" urn=\"u\"/></ns-bindings>", "bindings{p=u}", true},
      {"filter", "<filter id=\"i\"/>", "filter(id=i)", false},
      foreignChild},
     false},
};

// All sequences of up to five children, checked against the rule in words: no child before one of its elders, "what"
// and "ns-bindings" at most once and first, foreign ones behind all where the type takes them.
TEST(Decode, ChildrenComeInTheirOrder) {
  Context ctx;
  for (const Grammar &grammar : grammars) {
    const size_t kinds = grammar.children.size();
    const size_t foreign = kinds - 1;
    for (size_t length = 0; length <= 5; ++length) {
      size_t all = 1;
      for (size_t i = 0; i < length; ++i)
        all *= kinds;
      for (size_t number = 0; number < all; ++number) {
        std::string body;
        std::string children;
        std::string refusedOnes;
        size_t last = 0;
        bool any = false;
        for (size_t rest = number, i = 0; i < length; ++i, rest /= kinds) {
          const size_t kind = rest % kinds;
          const Grammar::Child &child = grammar.children[kind];
          body += child.xml;
          const bool allowed = kind == foreign ? grammar.takesForeign : !any || (child.once ? false : kind >= last);
          if (allowed) {
            children += (children.empty() ? "" : " ") + std::string(child.record);
            last = kind;
            any = true;
          } else {
            refusedOnes += (refusedOnes.empty() ? "-41(" : "; -41(") + std::string(child.name) + ")@runtime/reader<SAX";
          }
        }
        const std::string text = grammar.around(body);
        rtxErrClear(ctx);
        const Reading reading = decode(ctx, text);
        EXPECT_EQ(reading.status, statusOf(refusedOnes)) << text;
        EXPECT_EQ(reading.record, grammar.record(children)) << text;
        EXPECT_EQ(reading.errors, refusedOnes) << text;
        rtxErrClear(ctx);
        const Reading checked = validate(ctx, text);
        EXPECT_EQ(checked.status, statusOf(refusedOnes)) << text;
        EXPECT_EQ(checked.errors, support::byValidator(refusedOnes)) << text;
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

// ---- Values --------------------------------------------------------------------------------------------------------

TEST(Decode, DecimalDoesNotDependOnTheLocale) {
  const support::CommaLocale locale;
  if (!locale.found) GTEST_SKIP() << "no locale with a decimal comma on this machine";
  const Reading reading = decode(inTrigger("<changed by='2.5'/><changed by='2,5'/>"));
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.record, triggerOf("changed(by=2.5)[] changed(by=0)[]"));
}

TEST(Decode, AmountIsTheNearestNumber) {
  constexpr std::pair<const char *, double> cases[] = {{"0.1", 0.1},
                                                       {"123456789.123456789", 123456789.123456789},
                                                       {"-0.000000000000000000001", -1e-21},
                                                       {"1000000000000000000000000", 1e24},
                                                       {"-0", 0.0}};
  for (const auto &[text, value] : cases) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, inTrigger("<changed by='"s + text + "'/>")), 0);
    auto record = Record<FilterSetType>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_filter_set(ctx, record), 0);
    record.owned = true;
    const auto &filter = *static_cast<FilterType *>(record->filter.head->data);
    const auto &trigger = *static_cast<TriggerType *>(filter.trigger.head->data);
    const auto &changed = *static_cast<ChangedType *>(trigger.changed.head->data);
    EXPECT_EQ(changed.m, static_cast<uint32_t>(ChangedType_has_by));
    EXPECT_EQ(changed.by, value) << text;
  }
}

TEST(Decode, DefaultsHoldWithoutTheirBits) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, inWhat("<include>a</include>")), 0);
  auto record = Record<FilterSetType>::uninitialised(ctx);
  ASSERT_EQ(QxXmlD_filter_set(ctx, record), 0);
  record.owned = true;
  const auto &filter = *static_cast<FilterType *>(record->filter.head->data);
  EXPECT_EQ(filter.m, static_cast<uint32_t>(FilterType_has_what));
  EXPECT_FALSE(filter.remove_);
  EXPECT_TRUE(filter.enabled);
  const auto &include = *static_cast<InclType *>(filter.what.include.head->data);
  EXPECT_EQ(include.m, 0u);
  EXPECT_EQ(include.type, TypeType_xpath);
}

TEST(Decode, SwitchThatDoesNotConvertKeepsItsDefaultUnderASetBit) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<filter id='a' enabled='maybe' remove='perhaps'/>")), 0);
  auto record = Record<FilterSetType>::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_filter_set(ctx, record), 0);
  record.owned = true;
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  const auto &filter = *static_cast<FilterType *>(record->filter.head->data);
  EXPECT_EQ(filter.m, static_cast<uint32_t>(FilterType_has_remove | FilterType_has_enabled));
  EXPECT_FALSE(filter.remove_);
  EXPECT_TRUE(filter.enabled);
}

TEST(Decode, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text =
      "<p:filter-set xmlns:p=\""s + namespaceUri +
      "\" xmlns:x=\"urn:x\" xmlns=\"urn:default\"><p:filter id=\"a\"><p:what>"
      "<x:f k='\"'>t &amp; <g><!--c--><p:include x:l=\"&#10;\">&lt;</p:include></g></x:f></p:what>"
      "<p:trigger><g/></p:trigger><x:h xmlns:x=\"urn:inner\"><x:i/></x:h></p:filter></p:filter-set>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  auto record = Record<FilterSetType>::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_filter_set(ctx, record), 0) << errorList(ctx);
  record.owned = true;
  const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->infoset(), whole->infoset());
}

TEST(Decode, ForeignAttributesAndDeclarationsSurviveARoundTrip) {
  for (const std::string &text :
       {document("<filter id=\"a\" k=\"v\"><what><include foo=\"bar\" xmlns:v=\"urn:v\" v:k=\"1\">/v:a</include></what>"
                 "<trigger><changed foo=\"bar\" xmlns:v=\"urn:v\" v:k=\"1\">/v:a</changed></trigger></filter>",
                 " foo=\"bar\""),
        document("<filter id=\"a\"><what><exclude type=\"namespace\" xmlns:v=\"urn:v\" xml:lang=\"en\">urn:v</exclude>"
                 "</what></filter>")}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto record = Record<FilterSetType>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_filter_set(ctx, record), 0) << errorList(ctx);
    record.owned = true;
    const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->infoset(), support::parseNamespacedXml(text)->infoset());
  }
}

// ---- Where errors are ----------------------------------------------------------------------------------------------

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = document("\n <ns-bindings>\n  <other/>\n  <ns-binding prefix='p' k='1' urn='u'><x/>"
                                    "</ns-binding>\n </ns-bindings>\n <filter\n  uri='u'>\n  <what>\n   <include"
                                    " type='regex'>a<b/></include>\n   <bogus/></what>\n  <trigger><added l='1'/>"
                                    "</trigger>\n </filter>\n");
  struct Expected {
    int status;
    const char *at; // begins where the error is
    const char *path;
  };
  constexpr Expected expected[] = {
      {-3, "<other", "/filter-set/ns-bindings/other"},         {-33, "k='1'", "/filter-set/ns-bindings/ns-binding"},
      {-41, "<x/>", "/filter-set/ns-bindings/ns-binding/x"},   {-103, "<filter\n", "/filter-set/filter"},
      {-4, "type='regex'", "/filter-set/filter/what/include"}, {-41, "<b/>", "/filter-set/filter/what/include/b"},
      {-41, "<bogus", "/filter-set/filter/what/bogus"},        {-33, "l='1'", "/filter-set/filter/trigger/added"},
  };
  Context ctx;
  decode(ctx, text);
  ASSERT_EQ(rtxErrCount(ctx), std::size(expected)) << errorList(ctx);
  for (uint32_t i = 0; i < std::size(expected); ++i) {
    const RtxError &error = *rtxErrAt(ctx, i);
    EXPECT_EQ(error.status, expected[i].status);
    const size_t offset = text.find(expected[i].at);
    const std::string before = text.substr(0, offset);
    const size_t line = static_cast<size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const size_t column = offset - (line == 1 ? 0 : before.rfind('\n') + 1) + 1;
    EXPECT_EQ(support::placeText(error), std::to_string(line) + ":" + std::to_string(column) + "+" +
                                             std::to_string(offset) + " " + expected[i].path);
  }
}

TEST(Decode, EmptyBindingsAreReportedAtTheirElement) {
  const std::string text = document("\n <ns-bindings>\n </ns-bindings>");
  Context ctx;
  decode(ctx, text);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_EQ(support::placeText(*rtxErrAt(ctx, 0)),
            "2:2+" + std::to_string(text.find("<ns-bindings")) + " /filter-set/ns-bindings");
}

// ---- The call ------------------------------------------------------------------------------------------------------

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  Context ctx;
  alignas(FilterSetType) unsigned char storage[sizeof(FilterSetType)];
  unsigned char before[sizeof storage];
  std::memset(storage, 0xA5, sizeof storage);
  std::memcpy(before, storage, sizeof storage);
  auto *record = reinterpret_cast<FilterSetType *>(storage);
  EXPECT_EQ(QxXmlD_filter_set(ctx, record), STATUS_READER_FAILED);
  EXPECT_EQ(errorList(ctx), "-26@Dec");
  EXPECT_EQ(std::memcmp(storage, before, sizeof storage), 0);
  RuntimeContext none{};
  EXPECT_EQ(QxXmlD_filter_set(&none, record), STATUS_READER_FAILED);
  EXPECT_EQ(std::memcmp(storage, before, sizeof storage), 0);
}

TEST(Decode, BringsItsOwnTableOfNamespaces) {
  // Whatever a context was used for before, "bogus" is an element of this module's namespace.
  for (const char *installed : {"", "urn:other"}) {
    Context ctx;
    if (*installed != '\0') {
      ASSERT_EQ(rtXmlNSSetURITable(ctx, &installed, 1), 0);
    }
    const Reading reading = decode(ctx, inWhat("<bogus/><x:f xmlns:x=\"urn:other\"/>"));
    EXPECT_EQ(reading.errors, "-41(bogus)@runtime/reader<SAX");
    EXPECT_EQ(reading.record, whatOf("any[<x:f xmlns:x=\"urn:other\"/>]"));
    EXPECT_EQ(ctx->globalData, nullptr) << "reading needs no registry";
    rtxErrClear(ctx);
    EXPECT_EQ(validate(ctx, inWhat("<bogus/>")).errors, "-41(bogus)@runtime/reader<Vldt");
    EXPECT_EQ(ctx->globalData, nullptr);
  }
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const std::string &text :
       {""s, " "s, "x"s, "<filter-set>"s, "<filter-set></filterset>"s, document("<filter id='a'/>") + "<more/>",
        document("<filter id='&undefined;'/>"), document("<filter id='1' id='2'/>"), inTrigger("<added>\x01</added>"),
        inTrigger("<added>\xFF</added>"), inWhat("<include xmlns:v='u' xmlns:v='u'/>")}) {
    const Reading reading = decode(text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << text;
    EXPECT_NE(reading.errors.find("-104"), std::string::npos) << reading.errors;
    EXPECT_EQ(validate(text).status, STATUS_PARSE_FAILED) << text;
  }
}

TEST(Decode, KeepsWhatWasReadBeforeADocumentIsCutOff) {
  struct Cut {
    const char *content;
    const char *record;
  };
  constexpr Cut cuts[] = {
      {"<ns-bindings><ns-binding prefix='p' urn='u'/><ns-binding prefix='q' urn='v'>", "{bindings{p=u}}"},
      {"<filter id='a'><what><include type='namespace' k='v'>te",
       "{filter(id=a){what{include(type=namespace @k=v)[-]}}}"},
      {"<filter id='a'><what><x:f xmlns:x='u'><x:g>te", "{filter(id=a){what{any[-]}}}"},
      {"<filter id='a'><trigger><added>a</added><added>b", "{filter(id=a){trigger{added[a]}}}"},
      {"<filter id='a'><trigger><changed by='1'>a</changed><changed from='f'>b",
       "{filter(id=a){trigger{changed(by=1)[a] changed(from=f)[-]}}}"},
      {"<filter id='a' k='v'><x:f xmlns:x='u'/><x:g xmlns:x='u'>",
       "{filter(id=a @k=v){any[<x:f xmlns:x=\"u\"/>] any[-]}}"},
  };
  for (const Cut &cut : cuts) {
    SCOPED_TRACE(cut.content);
    Context ctx;
    const Reading reading = decode(ctx, "<filter-set xmlns=\""s + namespaceUri + "\">" + cut.content);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
    EXPECT_EQ(reading.record, cut.record);
    // Nothing is left over for the next document.
    rtxErrClear(ctx);
    const Reading next =
        decode(ctx, "<filter-set><filter id='b'><trigger><added>c</added></trigger></filter></filter-set>");
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(next.record, "{filter(id=b){trigger{added[c]}}}");
  }
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  EXPECT_EQ(decode(ctx, "<filter-set><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_PARSE_FAILED);
}

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, document("<ns-bindings/>")).status, STATUS_CONSTRAINT_VIOLATION);
  const Reading second = decode(ctx, document("<filter id='a'/>"));
  EXPECT_EQ(second.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(second.record, "{filter(id=a)}");
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  rtxErrClear(ctx);
  EXPECT_EQ(decode(ctx, document("<filter id='a'/>")).status, 0);
}

TEST(Decode, NoErrorBeyondTheLimitIsRecorded) {
  const std::string bad =
      "<filters xmlns=\""s + namespaceUri +
      "\"><ns-bindings><x/><ns-binding k='1' prefix='p'/></ns-bindings><bogus/><filter><what><exclude "
      "type='r'>a<b/>c</exclude><include/></what><trigger><added l='1'>t</added></trigger></filter>"
      "</filters>";
  constexpr int all[] = {-3, -3, -33, -103, -41, -103, -4, -41, -41, -33};
  constexpr const char *record = "{bindings{p=-} filter(id=-){what{exclude(type=xpath)[ac]} trigger{added[t]}}}";
  for (uint32_t limit : {0u, 1u, 2u, 3u, 4u, 5u, 9u, 10u, 100u}) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading reading = decode(ctx, bad);
    EXPECT_EQ(reading.record, record) << "limit " << limit;
    std::vector<int> expected;
    uint32_t counted = 0;
    for (int status : all) {
      // That a text is no value of its enumeration is recorded whatever the count says.
      if (status == STATUS_ENUM_NOT_FOUND || counted++ < limit) expected.push_back(status);
    }
    EXPECT_EQ(support::statuses(ctx), expected) << "limit " << limit;
    EXPECT_EQ(reading.status, expected.front());
  }
}

} // namespace
