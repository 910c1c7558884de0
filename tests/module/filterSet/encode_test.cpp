// Writing notification filters.
#include "IsComposing/QxXmlIsComposing.h"
#include "commaLocale.h"
#include "filters.h"

#include <cmath>
#include <limits>
#include <map>
#include <set>

using namespace filters;
using support::Context;
using support::occurrences;

namespace {

const std::string openTag = "<filter-set xmlns=\""s + namespaceUri + "\"";
const std::string fullDocument = support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text;

int encodeDocument(RuntimeContext *ctx, const FilterSetType *record) { return QxXmlE_filter_set(ctx, record); }

// Runs encode into a growing output; its status and what it wrote.
struct Result {
  int status;
  std::string text;
  std::string errors;
};

Result attempt(RuntimeContext *ctx, const support::Encode &encode) {
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  const int status = encode(ctx);
  return {status, support::withoutDeclaration(support::outputText(ctx)), errorList(ctx)};
}

Result attemptDocument(RuntimeContext *ctx, const FilterSetType *record) {
  return attempt(ctx, [record](RuntimeContext *c) { return encodeDocument(c, record); });
}

// ---- The document --------------------------------------------------------------------------------------------------

TEST(Encode, AllMembersInOrder) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  EXPECT_EQ(encodeRecord(ctx, record), fullDocument);
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  EXPECT_EQ(whole.substr(0, whole.find("<filter-set")), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
}

TEST(Encode, EmptySetIsItsRootAlone) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{"s + namespaceUri + "}filter-set[]()");
}

TEST(Encode, EachBitOfTheSetWritesItsOwnPart) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  for (uint32_t m = 0; m < 4; ++m) {
    std::string expected = fullDocument;
    const auto drop = [&](const std::string &part) { expected.erase(expected.find(part), part.size()); };
    if ((m & 1) == 0)
      drop("<ns-bindings><ns-binding prefix=\"p\" urn=\"urn:p\"/><ns-binding prefix=\"q\" urn=\"urn:q\"/>"
           "</ns-bindings>");
    if ((m & 2) == 0) drop(" package=\"presence\"");
    record->m = m;
    EXPECT_EQ(encodeRecord(ctx, record), expected);
  }
  record->m = 3;
}

TEST(Encode, BitsWithoutAMeaningChangeNothing) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  record->m = ~0u;
  EXPECT_EQ(encodeRecord(ctx, record), fullDocument);
  record->m = 3;
}

TEST(Encode, DefaultsAreNotWrittenWithoutTheirBits) {
  Context ctx;
  Record<FilterType> filter(ctx);
  filter->id = xmlString(ctx, "a");
  EXPECT_EQ(encodeType<FilterType>(ctx, filter, "filter"), "<filter id=\"a\"/>");
  Record<InclType> include(ctx);
  EXPECT_EQ(encodeType<InclType>(ctx, include, "include"), "<include/>");
}

TEST(Encode, EachBitOfAFilterWritesItsOwnPart) {
  Context ctx;
  Record<FilterType> record(ctx);
  record->id = xmlString(ctx, "i");
  record->uri = xmlString(ctx, "u");
  record->domain = xmlString(ctx, "d");
  const char *const attributes[] = {" uri=\"u\"", " domain=\"d\"", " remove=\"false\"", " enabled=\"true\""};
  for (uint32_t m = 0; m < 32; ++m) {
    std::string expected = "<filter id=\"i\"";
    for (uint32_t i = 0; i < 4; ++i)
      if ((m >> (i + 1) & 1) != 0) expected += attributes[i];
    record->m = m;
    EXPECT_EQ(encodeType<FilterType>(ctx, record, "filter"),
              expected + ((m & 1) != 0 ? "><what></what></filter>" : "/>"));
  }
}

TEST(Encode, EachBitOfAChangeWritesItsOwnAttribute) {
  Context ctx;
  Record<ChangedType> record(ctx);
  record->from = xmlString(ctx, "f");
  record->to = xmlString(ctx, "t");
  record->by = 4;
  const char *const attributes[] = {" from=\"f\"", " to=\"t\"", " by=\"4\""};
  for (uint32_t m = 0; m < 8; ++m) {
    std::string expected = "<changed";
    for (uint32_t i = 0; i < 3; ++i)
      if ((m >> i & 1) != 0) expected += attributes[i];
    record->m = m;
    EXPECT_EQ(encodeType<ChangedType>(ctx, record, "changed"), expected + "/>");
  }
  record->m = 7;
}

TEST(Encode, TypeOfAnExpressionIsWrittenAsItsWord) {
  constexpr const char *words[] = {"xpath", "namespace", "_UNKNOWN_"};
  Context ctx;
  Record<InclType> include(ctx);
  Record<ExclType> exclude(ctx);
  for (uint16_t code = 0; code < 3; ++code) {
    include->type = exclude->type = code;
    include->m = exclude->m = 1;
    const std::string attribute = " type=\""s + words[code] + "\"/>";
    EXPECT_EQ(encodeType<InclType>(ctx, include, "include"), "<include" + attribute);
    EXPECT_EQ(encodeType<ExclType>(ctx, exclude, "exclude"), "<exclude" + attribute);
    include->m = exclude->m = 0;
    EXPECT_EQ(encodeType<InclType>(ctx, include, "include"), "<include/>");
    EXPECT_EQ(encodeType<ExclType>(ctx, exclude, "exclude"), "<exclude/>");
  }
}

TEST(Encode, AbsentTextsBecomeEmpty) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  record->m = FilterSetType_has_ns_bindings | FilterSetType_has_package;
  append<NSBinding>(ctx, record->ns_bindings.ns_binding);
  auto &filter = append<FilterType>(ctx, record->filter);
  filter.m = FilterType_has_what | FilterType_has_uri | FilterType_has_domain;
  append<InclType>(ctx, filter.what.include);
  append<ExclType>(ctx, filter.what.exclude);
  auto &trigger = append<TriggerType>(ctx, filter.trigger);
  append<ChangedType>(ctx, trigger.changed).m = ChangedType_has_from | ChangedType_has_to;
  addText(ctx, trigger.added, nullptr);
  addText(ctx, trigger.removed, nullptr);
  for (RtxAnyList *list : {&filter.what._any, &trigger._any, &filter._any})
    addForeign(ctx, *list, nullptr);
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), support::parseNamespacedXml(
                                 document("<ns-bindings><ns-binding prefix='' urn=''/></ns-bindings>"
                                          "<filter id='' uri='' domain=''><what><include/><exclude/></what>"
                                          "<trigger><changed from='' to=''/><added/><removed/></trigger></filter>",
                                          " package=''"))
                                 ->infoset());
}

TEST(Encode, EscapesMarkupAndHonoursCdata) {
  constexpr const char *awkward = "<a>&\"'\r\n\t]]>\xC3\xA9";
  Context ctx;
  for (bool cdata : {false, true}) {
    CompleteRecord<FilterSetType> record(ctx);
    const auto set = [&](RtxXmlString &text) {
      rtxMemHeapFreePtr(ctx, text.value);
      text = xmlString(ctx, awkward);
      text.cdata = cdata;
    };
    auto &filter = *static_cast<FilterType *>(record->filter.head->data);
    auto &trigger = *static_cast<TriggerType *>(filter.trigger.head->data);
    auto &include = *static_cast<InclType *>(filter.what.include.head->data);
    auto &changed = *static_cast<ChangedType *>(trigger.changed.head->data);
    for (RtxXmlString *text : {&record->package_, &filter.id, &filter.uri, &filter.domain, &include.value,
                               &changed.from, &changed.value, static_cast<RtxXmlString *>(trigger.added.head->data)})
      set(*text);
    const std::string text = encodeRecord(ctx, record);
    const auto root = support::parseNamespacedXml(text);
    ASSERT_TRUE(root) << text;
    const auto attribute = [](const support::XmlElement &element, const std::string &name) {
      for (const auto &[found, value] : element.attributes)
        if (found == name) return value;
      return "no attribute "s + name;
    };
    const support::XmlElement &written = root->children.at(1);
    EXPECT_EQ(attribute(*root, "package"), awkward);
    for (const char *name : {"id", "uri", "domain"})
      EXPECT_EQ(attribute(written, name), awkward);
    const support::XmlElement &change = written.children.at(1).children.at(0);
    EXPECT_EQ(attribute(change, "from"), awkward);
    // A section cannot hold a carriage return: a parser takes it for a line end.
    const std::string expected = cdata ? "<a>&\"'" : awkward;
    for (const std::string &content :
         {written.children.at(0).children.at(0).text, change.text, written.children.at(1).children.at(1).text})
      EXPECT_EQ(content.substr(0, expected.size()), expected);
    EXPECT_EQ(text.find("<![CDATA[") != std::string::npos, cdata);
  }
}

// ---- Texts that cannot be written ----------------------------------------------------------------------------------

struct Place {
  const char *name;
  RtxXmlString &(*text)(FilterSetType &record);
  bool ownElement;  // what is not UTF-8 is found before the tag is written
  size_t functions; // that the failure passes
};

FilterType &firstFilter(FilterSetType &record) { return *static_cast<FilterType *>(record.filter.head->data); }
TriggerType &firstTrigger(FilterSetType &record) {
  return *static_cast<TriggerType *>(firstFilter(record).trigger.head->data);
}

const Place places[] = {
    {"include",
     [](FilterSetType &r) -> RtxXmlString & {
       return static_cast<InclType *>(firstFilter(r).what.include.head->data)->value;
     },
     false, 8},
    {"exclude",
     [](FilterSetType &r) -> RtxXmlString & {
       return static_cast<ExclType *>(firstFilter(r).what.exclude.head->data)->value;
     },
     false, 8},
    {"changed",
     [](FilterSetType &r) -> RtxXmlString & {
       return static_cast<ChangedType *>(firstTrigger(r).changed.head->data)->value;
     },
     false, 8},
    {"added",
     [](FilterSetType &r) -> RtxXmlString & { return *static_cast<RtxXmlString *>(firstTrigger(r).added.head->data); },
     true, 6},
    {"removed",
     [](FilterSetType &r) -> RtxXmlString & {
       return *static_cast<RtxXmlString *>(firstTrigger(r).removed.head->data);
     },
     true, 6},
};

std::string trail(const char *first, size_t functions) {
  std::string all = first;
  for (size_t i = 0; i < functions; ++i)
    all += i == 0 ? "@Enc" : "<Enc";
  return all;
}

TEST(Encode, TextThatXmlCannotCarryIsRefused) {
  struct Case {
    const char *text;
    bool utf8;
  };
  constexpr Case cases[] = {{"bad\xFF", false},          {"\xC3", false}, {"\xED\xA0\x80", false},
                            {"\xF4\x90\x80\x80", false}, {"\x01", true},  {"\xEF\xBF\xBE", true}};
  for (const Place &place : places) {
    for (const Case &c : cases) {
      SCOPED_TRACE(place.name + " = "s + testing::PrintToString(c.text));
      Context ctx;
      CompleteRecord<FilterSetType> record(ctx);
      RtxXmlString &text = place.text(*record);
      rtxMemHeapFreePtr(ctx, text.value);
      text = xmlString(ctx, c.text);
      const Result result = attemptDocument(ctx, record);
      EXPECT_EQ(result.status, STATUS_INVALID_UTF8);
      EXPECT_EQ(result.errors, trail("-102", place.functions));
      const std::string tag = "<"s + place.name;
      if (place.ownElement && !c.utf8) {
        EXPECT_EQ(result.text.find(tag), std::string::npos) << result.text;
      }
      if (!place.ownElement) {
        EXPECT_NE(result.text.find(tag), std::string::npos) << "the start tag was written before: " << result.text;
        EXPECT_EQ(result.text.find("</"s + place.name, result.text.rfind(tag)), std::string::npos) << result.text;
      }
      EXPECT_TRUE(result.text.starts_with(openTag + " package=\"presence\" k=\"v\"><ns-bindings>")) << result.text;
    }
  }
}

TEST(Encode, FailurePassesEveryFunctionAtALineOfItsOwn) {
  for (const Place &place : places) {
    Context ctx;
    CompleteRecord<FilterSetType> record(ctx);
    RtxXmlString &text = place.text(*record);
    rtxMemHeapFreePtr(ctx, text.value);
    text = xmlString(ctx, "\xFF");
    attemptDocument(ctx, record);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError &error = *rtxErrAt(ctx, 0);
    std::set<int> lines;
    for (uint32_t i = 0; i < error.siteCount; ++i) {
      EXPECT_STREQ(error.sites[i].path, "xmlAddOns/addons/IMS/FilterSet/QxXmlFilterSetEnc");
      lines.insert(static_cast<int>(error.sites[i].line));
    }
    EXPECT_EQ(lines.size(), place.functions) << support::errors(ctx);
  }
}

TEST(Encode, TextUnderAClearBitIsNotLookedAt) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  firstFilter(*record).m = 0;
  auto &include = *static_cast<InclType *>(firstFilter(*record).what.include.head->data);
  rtxMemHeapFreePtr(ctx, include.value.value);
  include.value = xmlString(ctx, "\xFF");
  include.type = 77;
  EXPECT_EQ(attemptDocument(ctx, record).status, 0);
  firstFilter(*record).m = 31;
}

TEST(Encode, AttributesAreWrittenWithoutACheckOfTheirBytes) {
  Context ctx;
  Record<FilterType> record(ctx);
  record->id = xmlString(ctx, "a\xFF<");
  EXPECT_EQ(encodeType<FilterType>(ctx, record, "filter"), "<filter id=\"a\xFF&lt;\"/>");
}

TEST(Encode, AttributeWithAForbiddenCharacterEndsTheEncoding) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  FilterType &filter = firstFilter(*record);
  rtxMemHeapFreePtr(ctx, filter.domain.value);
  filter.domain = xmlString(ctx, "\x01");
  const Result result = attemptDocument(ctx, record);
  EXPECT_EQ(result.status, STATUS_INVALID_UTF8);
  EXPECT_EQ(result.errors, trail("-102", 4)) << "start tag, filter, contents of the set, document";
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
}

// ---- Bindings ------------------------------------------------------------------------------------------------------

TEST(Encode, BindingsWithoutAnItemAreRefused) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  record->m = FilterSetType_has_ns_bindings;
  append<FilterType>(ctx, record->filter).id = xmlString(ctx, "a");
  const Result result = attemptDocument(ctx, record);
  EXPECT_EQ(result.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(result.errors, trail("-16(NSBindings.count,0)", 4));
  EXPECT_EQ(result.text.find("<filter "), std::string::npos) << result.text;

  rtxErrClear(ctx);
  record->m = 0;
  EXPECT_EQ(attemptDocument(ctx, record).status, 0) << "absent, they need none";
}

TEST(Encode, BindingsOnTheirOwnAreRefusedWithoutAnItem) {
  Context ctx;
  Record<NSBindings> record(ctx);
  Result result = attempt(ctx, [&](RuntimeContext *c) { return QxXmlET_NSBindings(c, record, "b", nullptr); });
  EXPECT_EQ(result.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(result.errors, trail("-16(NSBindings.count,0)", 2));
  rtxErrClear(ctx);
  result = attempt(ctx, [&](RuntimeContext *c) { return QxXmlET_NSBindings_Contents(c, record, nullptr); });
  EXPECT_EQ(result.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(result.text, "");
}

// ---- The root ------------------------------------------------------------------------------------------------------

TEST(EncodeRoot, AlwaysDeclaresItsNamespaceAsTheDefault) {
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for uri; null is the default namespace
    const char *uri;    // null: nothing is declared
  };
  const Case cases[] = {
      {"nothing declared", "", nullptr},
      {"prefix for this namespace", "h", namespaceUri},
      {"default namespace already", nullptr, namespaceUri},
      {"prefix for another namespace", "h", "urn:other"},
  };
  for (const Case &c : cases) {
    for (bool preset : {false, true}) {
      SCOPED_TRACE(c.what + (preset ? ", preset"s : ""s));
      Context ctx;
      if (preset) ctx->flags |= NamespacesPreset;
      if (c.uri != nullptr) {
        ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
      }
      CompleteRecord<FilterSetType> record(ctx);
      for (int round = 1; round <= 3; ++round) {
        const std::string text = encodeRecord(ctx, record);
        EXPECT_TRUE(text.starts_with("<filter-set ")) << text;
        const std::string tag = text.substr(0, text.find('>'));
        EXPECT_NE(tag.find(" xmlns=\""s + namespaceUri + "\""), std::string::npos) << tag;
        const auto root = support::parseNamespacedXml(text);
        ASSERT_TRUE(root) << text;
        EXPECT_EQ(root->infoset(), support::parseNamespacedXml(fullDocument)->infoset());
      }
      EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, preset);
    }
  }
}

TEST(EncodeRoot, DeclaresItsNamespaceOverAnotherDefaultOfTheHost) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:other", false), 0);
  Record<FilterSetType> record(ctx);
  append<FilterType>(ctx, record->filter).id = xmlString(ctx, "a");
  for (int round = 1; round <= 2; ++round) {
    EXPECT_EQ(encodeRecord(ctx, record), openTag + "><filter id=\"a\"/></filter-set>");
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:other"), "") << "afterwards the host's is in force again";
  }
}

TEST(EncodeRoot, HostDeclarationsBesideOursAreWritten) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "v", "urn:vendor", false), 0);
  Record<FilterSetType> record(ctx);
  addAttribute(ctx, record->_anyAttr, "v:k", "1");
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{"s + namespaceUri + "}filter-set[{urn:vendor}k=\"1\"]()");
}

TEST(EncodeRoot, FailingAttributeDoesNotEndTheDocument) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  rtxMemHeapFreePtr(ctx, record->package_.value);
  record->package_ = xmlString(ctx, "\x01");
  const Result result = attemptDocument(ctx, record);
  EXPECT_EQ(result.status, 0) << "the status of closing the start tag";
  const auto root = support::parseNamespacedXml(result.text);
  ASSERT_TRUE(root) << result.text;
  EXPECT_EQ(root->children.size(), 3u) << "the contents follow";
  EXPECT_EQ(result.errors, "-102@Enc") << "recorded, though the document is complete";
  EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES);

  rtxErrClear(ctx);
  CompleteRecord<FilterSetType> good(ctx);
  EXPECT_EQ(encodeRecord(ctx, good), fullDocument);
}

TEST(EncodeRoot, FailingForeignAttributeLeavesThoseOfTheSchema) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  addAttribute(ctx, record->_anyAttr, "bad", "\x01");
  const Result result = attemptDocument(ctx, record);
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.text.starts_with(openTag + " package=\"presence\"")) << result.text;
  const auto root = support::parseNamespacedXml(result.text);
  ASSERT_TRUE(root) << result.text;
  EXPECT_EQ(root->children.size(), 3u);
}

TEST(EncodeRoot, StepsOfTheDocumentGiveTheDocument) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  std::vector<std::string> parts;
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_IMS_NSURI(c), 5), 0);
    EXPECT_EQ(rtXmlEncStartDocument(c), 0);
    const auto step = [&](int (*function)(RuntimeContext *, const FilterSetType *)) {
      EXPECT_EQ(function(c, record), 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0') << "always a terminated text";
      parts.push_back(support::withoutDeclaration(text));
    };
    step(QxXmlE_filter_set_StartElement);
    step(QxXmlE_filter_set_Contents);
    step(QxXmlE_filter_set_EndElement);
    return rtXmlEncEndDocument(c);
  });
  EXPECT_EQ(stepwise, whole);
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts[0], openTag + " package=\"presence\" k=\"v\">") << "declarations, then attributes; closed";
  EXPECT_EQ(parts[2], fullDocument);
  EXPECT_EQ(parts[2].substr(parts[1].size()), "</filter-set>");
}

TEST(EncodeRoot, WithoutOutputItFailsWithARecord) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_WRITE_FAILED);
  EXPECT_EQ(errorList(ctx), "-106@Enc");
}

TEST(EncodeRoot, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  tns__isComposing other;
  ASSERT_EQ(QxInit_tns__isComposing(ctx, &other), 0);
  std::string otherText;
  for (int round = 0; round < 3; ++round) {
    CompleteRecord<FilterSetType> record(ctx);
    EXPECT_EQ(encodeRecord(ctx, record), fullDocument);
    const std::string text =
        support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_tns_isComposing(c, &other); });
    if (round == 0) otherText = text;
    EXPECT_EQ(text, otherText) << "nothing of one document is in the next";
    EXPECT_EQ(text.find(namespaceUri), std::string::npos);
    EXPECT_EQ(decode(ctx, fullDocument).status, 0);
    EXPECT_EQ(validate(ctx, document("<filter id='a'/>")).status, 0);
  }
}

TEST(EncodeRoot, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  for (const Place &place : places) {
    CompleteRecord<FilterSetType> bad(ctx);
    RtxXmlString &text = place.text(*bad);
    rtxMemHeapFreePtr(ctx, text.value);
    text = xmlString(ctx, "\xFF");
    EXPECT_EQ(attemptDocument(ctx, bad).status, STATUS_INVALID_UTF8);
    rtxErrClear(ctx);
    CompleteRecord<FilterSetType> good(ctx);
    EXPECT_EQ(encodeRecord(ctx, good), fullDocument);
  }
}

// ---- Declarations and foreign attributes ---------------------------------------------------------------------------

template <class T> class Carrying : public testing::Test {};
using CarryingTypes = testing::Types<InclType, ExclType, ChangedType>;
TYPED_TEST_SUITE(Carrying, CarryingTypes);

TYPED_TEST(Carrying, EachDeclarationIsWrittenOnce) {
  Context ctx;
  Record<TypeParam> record(ctx);
  declare(ctx, record->nsDecls, "v", "urn:v");
  declare(ctx, record->nsDecls, "w", "urn:w");
  declare(ctx, record->nsDecls, "v", "urn:again");
  addAttribute(ctx, record->_anyAttr, "v:k", "1");
  const std::string text = encodeType<TypeParam>(ctx, record, "e");
  EXPECT_EQ(text, "<e xmlns:v=\"urn:v\" xmlns:w=\"urn:w\" v:k=\"1\"/>");
  EXPECT_TRUE(support::parseNamespacedXml(text));
}

TYPED_TEST(Carrying, DeclarationOfTheTagsOwnPrefixIsLeftOut) {
  Context ctx;
  Record<TypeParam> record(ctx);
  declare(ctx, record->nsDecls, "p", "urn:other");
  declare(ctx, record->nsDecls, "v", "urn:v");
  const RtxNamespace ns = {"p", "urn:p"};
  EXPECT_EQ(encodeType<TypeParam>(ctx, record, "e", &ns), "<p:e xmlns:v=\"urn:v\"/>");
}

TYPED_TEST(Carrying, AttributesAloneGoIntoATagThatIsOpen) {
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  const auto written = [&](const RtxNsDeclList *inTag, bool byStart) {
    const Result result = attempt(ctx, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "e", nullptr, inTag, false), 0);
      if (byStart) {
        EXPECT_EQ(Functions<TypeParam>::startElement(c, record, nullptr, nullptr), 0)
            << "the caller has opened the tag";
      } else if constexpr (std::is_same_v<TypeParam, InclType>) {
        EXPECT_EQ(QxXmlET_InclType_Attrs(c, record, nullptr), 0);
      } else if constexpr (std::is_same_v<TypeParam, ExclType>) {
        EXPECT_EQ(QxXmlET_ExclType_Attrs(c, record, nullptr), 0);
      } else {
        EXPECT_EQ(QxXmlET_ChangedType_Attrs(c, record, nullptr), 0);
      }
      EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT);
      return rtXmlEncEndElement(c, "e", nullptr);
    });
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.text;
  };
  for (bool byStart : {false, true}) {
    for (const RtxNsDeclList *inTag : {&record->nsDecls, static_cast<RtxNsDeclList *>(nullptr)}) {
      const std::string text = written(inTag, byStart);
      const auto element = support::parseNamespacedXml(text);
      ASSERT_TRUE(element) << text;
      EXPECT_EQ(occurrences(text, "xmlns:v="), 1u) << text;
      EXPECT_EQ(element->attributes.size(), (std::is_same_v<TypeParam, ChangedType> ? 5u : 3u)) << text;
    }
  }
}

TYPED_TEST(Carrying, ForeignAttributesAreWrittenByTheNamesTheyHave) {
  Context ctx;
  Record<TypeParam> record(ctx);
  addAttribute(ctx, record->_anyAttr, "undeclared:k", "<\"&>");
  addAttribute(ctx, record->_anyAttr, "xml:lang", "en");
  EXPECT_EQ(encodeType<TypeParam>(ctx, record, "e"), "<e undeclared:k=\"&lt;&quot;&amp;&gt;\" xml:lang=\"en\"/>");
}

TYPED_TEST(Carrying, NoAttributeIsWrittenTwice) {
  Context ctx;
  for (const char *name : {"k", "from", "type"}) {
    CompleteRecord<TypeParam> record(ctx);
    addAttribute(ctx, record->_anyAttr, name, "1");
    addAttribute(ctx, record->_anyAttr, name, "2");
    const Result result =
        attempt(ctx, [&](RuntimeContext *c) { return Functions<TypeParam>::encode(c, record, "e", nullptr); });
    EXPECT_EQ(result.status, STATUS_WRITE_FAILED) << result.text;
    EXPECT_NE(result.errors, "");
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
    rtxErrClear(ctx);
  }
}

TEST(EncodeDeclarations, DecodedOnesAreWrittenBackOnce) {
  const std::string bodies[] = {
      document("<filter id=\"a\"><what><include xmlns:v=\"urn:v\" xmlns=\"" + std::string(namespaceUri) +
               "\" v:k=\"1\">/v:a</include></what><trigger><changed xmlns:v=\"urn:v\">/v:b</changed></trigger>"
               "</filter>"),
      "<p:filter-set xmlns:p=\""s + namespaceUri + "\"><p:filter id=\"a\"><p:what><p:exclude xmlns:p=\"" +
          namespaceUri + "\" xmlns:w=\"urn:w\" w:k=\"1\" p:k=\"2\">/w:a</p:exclude></p:what></p:filter></p:filter-set>",
  };
  for (const std::string &body : bodies) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, body), 0);
    auto record = Record<FilterSetType>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_filter_set(ctx, record), 0) << errorList(ctx);
    record.owned = true;
    const std::string first = encodeRecord(ctx, record);
    const auto root = support::parseNamespacedXml(first);
    ASSERT_TRUE(root) << first;
    EXPECT_EQ(root->infoset(), support::parseNamespacedXml(body)->infoset());
    EXPECT_EQ(encodeRecord(ctx, record), first) << "the record is as it was";
  }
}

// ---- Decimals ------------------------------------------------------------------------------------------------------

TEST(EncodeDecimal, WithoutExponentAndAsShortAsItCanBe) {
  struct Case {
    double value;
    const char *text;
  };
  const Case cases[] = {{0, "0"},
                        {1, "1"},
                        {-3, "-3"},
                        {2.5, "2.5"},
                        {0.1, "0.1"},
                        {-0.25, "-0.25"},
                        {1e21, "1000000000000000000000"},
                        {1e-7, "0.0000001"},
                        {123456789.125, "123456789.125"}};
  Context ctx;
  Record<ChangedType> record(ctx);
  record->m = ChangedType_has_by;
  for (const Case &c : cases) {
    record->by = c.value;
    EXPECT_EQ(encodeType<ChangedType>(ctx, record, "changed"), "<changed by=\""s + c.text + "\"/>");
  }
  record->m = 0;
}

TEST(EncodeDecimal, WhatIsNoNumberIsRefused) {
  for (double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                       -std::numeric_limits<double>::infinity()}) {
    Context ctx;
    Record<ChangedType> record(ctx);
    record->m = ChangedType_has_by;
    record->by = value;
    const Result result =
        attempt(ctx, [&](RuntimeContext *c) { return QxXmlET_ChangedType(c, record, "changed", nullptr); });
    EXPECT_EQ(result.status, STATUS_INVALID_UTF8);
    EXPECT_EQ(result.errors, trail("-102", 2));
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
    record->m = 0;
  }
}

TEST(EncodeDecimal, DoesNotDependOnTheLocale) {
  const support::CommaLocale locale;
  if (!locale.found) GTEST_SKIP() << "no locale with a decimal comma on this machine";
  Context ctx;
  Record<ChangedType> record(ctx);
  record->m = ChangedType_has_by;
  record->by = 2.5;
  EXPECT_EQ(encodeType<ChangedType>(ctx, record, "changed"), "<changed by=\"2.5\"/>");
  EXPECT_EQ(printed<ChangedType>("r", record), "r = <null>\nr.by = 2.5\n");
}

// ---- Types on their own --------------------------------------------------------------------------------------------

// Attributes and content of each filled record, its children under no prefix.
struct Written {
  const char *attributes;
  const char *contents;
};

const Written &writtenOf(const std::string &type) {
  static const std::string what = "<include xmlns:v=\"urn:v\" type=\"namespace\" v:k=\"1\" l=\"2\">urn:p</include>"
                                  "<include>/p:a</include>"
                                  "<exclude xmlns:v=\"urn:v\" type=\"xpath\" v:k=\"1\" l=\"2\">/p:a/p:b</exclude>"
                                  "<x:f xmlns:x=\"urn:x\"/>";
  static const std::string trigger =
      "<changed xmlns:v=\"urn:v\" from=\"CLOSED\" to=\"OPEN\" by=\"2.5\" v:k=\"1\" l=\"2\">/p:a/p:c</changed>"
      "<added>/p:d</added><added>/p:e</added><removed>/p:f</removed><x:g xmlns:x=\"urn:x\">t</x:g>";
  static const std::string filter =
      "<what>" + what + "</what><trigger>" + trigger + "</trigger><x:h xmlns:x=\"urn:x\"/>";
  static const char *const filterAttributes =
      " id=\"a\" uri=\"sip:a@example.com\" domain=\"example.com\" remove=\"true\" enabled=\"false\" k=\"v\"";
  static const std::string bindings =
      "<ns-binding prefix=\"p\" urn=\"urn:p\"/><ns-binding prefix=\"q\" urn=\"urn:q\"/>";
  static const std::string set = "<ns-bindings>" + bindings + "</ns-bindings><filter" + filterAttributes + ">" +
                                 filter + "</filter><filter id=\"b\"/>";
  static const std::map<std::string, Written> all = {
      {"NSBinding", {" prefix=\"p\" urn=\"urn:p\"", ""}},
      {"NSBindings", {"", bindings.c_str()}},
      {"InclType", {" xmlns:v=\"urn:v\" type=\"namespace\" v:k=\"1\" l=\"2\"", "urn:p"}},
      {"ExclType", {" xmlns:v=\"urn:v\" type=\"xpath\" v:k=\"1\" l=\"2\"", "/p:a/p:b"}},
      {"WhatType", {"", what.c_str()}},
      {"ChangedType", {" xmlns:v=\"urn:v\" from=\"CLOSED\" to=\"OPEN\" by=\"2.5\" v:k=\"1\" l=\"2\"", "/p:a/p:c"}},
      {"TriggerType", {"", trigger.c_str()}},
      {"FilterType", {filterAttributes, filter.c_str()}},
      {"FilterSetType", {" package=\"presence\" k=\"v\"", set.c_str()}},
  };
  return all.at(type);
}

std::string withPrefix(std::string text, const std::string &prefix) {
  for (const char *name :
       {"ns-bindings", "ns-binding", "filter", "what", "include", "exclude", "trigger", "changed", "added", "removed"})
    for (const char *bracket : {"<", "</"})
      for (const char *after : {">", " ", "/"}) {
        const std::string plain = bracket + std::string(name) + after;
        for (size_t at = 0; (at = text.find(plain, at)) != std::string::npos; at += plain.size())
          text.replace(at, plain.size(), bracket + prefix + name + after);
      }
  return text;
}

template <class T> class EncodeType : public testing::Test {
protected:
  const Written &written = writtenOf(Functions<T>::name);
  std::string element(const std::string &name, const std::string &childPrefix = "") const {
    const std::string inner = withPrefix(written.contents, childPrefix);
    return "<" + name + written.attributes + (inner.empty() ? "/>" : ">" + inner + "</" + name + ">");
  }
};
TYPED_TEST_SUITE(EncodeType, AllTypes);

TYPED_TEST(EncodeType, TakesTheCallersNameAndNamespace) {
  const RtxNamespace callers = {"c", "urn:c"};
  const RtxNamespace defaultOne = {"", "urn:c"};
  struct Case {
    const RtxNamespace *ns;
    const char *name;
    bool bound; // the host has bound a prefix to this module's namespace
  };
  const Case cases[] = {
      {&callers, "c:e", false}, {&defaultOne, "e", false}, {nullptr, "e", false}, {&callers, "c:e", true}};
  for (const Case &c : cases) {
    Context ctx;
    if (c.bound) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "m", namespaceUri, false), 0);
    }
    CompleteRecord<TypeParam> record(ctx);
    const std::string expected = this->element(c.name, c.bound ? "m:" : "");
    EXPECT_EQ(encodeType<TypeParam>(ctx, record, "e", c.ns), expected);
    using F = Functions<TypeParam>;
    EXPECT_EQ(support::encoded(ctx,
                               [&](RuntimeContext *x) {
                                 const auto terminated = [&] {
                                   size_t length = 0;
                                   const char *text = rtxGetOutput(x, &length);
                                   EXPECT_EQ(text[length], '\0');
                                 };
                                 EXPECT_EQ(F::startElement(x, record, "e", c.ns), 0);
                                 terminated();
                                 EXPECT_EQ(F::contents(x, record, c.ns), 0);
                                 terminated();
                                 const int status = F::endElement(x, "e", c.ns);
                                 terminated();
                                 return status;
                               }),
              expected);
  }
}

TYPED_TEST(EncodeType, ContentsUseTheModulesPrefixWhateverTheCallerPasses) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "m", namespaceUri, false), 0);
  const RtxNamespace callers = {"c", "urn:c"};
  CompleteRecord<TypeParam> record(ctx);
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *x) { return Functions<TypeParam>::contents(x, record, &callers); }),
      withPrefix(this->written.contents, "m:"));
}

TYPED_TEST(EncodeType, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    CompleteRecord<TypeParam> record(ctx);
    const RtxNamespace ns = {"c", "urn:c"};
    return Functions<TypeParam>::encode(ctx, record, "e", &ns);
  });
}

TYPED_TEST(EncodeType, TakesNothingFromTheHeap) {
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  encodeType<TypeParam>(ctx, record, "e");
  const size_t used = support::heapStats(ctx).used;
  encodeType<TypeParam>(ctx, record, "e");
  EXPECT_EQ(support::heapStats(ctx).used, used);
}

TYPED_TEST(EncodeType, LeavesTheRecordAsItIs) {
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  unsigned char before[sizeof(TypeParam)];
  std::memcpy(before, static_cast<const TypeParam *>(record), sizeof before);
  encodeType<TypeParam>(ctx, record, "e");
  EXPECT_EQ(std::memcmp(before, static_cast<const TypeParam *>(record), sizeof before), 0);
}

TEST(EncodeAttributes, OfTypesThatCarryNoDeclarations) {
  Context ctx;
  CompleteRecord<NSBinding> binding(ctx);
  CompleteRecord<FilterType> filter(ctx);
  CompleteRecord<FilterSetType> set(ctx);
  struct Case {
    const char *type;
    std::function<int(RuntimeContext *)> attributes;
    std::function<int(RuntimeContext *)> start;
  };
  const Case cases[] = {
      {"NSBinding", [&](RuntimeContext *c) { return QxXmlET_NSBinding_Attrs(c, binding, nullptr); },
       [&](RuntimeContext *c) { return QxXmlET_NSBinding_StartElement(c, binding, nullptr, nullptr); }},
      {"FilterType", [&](RuntimeContext *c) { return QxXmlET_FilterType_Attrs(c, filter, nullptr); },
       [&](RuntimeContext *c) { return QxXmlET_FilterType_StartElement(c, filter, nullptr, nullptr); }},
      {"FilterSetType", [&](RuntimeContext *c) { return QxXmlET_FilterSetType_Attrs(c, set, nullptr); },
       [&](RuntimeContext *c) { return QxXmlET_FilterSetType_StartElement(c, set, nullptr, nullptr); }},
  };
  for (const Case &c : cases) {
    for (const auto &function : {c.attributes, c.start}) {
      const Result result = attempt(ctx, [&](RuntimeContext *x) {
        EXPECT_EQ(rtXmlEncStartElement(x, "e", nullptr, nullptr, false), 0);
        EXPECT_EQ(function(x), 0);
        EXPECT_EQ(x->state, XMLSTATE_IN_ELEMENT);
        return rtXmlEncEndElement(x, "e", nullptr);
      });
      EXPECT_EQ(result.status, 0) << result.errors;
      EXPECT_EQ(result.text, "<e"s + writtenOf(c.type).attributes + "/>");
    }
  }
}

TEST(EncodeCode, AsAnElementAndAsTheTextOfAnother) {
  const RtxNamespace ns = {"p", "urn:p"};
  struct Case {
    uint32_t code;
    const char *word;
  };
  constexpr Case cases[] = {{0, "xpath"}, {1, "namespace"}, {2, "_UNKNOWN_"}, {65537, "namespace"}};
  for (const Case &c : cases) {
    const uint32_t code = c.code;
    const char *const word = c.word;
    Context ctx;
    const std::string element = "<p:t>"s + word + "</p:t>";
    EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *x) { return QxXmlET_TypeType(x, code, "t", &ns); }), element);
    EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *x) { return QxXmlET_TypeType(x, code, nullptr, nullptr); }),
              word);
    EXPECT_EQ(support::encoded(ctx,
                               [&](RuntimeContext *x) {
                                 EXPECT_EQ(QxXmlET_TypeType_StartElement(x, code, "t", &ns), 0);
                                 EXPECT_EQ(QxXmlET_TypeType_Contents(x, code, &ns), 0);
                                 return QxXmlET_TypeType_EndElement(x, "t", &ns);
                               }),
              element);
    support::everyOutputSize([&](RuntimeContext *x) { return QxXmlET_TypeType(x, code, "t", &ns); });
  }
}

TEST(Encode, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    CompleteRecord<FilterSetType> record(ctx);
    return encodeDocument(ctx, record);
  });
}

} // namespace
