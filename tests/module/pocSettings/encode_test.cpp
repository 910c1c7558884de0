// Writing push-to-talk settings.
#include "settings.h"
#include "xmlJudge.h"

using namespace settings;
using support::Context;

namespace {

const std::string open = "<poc-settings xmlns=\""s + namespaceUri + "\">";
const std::string close = "</poc-settings>";

int encodeDocument(RuntimeContext *ctx, const poc_settingsType *record) { return QxXmlE_poc_settings(ctx, record); }

// What one element of a type becomes under a name and a namespace, in one call or, the same, in steps.
template <typename T> std::string encodeType(RuntimeContext *ctx, const T &record, const char *name = "n") {
  using F = Functions<T>;
  const std::string whole =
      support::encoded(ctx, [&](RuntimeContext *c) { return F::encode(c, &record, name, nullptr); });
  const auto step = [](RuntimeContext *c, int status) {
    EXPECT_EQ(status, 0);
    size_t length = 0;
    const char *text = rtxGetOutput(c, &length);
    EXPECT_EQ(text[length], '\0') << "always a terminated text";
    EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT) << "attributes end before their step does";
  };
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    step(c, F::startElement(c, &record, name, nullptr));
    step(c, F::contents(c, &record, nullptr));
    return F::endElement(c, name, nullptr);
  });
  EXPECT_EQ(stepwise, whole);
  const std::string withOwnTags = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlEncStartElement(c, name, nullptr, nullptr, false), 0);
    EXPECT_EQ(F::attributes(c, &record, nullptr), 0);
    EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT);
    EXPECT_EQ(F::contents(c, &record, nullptr), 0);
    return F::endElement(c, name, nullptr);
  });
  EXPECT_EQ(withOwnTags, whole);
  return whole;
}

// ---- Documents ------------------------------------------------------------------------------------------------

TEST(Encode, NothingButTheRootAndItsDeclaration) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  EXPECT_EQ(encodeRecord(ctx, record), open + close);
}

TEST(Encode, AllMembersInOrder) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  fillCompletely(ctx, *record);
  EXPECT_EQ(encodeRecord(ctx, record), completeDocument);
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  EXPECT_TRUE(whole.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << whole;
}

TEST(Encode, StepsOfTheDocumentGiveTheDocument) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  fillCompletely(ctx, *record);
  std::vector<std::string> parts;
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_IMS_NSURI(c), QX_URI_SLOTS), 0);
    EXPECT_EQ(rtXmlEncStartDocument(c), 0);
    const auto step = [&](int (*function)(RuntimeContext *, const poc_settingsType *)) {
      EXPECT_EQ(function(c, record), 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0') << "always a terminated text";
      parts.push_back(support::withoutDeclaration(text));
    };
    step(QxXmlE_poc_settings_StartElement);
    step(QxXmlE_poc_settings_Contents);
    step(QxXmlE_poc_settings_EndElement);
    return rtXmlEncEndDocument(c);
  });
  EXPECT_EQ(support::withoutDeclaration(stepwise), completeDocument);
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts[0], completeDocument.substr(0, completeDocument.find("<entity")));
  EXPECT_EQ(parts[1], completeDocument.substr(0, completeDocument.rfind("</")));
  EXPECT_EQ(parts[2], completeDocument);
}

TEST(Encode, DeclaresTheDefaultNamespaceWhateverTheHostHasDeclared) {
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for uri, null: the default namespace
    const char *uri;    // null: none declared
  };
  const Case cases[] = {
      {"nothing", nullptr, nullptr},
      {"a prefix for this namespace", "h", namespaceUri},
      {"this namespace as the default one", nullptr, namespaceUri},
      {"a prefix for another namespace", "h", "urn:other"},
  };
  for (const Case &c : cases) {
    for (bool preset : {false, true}) {
      SCOPED_TRACE(c.what + (preset ? ", preset"s : ""s));
      Context ctx;
      if (preset) ctx->flags |= NamespacesPreset;
      if (c.uri != nullptr) {
        ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
      }
      Record<poc_settingsType> record(ctx);
      addEntity(ctx, *record, "a");
      for (int round = 1; round <= 3; ++round) {
        const std::string text = encodeRecord(ctx, record);
        EXPECT_NE(text.find(" xmlns=\""s + namespaceUri + "\""), std::string::npos) << text;
        EXPECT_NE(text.find("<entity id=\"a\"/>"), std::string::npos) << "children go without a prefix: " << text;
        const auto root = support::parseNamespacedXml(text);
        ASSERT_TRUE(root) << text;
        EXPECT_EQ(root->uri, namespaceUri);
      }
      EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, preset);
    }
  }
}

TEST(Encode, IsInItsNamespaceThoughTheHostHasAnotherDefaultOne) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:other", false), 0);
  Record<poc_settingsType> record(ctx);
  addEntity(ctx, *record, "a");
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{"s + namespaceUri + "}poc-settings[]({" + namespaceUri + "}entity[id=\"a\"]())");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:other"), "") << "the host's declaration is in force again";
}

TEST(Encode, HostsDeclarationsServeForeignElementsAndAttributes) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "x", "urn:vendor", false), 0);
  Record<poc_settingsType> record(ctx);
  addForeign(ctx, record->anyElems, "<x:f/>");
  addAttribute(ctx, record->_anyAttr, "x:k", "v");
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{"s + namespaceUri + "}poc-settings[{urn:vendor}k=\"v\"]({urn:vendor}f[]())");
}

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  Record<poc_settingsType> full(ctx);
  fillCompletely(ctx, *full);
  Record<poc_settingsType> empty(ctx);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(encodeRecord(ctx, full), completeDocument);
    EXPECT_EQ(decode(ctx, document("<entity id='b'/>")).record, "[id=b]");
    EXPECT_EQ(encodeRecord(ctx, empty), open + close);
    EXPECT_EQ(validate(ctx, document("<entity id='b'/>")).status, 0);
  }
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Record<poc_settingsType> bad(ctx);
  addEntity(ctx, *bad, "\x01");
  Record<poc_settingsType> good(ctx);
  addEntity(ctx, *good, "a");
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, bad), STATUS_INVALID_UTF8);
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  rtxErrClear(ctx);
  EXPECT_EQ(encodeRecord(ctx, good), open + "<entity id=\"a\"/>" + close);
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_WRITE_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-106@Enc");
}

TEST(Encode, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<poc_settingsType> record(ctx);
    fillCompletely(ctx, *record);
    return QxXmlE_poc_settings(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<poc_settingsType> record(ctx);
    return QxXmlE_poc_settings(ctx, record);
  });
}

TEST(Encode, EveryOutputSizeOfEachType) {
  forEachType([]<typename T>() {
    support::everyOutputSize([](RuntimeContext *ctx) {
      Record<T> record(ctx);
      if constexpr (Functions<T>::shape == Shape::active) record->active = true;
      if constexpr (Functions<T>::shape == Shape::setting) valueOf(*record) = true;
      if constexpr (Functions<T>::shape == Shape::entity) record->id = xmlString(ctx, "a");
      if constexpr (Functions<T>::shape != Shape::active) {
        addForeign(ctx, record->anyElems, "<x/>");
        addAttribute(ctx, record->_anyAttr, "k", "v");
      }
      const RtxNamespace ns = {"p", "urn:p"};
      return Functions<T>::encode(ctx, record, "n", &ns);
    });
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    const RtxNamespace ns = {"p", "urn:p"};
    return QxXmlET_amSettingType_answer_mode(ctx, 1, "n", &ns);
  });
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  fillCompletely(ctx, *record);
  encodeRecord(ctx, record);
  support::HeapBalance balance(ctx);
  const size_t used = support::heapStats(ctx).used;
  encodeRecord(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).used, used);
}

// ---- Entities -------------------------------------------------------------------------------------------------

TEST(EncodeEntity, WithoutSettingsIsItsIdAlone) {
  Context ctx;
  Record<entityType> record(ctx);
  record->id = xmlString(ctx, "a");
  EXPECT_EQ(encodeType(ctx, *record), "<n id=\"a\"/>");
}

TEST(EncodeEntity, AlwaysHasAnId) {
  Context ctx;
  Record<entityType> record(ctx);
  EXPECT_EQ(encodeType(ctx, *record), "<n id=\"\"/>");
  addAttribute(ctx, record->_anyAttr, "k", "v");
  EXPECT_EQ(encodeType(ctx, *record), "<n id=\"\" k=\"v\"/>") << "the id comes first";
}

TEST(EncodeEntity, EachBitWritesItsOwnSetting) {
  const char *const children[] = {"<isb-settings><incoming-session-barring active=\"true\"/></isb-settings>",
                                  "<am-settings><answer-mode>manual</answer-mode></am-settings>",
                                  "<ipab-settings><incoming-personal-alert-barring active=\"true\"/></ipab-settings>",
                                  "<sss-settings><simultaneous-sessions-support active=\"true\"/></sss-settings>"};
  Context ctx;
  Record<entityType> record(ctx);
  forEachSetting(*record, [](auto &setting) { valueOf(setting) = 1; });
  for (uint32_t m = 0; m < 16; ++m) {
    std::string expected;
    for (uint32_t i = 0; i < 4; ++i)
      if ((m >> i & 1) != 0) expected += children[i];
    record->m = m;
    EXPECT_EQ(encodeType(ctx, *record), expected.empty() ? "<n id=\"\"/>" : "<n id=\"\">" + expected + "</n>");
  }
  record->m = ~15u;
  EXPECT_EQ(encodeType(ctx, *record), "<n id=\"\"/>") << "other bits mean nothing";
  record->m = 0;
}

TEST(EncodeEntity, SettingUnderAClearBitIsNotLookedAt) {
  Context ctx;
  Record<entityType> record(ctx);
  forEachSetting(*record, [&](auto &setting) { addAttribute(ctx, setting._anyAttr, "no name", "\xFF"); });
  EXPECT_EQ(encodeType(ctx, *record), "<n id=\"\"/>");
  record->m = 15;
}

TEST(EncodeEntity, IdIsEscapedAsAnAttribute) {
  Context ctx;
  Record<entityType> record(ctx);
  const char *id = " a<b>&\"c\"\t\n'\xC3\xA9";
  record->id = xmlString(ctx, id, true);
  const std::string text = encodeType(ctx, *record);
  const auto element = support::parseNamespacedXml(text);
  ASSERT_TRUE(element) << text;
  ASSERT_EQ(element->attributes.size(), 1u);
  EXPECT_EQ(element->attributes[0].second, id) << "the flag for sections means nothing here";
}

// ---- Settings -------------------------------------------------------------------------------------------------

TEST(EncodeSetting, ValueAlwaysThenForeignElements) {
  const auto check = []<typename Setting>(const std::string &off, const std::string &on) {
    SCOPED_TRACE(Functions<Setting>::name);
    Context ctx;
    Record<Setting> record(ctx);
    valueOf(*record) = 0;
    EXPECT_EQ(encodeType(ctx, *record), "<n>" + off + "</n>");
    valueOf(*record) = 1;
    addForeign(ctx, record->anyElems, "<x a='1'>&amp;</x>");
    addForeign(ctx, record->anyElems, nullptr);
    addForeign(ctx, record->anyElems, "<!--as it stands--><y/>");
    addAttribute(ctx, record->_anyAttr, "k", "<");
    addAttribute(ctx, record->_anyAttr, "l", nullptr);
    EXPECT_EQ(encodeType(ctx, *record), "<n k=\"&lt;\" l=\"\">" + on + "<x a='1'>&amp;</x><!--as it stands--><y/></n>");
  };
  check.operator()<isbSettingType>("<incoming-session-barring active=\"false\"/>",
                                   "<incoming-session-barring active=\"true\"/>");
  check.operator()<amSettingType>("<answer-mode>automatic</answer-mode>", "<answer-mode>manual</answer-mode>");
  check.operator()<ipabSettingType>("<incoming-personal-alert-barring active=\"false\"/>",
                                    "<incoming-personal-alert-barring active=\"true\"/>");
  check.operator()<sssSettingType>("<simultaneous-sessions-support active=\"false\"/>",
                                   "<simultaneous-sessions-support active=\"true\"/>");
}

TEST(EncodeSetting, NestedElementsNeverHaveContent) {
  Context ctx;
  for (bool active : {false, true}) {
    const std::string text = "<n active=\""s + (active ? "true" : "false") + "\"/>";
    EXPECT_EQ(encodeType(ctx, isbSettingType_incoming_session_barring{active}), text);
    EXPECT_EQ(encodeType(ctx, ipabSettingType_incoming_personal_alert_barring{active}), text);
    EXPECT_EQ(encodeType(ctx, sssSettingType_simultaneous_sessions_support{active}), text);
  }
}

TEST(EncodeSetting, AnswerModeWithoutATextIsWrittenAsUnknown) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  entityType &entity = *addEntity(ctx, *record, "a");
  entity.m = entityType_has_am_settings;
  for (uint16_t code : {uint16_t{2}, uint16_t{255}, uint16_t{65535}}) {
    entity.am_settings.answer_mode = code;
    EXPECT_EQ(encodeRecord(ctx, record),
              open + "<entity id=\"a\"><am-settings><answer-mode>_UNKNOWN_</answer-mode></am-settings></entity>" +
                  close);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(EncodeAnswerMode, InOneCallOrInSteps) {
  struct Case {
    uint32_t code;
    const char *text;
  };
  Context ctx;
  for (const Case &c : {Case{0, "automatic"}, {1, "manual"}, {2, "_UNKNOWN_"}, {65536 + 1, "manual"}}) {
    const RtxNamespace ns = {"p", "urn:p"};
    const std::string expected = "<p:n>"s + c.text + "</p:n>";
    EXPECT_EQ(support::encoded(
                  ctx, [&](RuntimeContext *x) { return QxXmlET_amSettingType_answer_mode(x, c.code, "n", &ns); }),
              expected);
    EXPECT_EQ(support::encoded(ctx,
                               [&](RuntimeContext *x) {
                                 EXPECT_EQ(QxXmlET_amSettingType_answer_mode_StartElement(x, c.code, "n", &ns), 0);
                                 EXPECT_EQ(support::outputText(x), "<p:n>") << "closed at once";
                                 EXPECT_EQ(QxXmlET_amSettingType_answer_mode_Contents(x, c.code, &ns), 0);
                                 return QxXmlET_amSettingType_answer_mode_EndElement(x, "n", &ns);
                               }),
              expected);
    EXPECT_EQ(
        support::encoded(
            ctx, [&](RuntimeContext *x) { return QxXmlET_amSettingType_answer_mode(x, c.code, nullptr, nullptr); }),
        c.text)
        << "without a name the text alone";
  }
}

// ---- Names ----------------------------------------------------------------------------------------------------

TEST(EncodeType, ElementHasTheCallersNameAndChildrenTheModules) {
  const RtxNamespace callers = {"p", "urn:p"};
  const RtxNamespace defaultOne = {"", "urn:p"};
  struct Case {
    const RtxNamespace *ns;
    const char *childPrefix; // bound by the host for this module's namespace; null: not bound
    const char *expected;
  };
  const Case cases[] = {
      {&callers, nullptr, "<p:n><answer-mode>manual</answer-mode></p:n>"},
      {&defaultOne, nullptr, "<n><answer-mode>manual</answer-mode></n>"},
      {nullptr, nullptr, "<n><answer-mode>manual</answer-mode></n>"},
      {&callers, "c", "<p:n><c:answer-mode>manual</c:answer-mode></p:n>"},
  };
  for (const Case &c : cases) {
    Context ctx;
    if (c.childPrefix != nullptr) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.childPrefix, namespaceUri, false), 0);
    }
    Record<amSettingType> record(ctx);
    record->answer_mode = 1;
    EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *x) { return QxXmlET_amSettingType(x, record, "n", c.ns); }),
              c.expected);
  }
}

TEST(EncodeType, WithoutANameTheTagsAreTheCallers) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "c", namespaceUri, false), 0);
  Record<isbSettingType> record(ctx);
  record->incoming_session_barring.active = true;
  addAttribute(ctx, record->_anyAttr, "k", "v");
  EXPECT_EQ(support::encoded(ctx,
                             [&](RuntimeContext *x) {
                               EXPECT_EQ(rtXmlEncStartElement(x, "mine", nullptr, nullptr, false), 0);
                               EXPECT_EQ(QxXmlET_isbSettingType(x, record, nullptr, nullptr), 0);
                               return QxXmlET_isbSettingType_EndElement(x, "mine", nullptr);
                             }),
            "<mine k=\"v\"><c:incoming-session-barring active=\"true\"/></mine>");
}

// ---- Failures -------------------------------------------------------------------------------------------------

TEST(EncodeFailure, AttributeOfTheRootCostsTheAttributeNotTheDocument) {
  struct Case {
    const char *name;
    const char *value;
    int status;
  };
  const Case cases[] = {{"k", "bad\xFF", STATUS_INVALID_UTF8},
                        {"k", "\x01", STATUS_INVALID_UTF8},
                        {"no name", "v", STATUS_INVALID_UTF8},
                        {nullptr, "v", STATUS_INVALID_UTF8},
                        {"first", "v", STATUS_WRITE_FAILED}};
  for (const Case &c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.name) + " = " + testing::PrintToString(c.value));
    Context ctx;
    Record<poc_settingsType> record(ctx);
    addAttribute(ctx, record->_anyAttr, "first", "1");
    addAttribute(ctx, record->_anyAttr, c.name, c.value);
    addEntity(ctx, *record, "a");
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(encodeDocument(ctx, record), 0);
    EXPECT_EQ(errorsOf(ctx), std::to_string(c.status) + "@Enc") << "it is recorded";
    const std::string text = support::outputText(ctx);
    const auto root = support::parseNamespacedXml(text);
    ASSERT_TRUE(root) << text;
    EXPECT_EQ(root->children.size(), 1u);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  }
}

// Each place at which the text of a record may be one that XML cannot carry, or an attribute's name none.
TEST(EncodeFailure, DeepInsideCarriesItsTrail) {
  struct Case {
    const char *what;
    void (*spoil)(RuntimeContext *ctx, poc_settingsType &record);
    const char *errors;
    const char *writtenBefore; // the last that was
  };
  const auto entityOf = [](poc_settingsType &record) -> entityType & {
    return *static_cast<entityType *>(record.entity.tail->data);
  };
  static constexpr auto last = entityOf;
  const Case cases[] = {
      {"id", [](RuntimeContext *, poc_settingsType &r) { std::memset(const_cast<char *>(last(r).id.value), 1, 1); },
       "-102@Enc<Enc<Enc<Enc", "<entity"},
      {"attribute of an entity",
       [](RuntimeContext *ctx, poc_settingsType &r) { addAttribute(ctx, last(r)._anyAttr, "m", "\x01"); },
       "-102@Enc<Enc<Enc<Enc", "<entity id=\"b\""},
      {"attribute of isb-settings",
       [](RuntimeContext *ctx, poc_settingsType &r) { addAttribute(ctx, last(r).isb_settings._anyAttr, "m", "\xFF"); },
       "-102@Enc<Enc<Enc<Enc<Enc<Enc", "<isb-settings"},
      {"attribute of am-settings",
       [](RuntimeContext *ctx, poc_settingsType &r) { addAttribute(ctx, last(r).am_settings._anyAttr, "k", "twice"); },
       "-106@Enc<Enc<Enc<Enc<Enc<Enc", "<am-settings"},
      {"attribute of ipab-settings",
       [](RuntimeContext *ctx, poc_settingsType &r) { addAttribute(ctx, last(r).ipab_settings._anyAttr, "a b", "v"); },
       "-102@Enc<Enc<Enc<Enc<Enc<Enc", "<ipab-settings"},
      {"attribute of sss-settings",
       [](RuntimeContext *ctx, poc_settingsType &r) { addAttribute(ctx, last(r).sss_settings._anyAttr, "", "v"); },
       "-102@Enc<Enc<Enc<Enc<Enc<Enc", "<sss-settings"},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.what);
    Context ctx;
    Record<poc_settingsType> record(ctx);
    fillCompletely(ctx, *record);
    c.spoil(ctx, *record);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_LT(encodeDocument(ctx, record), 0);
    EXPECT_EQ(errorsOf(ctx), c.errors);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT) << "the state of attributes does not stay";
    const std::string written = support::withoutDeclaration(support::outputText(ctx));
    EXPECT_TRUE(completeDocument.starts_with(written)) << "what was written stays: " << written;
    EXPECT_TRUE(written.ends_with(c.writtenBefore)) << written;
    // The trail leads through every function that it passed, each at a place of its own.
    const RtxError &error = *rtxErrAt(ctx, 0);
    for (uint32_t i = 0; i < error.siteCount; ++i) {
      EXPECT_STREQ(error.sites[i].path, "xmlAddOns/addons/IMS/PocSettings/QxXmlPocSettingsEnc");
      for (uint32_t j = 0; j < i; ++j)
        EXPECT_NE(error.sites[i].line, error.sites[j].line);
    }
  }
}

TEST(EncodeFailure, NoRoomIsRecordedWithTheEncodersFile) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  addEntity(ctx, *record, "a");
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  std::vector<char> buffer(whole.size());
  ASSERT_EQ(rtxSetOutput(ctx, buffer.data(), buffer.size()), 0);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_BUFFER_OVERFLOW);
  EXPECT_EQ(errorsOf(ctx), "-1@Enc<Enc") << "the end tag, then the document";
}

} // namespace
