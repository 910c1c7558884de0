// Writing a 3GPP IMS body.
#include "PocSettings/QxXmlPocSettings.h"
#include "body.h"
#include "xmlJudge.h"

#include <limits>

using namespace body;
using support::Context;

namespace {

int encodeDocument(RuntimeContext *ctx, const tIMS3GPP *record) { return QxXmlE_ims_3gpp(ctx, record); }

// A record of version 1 with an alternative service, or with service information.
void fillAlternative(RuntimeContext *ctx, tIMS3GPP &record, const char *type = "t", const char *reason = "r") {
  record.version = 1;
  chooseAlternative(ctx, record._choice1, type, reason);
}
void fillInfo(RuntimeContext *ctx, tIMS3GPP &record, const char *text = "i") {
  record.version = 1;
  chooseInfo(ctx, record._choice1, text);
}

const std::string infoDocument = "<ims-3gpp version=\"1\"><service-info>i</service-info></ims-3gpp>";

// ---- Documents ------------------------------------------------------------------------------------------------

TEST(Encode, AllMembersInOrder) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  EXPECT_EQ(encodeRecord(ctx, record), completeDocument);
}

TEST(Encode, ServiceInfo) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  EXPECT_EQ(encodeRecord(ctx, record), infoDocument);
  addForeign(ctx, record->anyElems, "<y/>");
  addForeign(ctx, record->anyElems, nullptr);
  addForeign(ctx, record->anyElems, "<!--as it stands--><z/>");
  EXPECT_EQ(encodeRecord(ctx, record),
            "<ims-3gpp version=\"1\"><service-info>i</service-info><y/><!--as it stands--><z/></ims-3gpp>");
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  EXPECT_TRUE(whole.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << whole;
}

TEST(Encode, StepsOfTheDocumentGiveTheDocument) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  std::vector<std::string> parts;
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlEncStartDocument(c), 0);
    const auto step = [&](int (*function)(RuntimeContext *, const tIMS3GPP *)) {
      EXPECT_EQ(function(c, record), 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0') << "always a terminated text";
      parts.push_back(support::withoutDeclaration(text));
    };
    step(QxXmlE_ims_3gpp_StartElement);
    step(QxXmlE_ims_3gpp_Contents);
    step(QxXmlE_ims_3gpp_EndElement);
    return rtXmlEncEndDocument(c);
  });
  EXPECT_EQ(support::withoutDeclaration(stepwise), completeDocument);
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts[0], completeDocument.substr(0, completeDocument.find("<alternative")));
  EXPECT_EQ(parts[1], completeDocument.substr(0, completeDocument.rfind("</")));
  EXPECT_EQ(parts[2], completeDocument);
}

TEST(Encode, AbsentTextsBecomeEmptyElements) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillAlternative(ctx, *record, nullptr, nullptr);
  EXPECT_EQ(encodeRecord(ctx, record),
            "<ims-3gpp version=\"1\"><alternative-service><type/><reason/></alternative-service></ims-3gpp>");
  Record<tIMS3GPP> info(ctx);
  fillInfo(ctx, *info, nullptr);
  EXPECT_EQ(encodeRecord(ctx, info), "<ims-3gpp version=\"1\"><service-info/></ims-3gpp>");
}

TEST(Encode, EscapesMarkupAndHonoursCdata) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillAlternative(ctx, *record, "a<b&c>d", "a<b]]>&c");
  record->_choice1.u.alternative_service.reason.cdata = true;
  const std::string text = encodeRecord(ctx, record);
  EXPECT_NE(text.find("<![CDATA["), std::string::npos) << text;
  const auto root = support::parseNamespacedXml(text);
  ASSERT_TRUE(root) << text;
  EXPECT_EQ(root->children[0].children[0].text, "a<b&c>d");
  EXPECT_EQ(root->children[0].children[1].text, "a<b]]>&c");

  Record<tIMS3GPP> info(ctx);
  fillInfo(ctx, *info, "<profile id=\"1\"/>");
  EXPECT_NE(encodeRecord(ctx, info).find("<service-info>&lt;profile id="), std::string::npos) << "text, not markup";
  info->_choice1.u.service_info.cdata = true;
  EXPECT_NE(encodeRecord(ctx, info).find("<service-info><![CDATA[<profile id=\"1\"/>]]></service-info>"),
            std::string::npos);
}

TEST(Encode, VersionIsADecimal) {
  struct Version {
    double value;
    const char *text;
  };
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  for (const Version &v : {Version{1, "1"},
                           {0, "0"},
                           {1.5, "1.5"},
                           {-2, "-2"},
                           {0.1, "0.1"},
                           {1e21, "1000000000000000000000"},
                           {0.0000001, "0.0000001"},
                           {16777217, "16777217"}}) {
    record->version = v.value;
    EXPECT_EQ(encodeRecord(ctx, record),
              "<ims-3gpp version=\""s + v.text + "\"><service-info>i</service-info></ims-3gpp>");
  }
}

// ---- No namespace ---------------------------------------------------------------------------------------------

int encodeSettings(RuntimeContext *ctx) {
  poc_settingsType settings;
  EXPECT_EQ(QxInit_poc_settingsType(ctx, &settings), 0);
  return QxXmlE_poc_settings(ctx, &settings);
}

TEST(EncodeWithoutNamespace, DefaultDeclarationOfAnEarlierDocumentDoesNotLeakIn) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  const RtxXmlString text = {false, "emergency"};
  const auto expectNone = [&](const char *what) {
    SCOPED_TRACE(what);
    rtxErrClear(ctx);
    EXPECT_EQ(encodeRecord(ctx, record), infoDocument);
    EXPECT_EQ(
        support::withoutDeclaration(support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_type(c, &text); })),
        "<type>emergency</type>");
  };
  expectNone("first");
  for (int round = 0; round < 2; ++round) {
    EXPECT_NE(support::encoded(ctx, encodeSettings).find(" xmlns="), std::string::npos);
    expectNone("after a document with one");
    char buffer[105]; // up to the end tag
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(encodeSettings(ctx), STATUS_BUFFER_OVERFLOW);
    expectNone("after such a document that failed");
    const std::string document = "<poc-settings xmlns=\"urn:oma:params:xml:ns:poc:poc-settings\"><entity id='e'>";
    ASSERT_EQ(support::setInput(ctx, document), 0);
    EXPECT_EQ(QxXmlV_poc_settings(ctx), STATUS_PARSE_FAILED);
    expectNone("after one that was read in part");
  }
}

TEST(EncodeWithoutNamespace, DefaultOfTheHostDoesNotMoveTheBody) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:host", false), 0);
  EXPECT_EQ(encodeRecord(ctx, record), infoDocument);
  const RtxXmlString text = {false, "emergency"};
  EXPECT_EQ(
      support::withoutDeclaration(support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_action(c, &text); })),
      "<action>emergency</action>");
}

TEST(EncodeWithoutNamespace, DeclarationsOfTheHostServeForeignElements) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  addForeign(ctx, record->anyElems, "<x:f/>");
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "x", "urn:vendor", false), 0);
  EXPECT_EQ(encodeRecord(ctx, record), "<ims-3gpp xmlns:x=\"urn:vendor\" version=\"1\">"
                                       "<service-info>i</service-info><x:f/></ims-3gpp>");
}

TEST(EncodeWithoutNamespace, FlagForPresetNamespacesMeansNothing) {
  Context ctx;
  ctx->flags |= NamespacesPreset;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  EXPECT_EQ(encodeRecord(ctx, record), infoDocument);
}

TEST(EncodeWithoutNamespace, NoTableIsInstalledAndNoRegistryMade) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  encodeRecord(ctx, record);
  const RtxXmlString text = {false, "emergency"};
  support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_action(c, &text); });
  EXPECT_EQ(ctx->globalData, nullptr);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "p", "urn:oma:params:xml:ns:poc:poc-settings", nullptr, 0), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE);
  // A table that is there stays.
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  encodeRecord(ctx, record);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 1);
}

// ---- One document after another -------------------------------------------------------------------------------

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  Record<tIMS3GPP> full(ctx);
  fillCompletely(ctx, *full);
  Record<tIMS3GPP> info(ctx);
  fillInfo(ctx, *info);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(encodeRecord(ctx, full), completeDocument);
    EXPECT_EQ(decode(ctx, infoDocument).record, "info=i version=1");
    EXPECT_EQ(encodeRecord(ctx, info), infoDocument);
    EXPECT_EQ(validate(ctx, completeDocument).status, 0);
  }
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Record<tIMS3GPP> bad(ctx);
  fillInfo(ctx, *bad, "\xFF");
  Record<tIMS3GPP> good(ctx);
  fillInfo(ctx, *good);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, bad), STATUS_INVALID_UTF8);
  rtxErrClear(ctx);
  EXPECT_EQ(encodeRecord(ctx, good), infoDocument);
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillInfo(ctx, *record);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_WRITE_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-106@Enc");
}

TEST(Encode, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tIMS3GPP> record(ctx);
    fillCompletely(ctx, *record);
    return QxXmlE_ims_3gpp(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tIMS3GPP> record(ctx);
    fillInfo(ctx, *record);
    return QxXmlE_ims_3gpp(ctx, record);
  });
  for (const TextDocument &document : textDocuments)
    support::everyOutputSize([&](RuntimeContext *ctx) {
      const RtxXmlString text = {true, "a<b"};
      return document.encode(ctx, &text);
    });
}

TEST(Encode, EveryOutputSizeOfEachType) {
  const RtxNamespace ns = {"p", "urn:p"};
  support::everyOutputSize([&](RuntimeContext *ctx) {
    Record<tIMS3GPP> record(ctx);
    fillCompletely(ctx, *record);
    return QxXmlET_tIMS3GPP(ctx, record, "n", &ns);
  });
  support::everyOutputSize([&](RuntimeContext *ctx) {
    Record<tAlternativeService> record(ctx);
    addAttribute(ctx, record->_anyAttr, "k", "v");
    addForeign(ctx, record->anyElems, "<x/>");
    return QxXmlET_tAlternativeService(ctx, record, "n", &ns);
  });
  support::everyOutputSize([&](RuntimeContext *ctx) {
    Record<tIMS3GPP_1> record(ctx);
    chooseInfo(ctx, *record, "i");
    return QxXmlET_tIMS3GPP_1(ctx, record, "n", &ns);
  });
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  encodeRecord(ctx, record);
  support::HeapBalance balance(ctx);
  const size_t used = support::heapStats(ctx).used;
  encodeRecord(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).used, used);
}

// ---- Types ----------------------------------------------------------------------------------------------------

template <typename T>
std::string encodeInSteps(RuntimeContext *ctx, const T &record, const char *name, const RtxNamespace *ns) {
  using F = Functions<T>;
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return F::encode(c, &record, name, ns); });
  const auto step = [](RuntimeContext *c, int status) {
    EXPECT_EQ(status, 0);
    size_t length = 0;
    const char *text = rtxGetOutput(c, &length);
    EXPECT_EQ(text[length], '\0') << "always a terminated text";
  };
  EXPECT_EQ(support::encoded(ctx,
                             [&](RuntimeContext *c) {
                               step(c, F::startElement(c, &record, name, ns));
                               step(c, F::contents(c, &record, ns));
                               return F::endElement(c, name, ns);
                             }),
            whole);
  return whole;
}

TEST(EncodeType, ElementHasTheCallersNameAndChildrenNoPrefix) {
  const RtxNamespace callers = {"p", "urn:p"};
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "p", "urn:p", false), 0);
  Record<tIMS3GPP> record(ctx);
  fillAlternative(ctx, *record);
  const std::string service = "<type>t</type><reason>r</reason>";
  EXPECT_EQ(encodeInSteps(ctx, *record, "n", &callers),
            "<p:n version=\"1\"><alternative-service>" + service + "</alternative-service></p:n>");
  EXPECT_EQ(encodeInSteps(ctx, record->_choice1.u.alternative_service, "n", &callers), "<p:n>" + service + "</p:n>");
  EXPECT_EQ(encodeInSteps(ctx, record->_choice1.u.alternative_service, "n", nullptr), "<n>" + service + "</n>");
}

TEST(EncodeType, ChoiceHasNoElementOfItsOwn) {
  Context ctx;
  Record<tIMS3GPP_1> choice(ctx);
  chooseInfo(ctx, *choice, "i");
  EXPECT_EQ(encodeInSteps(ctx, *choice, nullptr, nullptr), "<service-info>i</service-info>");
  EXPECT_EQ(encodeInSteps(ctx, *choice, "n", nullptr), "<n><service-info>i</service-info></n>");
  Record<tIMS3GPP_1> other(ctx);
  chooseAlternative(ctx, *other, "t", nullptr);
  EXPECT_EQ(encodeInSteps(ctx, *other, nullptr, nullptr),
            "<alternative-service><type>t</type><reason/></alternative-service>");
}

TEST(EncodeType, AttributesAreTheVersionFirstThenForeignOnes) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  const auto attributes = [&](auto write) {
    return support::encoded(ctx, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "n", nullptr, nullptr, false), 0);
      EXPECT_EQ(write(c), 0);
      EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT) << "attributes end before their step does";
      return QxXmlET_tIMS3GPP_EndElement(c, "n", nullptr);
    });
  };
  EXPECT_EQ(attributes([&](RuntimeContext *c) { return QxXmlET_tIMS3GPP_Attrs(c, record, nullptr); }),
            "<n version=\"1.5\" k=\"3\" l=\"4\"/>");
  const tAlternativeService &service = record->_choice1.u.alternative_service;
  EXPECT_EQ(attributes([&](RuntimeContext *c) { return QxXmlET_tAlternativeService_Attrs(c, &service, nullptr); }),
            "<n k=\"1\" l=\"2\"/>");
}

// ---- Failures -------------------------------------------------------------------------------------------------

TEST(EncodeFailure, SelectorThatNamesNothingIsRefused) {
  for (uint16_t selector : {uint16_t{0}, uint16_t{3}, uint16_t{5}, uint16_t{65535}}) {
    Context ctx;
    Record<tIMS3GPP> record(ctx);
    record->version = 1;
    record->_choice1.t = selector;
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(encodeDocument(ctx, record), STATUS_INVALID_CHOICE);
    EXPECT_EQ(errorsOf(ctx), "-9(" + std::to_string(selector) + ")@Enc<Enc<Enc<Enc")
        << "the choice, its element, the body's contents, the document";
    EXPECT_EQ(rtxErrAt(ctx, 0)->params[0].kind, RTX_PARAM_TEXT);
    EXPECT_EQ(support::withoutDeclaration(support::outputText(ctx)), "<ims-3gpp version=\"1\">")
        << "what was written stays";
    rtxErrClear(ctx);
    EXPECT_EQ(QxXmlET_tIMS3GPP_1_Contents(ctx, &record->_choice1, nullptr), STATUS_INVALID_CHOICE);
  }
}

TEST(EncodeFailure, TextThatIsNotUtf8IsFoundBeforeItsTag) {
  const std::string before = "<ims-3gpp version=\"1\">";
  for (const char *text : {"bad\xFF", "\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
    SCOPED_TRACE(testing::PrintToString(text));
    const auto expectRefused = [&](const char *type, const char *reason, const std::string &written,
                                   const char *errors) {
      Context ctx;
      Record<tIMS3GPP> record(ctx);
      if (type != nullptr) fillAlternative(ctx, *record, type, reason);
      if (type == nullptr) fillInfo(ctx, *record, reason);
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(encodeDocument(ctx, record), STATUS_INVALID_UTF8);
      EXPECT_EQ(errorsOf(ctx), errors);
      // A start tag that is open has not got its ">" yet.
      const std::string output = support::withoutDeclaration(support::outputText(ctx));
      EXPECT_EQ(output.ends_with(">") ? output : output + ">", before + written);
      const RtxError &error = *rtxErrAt(ctx, 0);
      for (uint32_t i = 0; i < error.siteCount; ++i) {
        EXPECT_STREQ(error.sites[i].path, "xmlAddOns/addons/IMS/ImCn/QxXmlImCnEnc");
        for (uint32_t j = 0; j < i; ++j)
          EXPECT_NE(error.sites[i].line, error.sites[j].line);
      }
    };
    expectRefused(text, "r", "<alternative-service>", "-102@Enc<Enc<Enc<Enc<Enc<Enc");
    expectRefused("t", text, "<alternative-service><type>t</type>", "-102@Enc<Enc<Enc<Enc<Enc<Enc");
    expectRefused(nullptr, text, "", "-102@Enc<Enc<Enc<Enc");
  }
}

// Text that is not UTF-8 is found by a check of its own, a forbidden character by whoever writes the element.
TEST(EncodeFailure, CharacterThatXmlCannotCarryIsFoundWhereItIsWritten) {
  for (bool info : {false, true}) {
    std::vector<int> lines;
    for (const char *text : {"\xFF", "\x01"}) {
      Context ctx;
      Record<tIMS3GPP> record(ctx);
      if (info) fillInfo(ctx, *record, text);
      if (!info) fillAlternative(ctx, *record, "t", text);
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(encodeDocument(ctx, record), STATUS_INVALID_UTF8);
      EXPECT_EQ(errorsOf(ctx), info ? "-102@Enc<Enc<Enc<Enc" : "-102@Enc<Enc<Enc<Enc<Enc<Enc");
      lines.push_back(rtxErrAt(ctx, 0)->sites[0].line);
    }
    EXPECT_NE(lines[0], lines[1]);
  }
}

TEST(EncodeFailure, AttributeOfTheRootCostsTheAttributesNotTheDocument) {
  const auto expectWritten = [](double version, const char *name, const char *value, const char *written) {
    Context ctx;
    Record<tIMS3GPP> record(ctx);
    fillInfo(ctx, *record);
    record->version = version;
    addAttribute(ctx, record->_anyAttr, name, value);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(encodeDocument(ctx, record), 0);
    EXPECT_EQ(errorsOf(ctx), "-102@Enc") << "it is recorded";
    EXPECT_EQ(support::withoutDeclaration(support::outputText(ctx)),
              written + "<service-info>i</service-info></ims-3gpp>"s);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  };
  expectWritten(std::numeric_limits<double>::quiet_NaN(), "k", "v", "<ims-3gpp>");
  expectWritten(std::numeric_limits<double>::infinity(), "k", "v", "<ims-3gpp>");
  expectWritten(-std::numeric_limits<double>::infinity(), "k", "v", "<ims-3gpp>");
  expectWritten(1, "k", "\xFF", "<ims-3gpp version=\"1\">");
  expectWritten(1, "no name", "v", "<ims-3gpp version=\"1\">");
}

TEST(EncodeFailure, AttributeOfAnAlternativeServiceEndsTheDocument) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillAlternative(ctx, *record);
  addAttribute(ctx, record->_choice1.u.alternative_service._anyAttr, "no name", "v");
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_INVALID_UTF8);
  EXPECT_EQ(errorsOf(ctx), "-102@Enc<Enc<Enc<Enc<Enc<Enc");
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT) << "the state of attributes does not stay";
}

// ---- Documents that are a text --------------------------------------------------------------------------------

TEST(EncodeText, TextInItsRoot) {
  for (const TextDocument &document : textDocuments) {
    const std::string root = document.root;
    Context ctx;
    const auto written = [&](const RtxXmlString &text) {
      return support::withoutDeclaration(
          support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, &text); }));
    };
    EXPECT_EQ(written({false, "emergency"}), "<" + root + ">emergency</" + root + ">");
    EXPECT_EQ(written({false, " a<b&\xC3\xA9 "}), "<" + root + "> a&lt;b&amp;\xC3\xA9 </" + root + ">");
    EXPECT_EQ(written({true, "a<b"}), "<" + root + "><![CDATA[a<b]]></" + root + ">");
    for (const char *none : {"", static_cast<const char *>(nullptr)}) {
      const auto tree = support::parseNamespacedXml(written({false, none}));
      ASSERT_TRUE(tree);
      EXPECT_EQ(tree->infoset(), "{}" + root + "[]()");
    }
    EXPECT_EQ(ctx->globalData, nullptr);
  }
}

TEST(EncodeText, StepsGiveTheDocument) {
  for (const TextDocument &document : textDocuments) {
    const std::string root = document.root;
    const RtxXmlString text = {false, "t"};
    Context ctx;
    std::vector<std::string> parts;
    const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartDocument(c), 0);
      for (const auto step : {document.startElement, document.contents, document.endElement}) {
        EXPECT_EQ(step(c, &text), 0);
        size_t length = 0;
        const char *output = rtxGetOutput(c, &length);
        EXPECT_EQ(output[length], '\0') << "always a terminated text";
        parts.push_back(support::withoutDeclaration(output));
      }
      return rtXmlEncEndDocument(c);
    });
    EXPECT_EQ(parts, std::vector<std::string>({"<" + root + ">", "<" + root + ">t", "<" + root + ">t</" + root + ">"}));
    EXPECT_EQ(support::withoutDeclaration(stepwise), parts[2]);
  }
}

TEST(EncodeText, TextThatXmlCannotCarryIsRefused) {
  for (const TextDocument &document : textDocuments) {
    std::vector<int> lines;
    for (const char *bad : {"bad\xFF", "\x01"}) {
      Context ctx;
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      const RtxXmlString text = {false, bad};
      EXPECT_EQ(document.encode(ctx, &text), STATUS_INVALID_UTF8);
      EXPECT_EQ(errorsOf(ctx), "-102@Enc<Enc");
      EXPECT_EQ(support::withoutDeclaration(support::outputText(ctx)), "<"s + document.root + ">");
      lines.push_back(rtxErrAt(ctx, 0)->sites[0].line);
    }
    EXPECT_NE(lines[0], lines[1]) << "a check of its own for what is not UTF-8";
  }
}

} // namespace
