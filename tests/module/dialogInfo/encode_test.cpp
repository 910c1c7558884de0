// Writing dialog state.
#include "dialogs.h"
#include "faults.h"
#include "xmlJudge.h"

#include "IsComposing/QxXmlIsComposing.h"

#include <set>

using namespace dialogs;
using support::Context;

namespace {

const std::string sourcePath = "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfoEnc";
const std::string ours = namespaceUri;
const std::string oursAsTns = " xmlns:tns=\"" + ours + "\"";

// ---- What complete records come to ----------------------------------------------------------------------------

// How a type is written: its attributes and its children with their presence bits. "~" stands for the prefix of
// children and its colon.
struct Shape {
  Parts attributes;
  std::string declarations;
  Parts contents;
  bool tagStaysOpen = true; // types without attributes close their start tag at once

  std::string attributesOf(uint32_t m) const { return present(attributes, m); }
  std::string contentsOf(uint32_t m) const { return present(contents, m); }
  uint32_t bits() const { return allBits(attributes) | allBits(contents); }

  // An element with all that the shape has, or with these bits.
  std::string element(const std::string &name, uint32_t m = ~0u) const {
    const std::string start = "<" + name + attributesOf(m) + declarations;
    const std::string content = contentsOf(m);
    if (tagStaysOpen && content.empty()) return start + "/>";
    return start + ">" + content + "</" + name + ">";
  }
};

const Shape stateShape = {
    {{1, " event=\"local-bye\""}, {2, " code=\"200\""}}, " xmlns:x=\"urn:x\"", {{0, "confirmed"}}};
const Shape replacesShape = {{{0, " call-id=\"rep-call\" local-tag=\"rep-local\" remote-tag=\"rep-remote\""}}, "", {}};
const Shape nameaddrShape = {{{1, " display-name=\"Ann\""}}, " xmlns:y=\"urn:y\"", {{0, "sip:ann"}}};
const Shape routeSetShape = {{}, "", {{0, "<~hop>sip:hop1</~hop><~hop>sip:hop2</~hop>"}}, false};
const Shape paramShape = {{{0, " pname=\"rendering\" pval=\"no\""}}, "", {}};
const Shape targetShape = {{{0, " uri=\"sip:target\""}},
                           "",
                           {{0, "<~param pname=\"audio\" pval=\"yes\"/><~param pname=\"rendering\" pval=\"no\"/>"}}};
const Shape sessdShape = {{{0, " type=\"application/sdp\""}}, " xmlns:z=\"urn:z\"", {{0, "v=0"}}};
const Shape participantShape = {{},
                                "",
                                {{1, nameaddrShape.element("~identity")},
                                 {2, targetShape.element("~target")},
                                 {4, sessdShape.element("~session-description")},
                                 {8, "<~cseq>17</~cseq>"},
                                 {0, "<f/><g>1</g>"}},
                                false};
const Shape dialogShape = {{{0, " id=\"d1\""},
                            {64, " call-id=\"call\""},
                            {128, " local-tag=\"local\""},
                            {256, " remote-tag=\"remote\""},
                            {512, " direction=\"recipient\""}},
                           "",
                           {{0, stateShape.element("~state")},
                            {1, "<~duration>90</~duration>"},
                            {2, replacesShape.element("~replaces")},
                            {4, nameaddrShape.element("~referred-by")},
                            {8, routeSetShape.element("~route-set")},
                            {16, participantShape.element("~local")},
                            {32, participantShape.element("~remote")},
                            {0, "<h/><i/>"}}};
const Shape infoShape = {{{0, " version=\"5\" state=\"partial\" entity=\"sip:entity\""}},
                         "",
                         {{0, dialogShape.element("~dialog") + "<~dialog id=\"d2\"><~state/></~dialog>" + "<j/><k/>"}}};

template <typename T> const Shape &shapeOf();
template <> const Shape &shapeOf<tns__state>() { return stateShape; }
template <> const Shape &shapeOf<tns__dialog_replaces>() { return replacesShape; }
template <> const Shape &shapeOf<tns_nameaddr>() { return nameaddrShape; }
template <> const Shape &shapeOf<tns__dialog_route_set>() { return routeSetShape; }
template <> const Shape &shapeOf<tns_participant_target_param>() { return paramShape; }
template <> const Shape &shapeOf<tns_participant_target>() { return targetShape; }
template <> const Shape &shapeOf<tns_sessd>() { return sessdShape; }
template <> const Shape &shapeOf<tns_participant>() { return participantShape; }
template <> const Shape &shapeOf<tns__dialog>() { return dialogShape; }
template <> const Shape &shapeOf<tns__dialog_info>() { return infoShape; }

template <typename T> void setPresence(T &record, uint32_t m) {
  if constexpr (requires { record.m; }) record.m = m;
}

template <typename T> std::string encodedElement(RuntimeContext *ctx, T *record, const char *name = "e") {
  return support::encoded(ctx, [=](RuntimeContext *c) { return Functions<T>::encode(c, record, name, nullptr); });
}

// What was written of an encoding with this status; it need not end as one of the library's functions ends.
template <typename Encode> std::string encodedInPart(RuntimeContext *ctx, int status, Encode encode) {
  rtxErrClear(ctx);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encode(ctx), status);
  return support::outputText(ctx);
}

// Status and parameters of all records, without their trail.
std::string errorsWithoutTrail(RuntimeContext *ctx) {
  std::string all;
  for (const std::string &text : support::errorTexts(ctx))
    all += (all.empty() ? "" : "; ") + text.substr(0, text.find('@'));
  return all;
}

// The lines of the only record's trail, having checked that they are all of the encoders' source.
std::vector<int> trail(RuntimeContext *ctx) {
  std::vector<int> lines;
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  const RtxError *error = rtxErrAt(ctx, 0);
  if (error == nullptr) return lines;
  EXPECT_EQ(error->siteCount, error->siteTotal);
  for (uint32_t i = 0; i < error->siteCount; ++i) {
    EXPECT_EQ(error->sites[i].path, sourcePath);
    EXPECT_GT(error->sites[i].line, 0);
    lines.push_back(error->sites[i].line);
  }
  return lines;
}

size_t occurrences(const std::string &text, const std::string &what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
    ++count;
  return count;
}

// ---- Types ----------------------------------------------------------------------------------------------------

struct ChildPrefix {
  const char *bound; // by the host for the module's namespace; null: not bound
  const char *written;
};
constexpr ChildPrefix childPrefixes[] = {{"c", "c:"}, {nullptr, ""}};

void bindChildPrefix(RuntimeContext *ctx, const ChildPrefix &prefix) {
  if (prefix.bound == nullptr) return;
  EXPECT_EQ(rtXmlNSSetNamespace(ctx, nullptr, prefix.bound, namespaceUri, false), 0);
}

TEST(EncodeType, WritesEachMemberUnderItsBitInOrder) {
  const RtxNamespace callers = {"p", "urn:p"};
  forEachType([&]<typename T>() {
    const Shape &shape = shapeOf<T>();
    for (const ChildPrefix &prefix : childPrefixes) {
      Context ctx;
      bindChildPrefix(ctx, prefix);
      CompleteRecord<T> record(ctx);
      const uint32_t all = shape.bits();
      for (uint32_t m = 0; m <= all; ++m) {
        setPresence(*record, m);
        const std::string text =
            support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, "e", &callers); });
        ASSERT_EQ(text, replaced(shape.element("p:e", m), "~", prefix.written)) << "with bits " << m;
      }
      setPresence(*record, ~all);
      EXPECT_EQ(encodedElement<T>(ctx, record), replaced(shape.element("e", 0), "~", prefix.written))
          << "bits without a meaning";
      setPresence(*record, all);
    }
  });
}

TEST(EncodeType, StepsGiveTheElementAndAlwaysATerminatedText) {
  const RtxNamespace callers = {"p", "urn:p"};
  forEachType([&]<typename T>() {
    const Shape &shape = shapeOf<T>();
    Context ctx;
    bindChildPrefix(ctx, childPrefixes[0]);
    CompleteRecord<T> record(ctx);
    std::vector<std::string> parts;
    const auto written = [&](RuntimeContext *c, int status) {
      EXPECT_EQ(status, 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0');
      parts.push_back(text);
    };
    support::encoded(ctx, [&](RuntimeContext *c) {
      written(c, Functions<T>::startElement(c, record, "e", &callers));
      if (shape.tagStaysOpen) {
        EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT);
      }
      written(c, Functions<T>::contents(c, record, &callers));
      written(c, Functions<T>::endElement(c, "e", &callers));
      return 0;
    });
    const std::string start = "<p:e" + shape.attributesOf(~0u) + shape.declarations;
    const std::string contents = replaced(shape.contentsOf(~0u), "~", "c:");
    const std::string closing = shape.tagStaysOpen ? ">" : "";
    const std::string opened = shape.tagStaysOpen ? start : start + ">";
    EXPECT_EQ(parts[0], opened) << "the tag of a type with attributes stays open";
    EXPECT_EQ(parts[1], opened + (contents.empty() ? "" : closing + contents));
    EXPECT_EQ(parts[2], replaced(shape.element("p:e"), "~", "c:"));
  });
}

TEST(EncodeType, WithoutAnElementNameTagsAreTheCallers) {
  forEachType([&]<typename T>() {
    const Shape &shape = shapeOf<T>();
    Context ctx;
    bindChildPrefix(ctx, childPrefixes[0]);
    CompleteRecord<T> record(ctx);
    const std::string text = encodedInPart(ctx, 0, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "mine", nullptr, nullptr, false), 0);
      EXPECT_EQ(Functions<T>::encode(c, record, nullptr, nullptr), 0) << support::errors(c);
      return rtXmlEncEndElement(c, "mine", nullptr);
    });
    Shape open = shape;
    open.tagStaysOpen = true;
    EXPECT_EQ(text, replaced(open.element("mine"), "~", "c:"));
  });
}

template <typename T> using Attributes = int (*)(RuntimeContext *ctx, const T *record, const RtxNamespace *ns);

// Attributes and declarations written into a start tag that the caller has opened.
template <typename T> void expectAttributes(Attributes<T> attributes) {
  SCOPED_TRACE(Functions<T>::name);
  const Shape &shape = shapeOf<T>();
  Context ctx;
  CompleteRecord<T> record(ctx);
  const auto inTag = [&](auto write) {
    return encodedInPart(ctx, 0, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "e", nullptr, nullptr, false), 0);
      c->state = XMLSTATE_INITIAL;
      EXPECT_EQ(write(c), 0) << support::errors(c);
      EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT);
      return 0;
    });
  };
  for (uint32_t m = 0; m <= shape.bits(); ++m) {
    setPresence(*record, m);
    EXPECT_EQ(inTag([&](RuntimeContext *c) { return attributes(c, record, nullptr); }),
              "<e" + shape.declarations + shape.attributesOf(m));
    EXPECT_EQ(inTag([&](RuntimeContext *c) { return Functions<T>::startElement(c, record, nullptr, nullptr); }),
              "<e" + shape.attributesOf(m) + shape.declarations);
  }
  setPresence(*record, shape.bits());
}

TEST(EncodeType, DeclarationsStandBeforeAttributesOrBehindThem) {
  expectAttributes<tns__state>(QxXmlET_tns__state_Attrs);
  expectAttributes<tns__dialog_replaces>(QxXmlET_tns__dialog_replaces_Attrs);
  expectAttributes<tns_nameaddr>(QxXmlET_tns_nameaddr_Attrs);
  expectAttributes<tns_participant_target_param>(QxXmlET_tns_participant_target_param_Attrs);
  expectAttributes<tns_participant_target>(QxXmlET_tns_participant_target_Attrs);
  expectAttributes<tns_sessd>(QxXmlET_tns_sessd_Attrs);
  expectAttributes<tns__dialog>(QxXmlET_tns__dialog_Attrs);
  expectAttributes<tns__dialog_info>(QxXmlET_tns__dialog_info_Attrs);
}

TEST(EncodeType, StateIsRestoredAfterAnAttributeThatFails) {
  Context ctx;
  Record<tns__state> record(ctx);
  record->m = 2;
  record->tns_code = 99;
  for (const auto &write :
       {+[](RuntimeContext *c, tns__state *r) { return QxXmlET_tns__state_Attrs(c, r, nullptr); },
        +[](RuntimeContext *c, tns__state *r) { return QxXmlET_tns__state_StartElement(c, r, nullptr, nullptr); }}) {
    const std::string text = encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "e", nullptr, nullptr, false), 0);
      return write(c, record);
    });
    EXPECT_EQ(text, "<e");
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  }
}

TEST(EncodeType, OneDeclarationOfAPrefixInOneTag) {
  Context ctx;
  Record<tns_nameaddr> record(ctx);
  Builder build(ctx);
  build.declare(record->nsDecls, "x", "urn:first");
  build.declare(record->nsDecls, nullptr, "urn:default");
  build.declare(record->nsDecls, "x", "urn:second");
  build.declare(record->nsDecls, nullptr, "urn:other");
  record->value = build.text("v");
  EXPECT_EQ(encodedElement<tns_nameaddr>(ctx, record), "<e xmlns:x=\"urn:first\" xmlns=\"urn:default\">v</e>");
  const std::string twice = encodedInPart(ctx, 0, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlEncStartElement(c, "e", nullptr, &record->nsDecls, false), 0);
    EXPECT_EQ(QxXmlET_tns_nameaddr_Attrs(c, record, nullptr), 0);
    EXPECT_EQ(QxXmlET_tns_nameaddr_StartElement(c, record, nullptr, nullptr), 0);
    return rtXmlEncEndElement(c, "e", nullptr);
  });
  EXPECT_EQ(twice, "<e xmlns:x=\"urn:first\" xmlns=\"urn:default\"/>");
}

TEST(EncodeType, KeptDeclarationCannotMoveItsOwnElement) {
  Context ctx;
  CompleteRecord<tns__dialog> record(ctx);
  Builder(ctx).declare(record->tns_state.nsDecls, "tns", "urn:elsewhere");
  const auto root = support::parseNamespacedXml(encodedDocument<tns__dialog>(ctx, record));
  ASSERT_TRUE(root);
  ASSERT_FALSE(root->children.empty());
  EXPECT_EQ(root->children[0].name, "state");
  EXPECT_EQ(root->children[0].uri, ours);
}

// ---- Enumerations ---------------------------------------------------------------------------------------------

struct EnumEncoders {
  const char *name;
  const char *(*toString)(uint32_t value);
  int (*encode)(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
  int (*startElement)(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
  int (*contents)(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
  int (*endElement)(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);
};
constexpr EnumEncoders enumEncoders[] = {
    {"dialog_info_state", Qxtns__dialog_info_state_ToString, QxXmlET_tns__dialog_info_state,
     QxXmlET_tns__dialog_info_state_StartElement, QxXmlET_tns__dialog_info_state_Contents,
     QxXmlET_tns__dialog_info_state_EndElement},
    {"state_event", Qxtns__state_event_ToString, QxXmlET_tns__state_event, QxXmlET_tns__state_event_StartElement,
     QxXmlET_tns__state_event_Contents, QxXmlET_tns__state_event_EndElement},
    {"dialog_direction", Qxtns__dialog_direction_ToString, QxXmlET_tns__dialog_direction,
     QxXmlET_tns__dialog_direction_StartElement, QxXmlET_tns__dialog_direction_Contents,
     QxXmlET_tns__dialog_direction_EndElement},
};

TEST(EncodeEnumeration, WritesTheTextOfTheCode) {
  const RtxNamespace callers = {"p", "urn:p"};
  for (const EnumEncoders &e : enumEncoders) {
    SCOPED_TRACE(e.name);
    for (uint32_t value : {0u, 1u, 2u, 6u, 7u, 65535u, 65536u, 65537u}) {
      Context ctx;
      const std::string text = e.toString(value);
      EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return e.encode(c, value, "e", &callers); }),
                "<p:e>" + text + "</p:e>");
      EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return e.encode(c, value, "e", nullptr); }),
                "<e>" + text + "</e>");
      EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return e.encode(c, value, nullptr, nullptr); }), text);

      const auto step = [&](const std::string &expected, const support::Encode &encode) {
        EXPECT_EQ(encode(ctx), 0);
        EXPECT_EQ(support::outputText(ctx), expected);
        EXPECT_EQ(rtxGetOutput(ctx, nullptr)[expected.size()], '\0');
      };
      EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
      step("<p:e>", [&](RuntimeContext *c) { return e.startElement(c, value, "e", &callers); });
      step("<p:e>" + text, [&](RuntimeContext *c) { return e.contents(c, value, &callers); });
      step("<p:e>" + text + "</p:e>", [&](RuntimeContext *c) { return e.endElement(c, "e", &callers); });
      EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
      step("", [&](RuntimeContext *c) { return e.startElement(c, value, nullptr, nullptr); });
      step("", [&](RuntimeContext *c) { return e.endElement(c, nullptr, nullptr); });
    }
  }
}

TEST(EncodeEnumeration, GoesIntoTheAttributeThatIsBeingWritten) {
  for (const EnumEncoders &e : enumEncoders) {
    SCOPED_TRACE(e.name);
    Context ctx;
    const auto raw = [&](std::string_view bytes) {
      ASSERT_EQ(rtxCheckBuffer(ctx, bytes.size()), 0);
      bytes.copy(ctx->buffer.data + ctx->buffer.byteIndex, bytes.size());
      ctx->buffer.byteIndex += bytes.size();
    };
    const std::string text = encodedInPart(ctx, 0, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlEncStartElement(c, "e", nullptr, nullptr, false), 0);
      c->state = XMLSTATE_IN_ATTRIBUTES;
      raw(" k=\"");
      EXPECT_EQ(e.encode(c, 1, nullptr, nullptr), 0);
      EXPECT_EQ(c->state, XMLSTATE_IN_ATTRIBUTES);
      EXPECT_EQ(rtXmlEncUTF8Str(c, "<&\"\t", nullptr, nullptr), 0) << "as the text of any code would be";
      raw("\"");
      c->state = XMLSTATE_IN_ELEMENT;
      EXPECT_EQ(rtXmlEncUTF8Attr2(c, "l", 1, "v", 1), 0) << "the tag is still open";
      return rtXmlEncEndElement(c, "e", nullptr);
    });
    const auto root = support::parseXml(text);
    ASSERT_TRUE(root) << text;
    EXPECT_EQ(root->infoset(), "{}e[k=\"" + std::string(e.toString(1)) + "<&\"\t\"l=\"v\"]()");
  }
}

TEST(EncodeEnumeration, CodesAreNotChecked) {
  Context ctx;
  CompleteRecord<tns__dialog_info> record(ctx);
  record->tns_state = 2;
  auto *dialog = static_cast<tns__dialog *>(record->tns_dialog.head->data);
  dialog->tns_direction = 2;
  dialog->tns_state.tns_event = 7;
  const std::string text = encodedDocument<tns__dialog_info>(ctx, record);
  EXPECT_NE(text.find(" state=\"_UNKNOWN_\""), std::string::npos) << text;
  EXPECT_NE(text.find(" direction=\"_UNKNOWN_\""), std::string::npos) << text;
  EXPECT_NE(text.find(" event=\"_UNKNOWN_\""), std::string::npos) << text;
  EXPECT_EQ(support::errors(ctx), "");
}

// ---- Documents ------------------------------------------------------------------------------------------------

// The document of a complete record.
template <typename T> std::string completeDocument(uint32_t m = ~0u) {
  const Shape &shape = shapeOf<T>();
  const std::string name = "tns:"s + Document<T>::root;
  // The root's declarations stand first: those of the record that holds the namespace's as well.
  return replaced("<" + name + shape.declarations + oursAsTns + shape.attributesOf(m) + ">" + shape.contentsOf(m), "~",
                  "tns:") +
         "</" + name + ">";
}

TEST(Encode, WholeDocuments) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const std::string text = encodedDocument<T>(ctx, record);
    EXPECT_EQ(text, completeDocument<T>());
    EXPECT_TRUE(support::parseNamespacedXml(text));
    EXPECT_EQ(support::errors(ctx), "");
  });
}

TEST(Encode, SmallestDocuments) {
  Context ctx;
  Builder build(ctx);
  Record<tns__state> state(ctx);
  EXPECT_EQ(encodedDocument<tns__state>(ctx, state), "<tns:state" + oursAsTns + "></tns:state>");
  Record<tns__dialog> dialog(ctx);
  dialog->tns_id = build.text("d");
  EXPECT_EQ(encodedDocument<tns__dialog>(ctx, dialog),
            "<tns:dialog" + oursAsTns + " id=\"d\"><tns:state/></tns:dialog>");
  Record<tns__dialog_info> info(ctx);
  info->tns_version = 0;
  info->tns_state = 0;
  EXPECT_EQ(encodedDocument<tns__dialog_info>(ctx, info),
            "<tns:dialog-info" + oursAsTns + " version=\"0\" state=\"full\" entity=\"\"></tns:dialog-info>");
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const std::string text = support::encoded(ctx, [&](RuntimeContext *c) { return Document<T>::encode(c, record); });
    EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << text;
  });
}

TEST(Encode, StepsOfADocumentGiveTheDocument) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return Document<T>::encode(c, record); });
    std::vector<std::string> parts;
    const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_IMS_NSURI(c), 5), 0);
      EXPECT_EQ(rtXmlEncStartDocument(c), 0);
      for (const auto step : {Document<T>::startElement, Document<T>::contents, Document<T>::endElement}) {
        EXPECT_EQ(step(c, record), 0);
        size_t length = 0;
        const char *text = rtxGetOutput(c, &length);
        EXPECT_EQ(text[length], '\0') << "always a terminated text";
        parts.push_back(support::withoutDeclaration(text));
      }
      return rtXmlEncEndDocument(c);
    });
    EXPECT_EQ(stepwise, whole);
    ASSERT_EQ(parts.size(), 3u);
    const std::string contents = replaced(shapeOf<T>().contentsOf(~0u), "~", "tns:");
    const std::string end = "</tns:"s + Document<T>::root + ">";
    EXPECT_TRUE(parts[0].ends_with("\">")) << parts[0];
    EXPECT_EQ(parts[1], parts[0] + contents);
    EXPECT_EQ(parts[2], parts[1] + end);
  });
}

TEST(Encode, NumbersOfEverySize) {
  Context ctx;
  Builder build(ctx);
  for (uint32_t number : {0u, 1u, 65535u, 65536u, 2147483648u, 4294967295u}) {
    Record<tns__dialog_info> record(ctx);
    record->tns_version = number;
    record->tns_state = 0;
    tns__dialog *dialog = build.dialog(*record);
    ASSERT_NE(dialog, nullptr);
    dialog->m = tns__dialog_has_duration | tns__dialog_has_remote;
    dialog->tns_duration = number;
    dialog->tns_remote.m = tns_participant_has_cseq;
    dialog->tns_remote.tns_cseq = number;
    const std::string text = encodedDocument<tns__dialog_info>(ctx, record);
    const std::string digits = std::to_string(number);
    EXPECT_NE(text.find(" version=\"" + digits + "\""), std::string::npos) << text;
    EXPECT_NE(text.find("<tns:duration>" + digits + "</tns:duration>"), std::string::npos) << text;
    EXPECT_NE(text.find("<tns:remote><tns:cseq>" + digits + "</tns:cseq></tns:remote>"), std::string::npos) << text;
  }
}

TEST(Encode, EmptyParticipantIsAnEmptyElement) {
  Context ctx;
  Record<tns__dialog> record(ctx);
  record->m = tns__dialog_has_local | tns__dialog_has_remote;
  const auto root = support::parseNamespacedXml(encodedDocument<tns__dialog>(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->sequence, "{" + ours + "}state[](){" + ours + "}local[](){" + ours + "}remote[]()");
}

// Clears all texts of a record, which stay to be released with the heap.
void clear(RtxXmlString &text) { text.value = nullptr; }
void clearItems(const RtxList &list) {
  for (RtxListNode *node = list.head; node != nullptr; node = node->next)
    clear(*static_cast<RtxXmlString *>(node->data));
}
void clear(tns_nameaddr &record) {
  clear(record.value);
  clear(record.tns_display_name);
}

TEST(Encode, AbsentTextsBecomeEmptyElementsAndAttributes) {
  Context ctx;
  CompleteRecord<tns__dialog> record(ctx);
  tns_participant &local = record->tns_local;
  record->m &= ~uint32_t{tns__dialog_has_remote};
  for (RtxXmlString *text : {&record->tns_id, &record->tns_call_id, &record->tns_local_tag, &record->tns_remote_tag,
                             &record->tns_replaces.tns_call_id, &record->tns_replaces.tns_local_tag,
                             &record->tns_replaces.tns_remote_tag, &record->tns_state.value, &local.tns_target.tns_uri,
                             &local.tns_session_description.value, &local.tns_session_description.tns_type})
    clear(*text);
  clear(record->tns_referred_by);
  clear(local.tns_identity);
  for (RtxListNode *node = local.tns_target.tns_param.head; node != nullptr; node = node->next)
    *static_cast<tns_participant_target_param *>(node->data) = {};
  for (const RtxList *list : {&record->tns_route_set.tns_hop, &record->anyElems.items, &local.anyElems.items})
    clearItems(*list);

  const auto root = support::parseNamespacedXml(encodedDocument<tns__dialog>(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(replaced(root->infoset(), "{" + ours + "}", ""),
            "dialog[call-id=\"\"direction=\"recipient\"id=\"\"local-tag=\"\"remote-tag=\"\"]("
            "state[code=\"200\"event=\"local-bye\"]()"
            "duration[](90)"
            "replaces[call-id=\"\"local-tag=\"\"remote-tag=\"\"]()"
            "referred-by[display-name=\"\"]()"
            "route-set[](hop[]()hop[]())"
            "local[]("
            "identity[display-name=\"\"]()"
            "target[uri=\"\"](param[pname=\"\"pval=\"\"]()param[pname=\"\"pval=\"\"]())"
            "session-description[type=\"\"]()"
            "cseq[](17)))");
}

TEST(Encode, EscapesMarkupAndHonoursCdataInElements) {
  const char *const markup = "a<b>&\"'c\t\n";
  Context ctx;
  Builder build(ctx);
  Record<tns__dialog> record(ctx);
  record->m = tns__dialog_has_route_set | tns__dialog_has_call_id;
  record->tns_id = build.text(markup);
  record->tns_call_id = build.text(markup, true);
  record->tns_state.value = build.text(markup, true);
  build.hop(record->tns_route_set, markup);
  build.hop(record->tns_route_set, markup, true);
  const std::string text = encodedDocument<tns__dialog>(ctx, record);
  EXPECT_NE(text.find("<tns:state><![CDATA["s + markup + "]]></tns:state>"), std::string::npos) << text;
  EXPECT_EQ(occurrences(text, "<tns:hop><![CDATA["s + markup + "]]></tns:hop>"), 1u) << text;
  EXPECT_EQ(occurrences(text, "CDATA"), 2u) << "an attribute cannot be a section";
  const auto root = support::parseNamespacedXml(text);
  ASSERT_TRUE(root) << text;
  EXPECT_EQ(root->attributes, (std::vector<std::pair<std::string, std::string>>{{"call-id", markup}, {"id", markup}}));
  EXPECT_EQ(root->children[0].text, markup);
  for (const support::XmlElement &hop : root->children[1].children)
    EXPECT_EQ(hop.text, markup);
}

TEST(Encode, ForeignElementsAreCopiedAsTheyStand) {
  Context ctx;
  Builder build(ctx);
  Record<tns__dialog_info> record(ctx);
  record->tns_version = 1;
  record->tns_state = 0;
  const std::string fragment = "<!--c--><v:e xmlns:v='u' k='\"'>1 &lt; 2<![CDATA[<]]></v:e>";
  build.foreign(record->anyElems, fragment);
  build.foreign(record->anyElems, "");
  build.foreign(record->anyElems, "<w/>");
  EXPECT_TRUE(encodedDocument<tns__dialog_info>(ctx, record).ends_with("\">" + fragment + "<w/></tns:dialog-info>"));
}

// ---- The state document's declaration -------------------------------------------------------------------------

size_t declarationsIn(const tns__state &record) { return record.nsDecls.items.count; }

TEST(EncodeState, DeclaresItsNamespaceInTheRecordOnce) {
  Context ctx;
  Record<tns__state> record(ctx);
  record->value = Builder(ctx).text("s");
  const std::string expected = "<tns:state" + oursAsTns + ">s</tns:state>";
  EXPECT_EQ(encodedDocument<tns__state>(ctx, record), expected);
  ASSERT_EQ(declarationsIn(*record), 1u);
  const auto *declaration = static_cast<const RtxNsDecl *>(record->nsDecls.items.head->data);
  EXPECT_STREQ(declaration->prefix, "tns");
  EXPECT_STREQ(declaration->uri, namespaceUri);

  support::HeapBalance balance(ctx);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(encodedDocument<tns__state>(ctx, record), expected);
    EXPECT_EQ(declarationsIn(*record), 1u) << "the list does not grow";
  }
}

TEST(EncodeState, OtherDocumentsLeaveTheListsOfTheirRecords) {
  Context ctx;
  CompleteRecord<tns__dialog> record(ctx);
  support::HeapBalance balance(ctx);
  const size_t before = declarationsIn(record->tns_state);
  encodedDocument<tns__dialog>(ctx, record);
  EXPECT_EQ(declarationsIn(record->tns_state), before);
}

TEST(EncodeState, DeclarationsOfTheRecordAreWrittenOnce) {
  Context ctx;
  CompleteRecord<tns__state> record(ctx);
  Builder(ctx).declare(record->nsDecls, nullptr, "urn:default");
  const std::string text = encodedDocument<tns__state>(ctx, record);
  EXPECT_EQ(occurrences(text, " xmlns:x=\"urn:x\""), 1u) << text;
  EXPECT_EQ(occurrences(text, " xmlns=\"urn:default\""), 1u) << text;
  EXPECT_EQ(occurrences(text, oursAsTns), 1u) << text;
  EXPECT_EQ(occurrences(text, "xmlns"), 3u) << text;
  EXPECT_LT(text.find(oursAsTns), text.find(" event=")) << "declarations first";
  EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
}

TEST(EncodeState, ADeclarationOfTheRecordCannotTakeTheRootsPrefix) {
  Context ctx;
  Record<tns__state> record(ctx);
  Builder(ctx).declare(record->nsDecls, "tns", "urn:elsewhere");
  for (int round = 0; round < 2; ++round) {
    const std::string text = encodedDocument<tns__state>(ctx, record);
    const auto root = support::parseNamespacedXml(text);
    ASSERT_TRUE(root) << text;
    EXPECT_EQ(root->uri, ours);
    EXPECT_EQ(occurrences(text, "xmlns:tns"), 1u) << text;
    EXPECT_EQ(declarationsIn(*record), 1u);
  }
}

// ---- Namespaces that the host has preset ----------------------------------------------------------------------

TEST(Encode, PresetNamespacesAreTheHosts) {
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for uri; null is the default namespace
    const char *uri;    // null: the host declares nothing
    bool preset;
    std::string written;
    std::string declared;
  };
  const Case cases[] = {
      {"preset without a declaration", "", nullptr, true, "", ""},
      {"preset prefix", "h", namespaceUri, true, "h:", " xmlns:h=\"" + ours + "\""},
      {"preset default namespace", nullptr, namespaceUri, true, "", " xmlns=\"" + ours + "\""},
      {"tns is the host's, for this namespace", "tns", namespaceUri, false, "tns:", oursAsTns},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.what);
    forEachDocument([&]<typename T>() {
      Context ctx;
      if (c.preset) ctx->flags |= NamespacesPreset;
      if (c.uri != nullptr) {
        ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
      }
      Record<T> record(ctx);
      const Shape &shape = shapeOf<T>();
      Builder(ctx).complete(*record);
      const std::string name = c.written + Document<T>::root;
      for (int round = 1; round <= 3; ++round) {
        const std::string text = encodedDocument<T>(ctx, record);
        const std::string rest = ">" + replaced(shape.contentsOf(~0u), "~", c.written) + "</" + name + ">";
        EXPECT_TRUE(text.starts_with("<" + name + " ")) << text;
        EXPECT_TRUE(text.ends_with(rest)) << text;
        const std::string tag = text.substr(0, text.size() - rest.size());
        EXPECT_EQ(occurrences(tag, c.declared), c.declared.empty() ? tag.size() + 1 : 1u) << tag;
        EXPECT_EQ(occurrences(tag, shape.attributesOf(~0u)), 1u) << tag;
        EXPECT_EQ(occurrences(tag, "xmlns"), (c.declared.empty() ? 0u : 1u) + !shape.declarations.empty()) << tag;
        EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
        if (c.preset && std::is_same_v<T, tns__state>) {
          EXPECT_EQ(occurrences(text, "tns"), 0u) << "nothing was added to the record";
        }
      }
      EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, c.preset);
    });
  }
}

TEST(Encode, HostsOwnUseOfThePrefixIsRespected) {
  forEachDocument([]<typename T>() {
    Context ctx;
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "tns", "urn:host", false), 0);
    CompleteRecord<T> record(ctx);
    for (int round = 0; round < 2; ++round) {
      const std::string text = encodedDocument<T>(ctx, record);
      EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
      EXPECT_TRUE(text.starts_with("<"s + Document<T>::root + " ")) << text;
    }
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:host"), "tns");
  });
}

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  CompleteRecord<tns__dialog_info> info(ctx);
  CompleteRecord<tns__dialog> dialog(ctx);
  CompleteRecord<tns__state> state(ctx);
  tns__isComposing composing;
  ASSERT_EQ(QxInit_tns__isComposing(ctx, &composing), 0);
  composing.tns_state = Builder(ctx).text("idle");
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(encodedDocument<tns__state>(ctx, state), completeDocument<tns__state>());
    EXPECT_EQ(encodedDocument<tns__dialog_info>(ctx, info), completeDocument<tns__dialog_info>());
    EXPECT_EQ(support::withoutDeclaration(
                  support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_tns_isComposing(c, &composing); })),
              "<tns:isComposing xmlns:tns=\"urn:ietf:params:xml:ns:im-iscomposing\"><tns:state>idle</tns:state>"
              "</tns:isComposing>");
    EXPECT_EQ(encodedDocument<tns__dialog>(ctx, dialog), completeDocument<tns__dialog>());
  }
  EXPECT_EQ(support::errors(ctx), "");
  QxMemFree_tns__isComposing(ctx, &composing);
}

// ---- Code range -----------------------------------------------------------------------------------------------

TEST(EncodeCode, IsWrittenFrom100To699) {
  for (const bool nested : {false, true}) {
    for (const unsigned code : {0u, 1u, 99u, 100u, 101u, 404u, 698u, 699u, 700u, 32768u, 65535u}) {
      SCOPED_TRACE((nested ? "nested " : "") + std::to_string(code));
      Context ctx;
      CompleteRecord<tns__dialog> record(ctx);
      record->tns_state.tns_code = static_cast<uint16_t>(code);
      const bool inRange = code >= 100 && code <= 699;
      const std::string text = encodedInPart(ctx, inRange ? 0 : STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
        return nested ? QxXmlE_tns_dialog(c, record) : QxXmlET_tns__state(c, &record->tns_state, "e", nullptr);
      });
      EXPECT_EQ(errorsWithoutTrail(ctx), inRange ? "" : "-16(tns__state.tns_code," + std::to_string(code) + "u)");
      EXPECT_EQ(occurrences(text, " code=\"" + std::to_string(code) + "\""), inRange ? 1u : 0u);
      if (!inRange) {
        EXPECT_TRUE(text.ends_with(" event=\"local-bye\"")) << text << ": nothing of the attribute";
      }
    }
  }
}

TEST(EncodeCode, UnderAClearBitIsNotLookedAt) {
  Context ctx;
  CompleteRecord<tns__state> record(ctx);
  record->m = 1;
  record->tns_code = 7;
  EXPECT_EQ(encodedElement<tns__state>(ctx, record), "<e event=\"local-bye\" xmlns:x=\"urn:x\">confirmed</e>");
}

TEST(EncodeCode, OutOfRangeOnARootIsRecordedAndTheDocumentCompleted) {
  for (const unsigned code : {99u, 700u}) {
    Context ctx;
    CompleteRecord<tns__state> record(ctx);
    record->tns_code = static_cast<uint16_t>(code);
    const std::string text = encodedInPart(ctx, 0, [&](RuntimeContext *c) { return QxXmlE_tns_state(c, record); });
    EXPECT_EQ(support::withoutDeclaration(text), completeDocument<tns__state>(1)) << "all but the code";
    EXPECT_EQ(errorsWithoutTrail(ctx), "-16(tns__state.tns_code," + std::to_string(code) + "u)");
    EXPECT_EQ(trail(ctx).size(), 1u);
  }
}

// ---- Texts ----------------------------------------------------------------------------------------------------

// The encodings of what is no UTF-8.
constexpr const char *badTexts[] = {"bad\xFF", "\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC0\xAF"};

TEST(EncodeText, OfElementsIsCheckedBeforeItIsWritten) {
  struct Case {
    const char *what;
    RtxXmlString &(*text)(tns__dialog &record);
    size_t places; // in the trail: contents and element of each level, the dialog's contents, the document
    bool tagIsWritten;
  };
  const Case cases[] = {
      {"state", [](tns__dialog &d) -> RtxXmlString & { return d.tns_state.value; }, 4, true},
      {"referred-by", [](tns__dialog &d) -> RtxXmlString & { return d.tns_referred_by.value; }, 4, true},
      {"identity", [](tns__dialog &d) -> RtxXmlString & { return d.tns_local.tns_identity.value; }, 6, true},
      {"session-description",
       [](tns__dialog &d) -> RtxXmlString & { return d.tns_local.tns_session_description.value; }, 6, true},
      {"hop",
       [](tns__dialog &d) -> RtxXmlString & {
         return *static_cast<RtxXmlString *>(d.tns_route_set.tns_hop.head->data);
       },
       4, false},
  };
  for (const char *bad : badTexts) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.what + " = "s + testing::PrintToString(bad));
      Context ctx;
      CompleteRecord<tns__dialog> record(ctx);
      c.text(*record) = Builder(ctx).text(bad);
      const std::string text =
          encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *x) { return QxXmlE_tns_dialog(x, record); });
      EXPECT_EQ(errorsWithoutTrail(ctx), "-102");
      EXPECT_EQ(trail(ctx).size(), c.places);
      EXPECT_EQ(text.find(bad), std::string::npos) << text;
      EXPECT_EQ(text.find("<tns:"s + c.what) != std::string::npos, c.tagIsWritten) << text;
      EXPECT_NE(text.find(" id=\"d1\""), std::string::npos) << "what was written stays: " << text;
    }
  }
}

TEST(EncodeText, OfTheSecondHopIsCheckedAfterTheFirstIsWritten) {
  Context ctx;
  Record<tns__dialog_route_set> record(ctx);
  Builder build(ctx);
  build.hop(*record, "good");
  build.hop(*record, "\xFF");
  const std::string text = encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) {
    return QxXmlET_tns__dialog_route_set(c, record, "e", nullptr);
  });
  EXPECT_EQ(text, "<e><hop>good</hop>");
}

TEST(EncodeText, OfRootsIsChecked) {
  Context ctx;
  CompleteRecord<tns__state> record(ctx);
  record->value = Builder(ctx).text("\xFF");
  const std::string text =
      encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_state(c, record); });
  EXPECT_EQ(trail(ctx).size(), 2u);
  EXPECT_EQ(text.find('\xFF'), std::string::npos);
}

TEST(EncodeText, CharactersThatXmlCannotCarryAreRefused) {
  for (const char *bad : {"\x01", "a\x1F", "\xEF\xBF\xBE"}) {
    for (const bool cdata : {false, true}) {
      Context ctx;
      CompleteRecord<tns__state> record(ctx);
      rtxMemHeapFreePtr(ctx, record->value.value);
      record->value = Builder(ctx).text(bad, cdata);
      encodedInPart(ctx, STATUS_INVALID_UTF8,
                    [&](RuntimeContext *c) { return QxXmlET_tns__state(c, record, "e", nullptr); });
      EXPECT_EQ(errorsWithoutTrail(ctx), "-102");
      EXPECT_EQ(trail(ctx).size(), 2u);
    }
  }
}

// The check comes first and alone: what it lets through may still be refused by whoever writes, at another place.
TEST(EncodeText, CheckAndWritingHaveTheirOwnPlaces) {
  const auto placeOf = [](const char *text, bool hop) {
    Context ctx;
    Builder build(ctx);
    Record<tns__dialog> record(ctx);
    record->m = hop ? tns__dialog_has_route_set : 0;
    if (hop) build.hop(record->tns_route_set, text);
    if (!hop) record->tns_state.value = build.text(text);
    encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, record); });
    return trail(ctx).at(0);
  };
  const std::set<int> places = {placeOf("\xFF", false), placeOf("\x01", false), placeOf("\xFF", true),
                                placeOf("\x01", true)};
  EXPECT_EQ(places.size(), 4u);
}

TEST(EncodeText, OfAttributesIsNotChecked) {
  for (const char *bad : badTexts) {
    SCOPED_TRACE(testing::PrintToString(bad));
    Context ctx;
    Builder build(ctx);
    CompleteRecord<tns__dialog> record(ctx);
    record->tns_id = record->tns_call_id = record->tns_local_tag = record->tns_remote_tag = build.text(bad);
    tns__dialog_replaces &replaces = record->tns_replaces;
    replaces.tns_call_id = replaces.tns_local_tag = replaces.tns_remote_tag = build.text(bad);
    record->tns_referred_by.tns_display_name = build.text(bad);
    record->tns_local.tns_target.tns_uri = build.text(bad);
    record->tns_local.tns_session_description.tns_type = build.text(bad);
    auto *param = static_cast<tns_participant_target_param *>(record->tns_local.tns_target.tns_param.head->data);
    param->tns_pname = param->tns_pval = build.text(bad);
    record.released = true; // texts are shared: they go with the heap
    const std::string text = encodedDocument<tns__dialog>(ctx, record);
    EXPECT_EQ(occurrences(text, "=\""s + bad + "\""), 12u) << testing::PrintToString(text);
    EXPECT_EQ(support::errors(ctx), "");
  }
}

TEST(EncodeText, UnderAClearBitIsNotLookedAt) {
  Context ctx;
  CompleteRecord<tns__dialog> record(ctx);
  Builder build(ctx);
  record->tns_referred_by.value = build.text("\xFF");
  record->tns_local.tns_identity.value = build.text("\xFF");
  build.hop(record->tns_route_set, "\xFF");
  record->m = 0;
  EXPECT_EQ(encodedElement<tns__dialog>(ctx, record), replaced(dialogShape.element("e", 0), "~", ""));
}

// An attribute of a root that cannot be written costs the root its further attributes, not the document.
TEST(EncodeText, AttributeOfARootThatFailsIsRecordedAndTheDocumentCompleted) {
  Context ctx;
  Builder build(ctx);
  CompleteRecord<tns__dialog> dialog(ctx);
  dialog->tns_call_id = build.text("\x01");
  const std::string text = encodedInPart(ctx, 0, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, dialog); });
  EXPECT_EQ(errorsWithoutTrail(ctx), "-102");
  EXPECT_EQ(trail(ctx).size(), 1u);
  EXPECT_EQ(support::withoutDeclaration(text), "<tns:dialog" + oursAsTns + " id=\"d1\">" +
                                                   replaced(dialogShape.contentsOf(~0u), "~", "tns:") +
                                                   "</tns:dialog>");

  CompleteRecord<tns__dialog_info> info(ctx);
  static_cast<tns__dialog *>(info->tns_dialog.tail->data)->tns_id = build.text("\x01");
  encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_dialog_info(c, info); });
  EXPECT_EQ(errorsWithoutTrail(ctx), "-102") << "below the root it ends the document";
}

// ---- Route sets -----------------------------------------------------------------------------------------------

TEST(EncodeRouteSet, WithoutAHopIsRefused) {
  Context ctx;
  Record<tns__dialog> dialog(ctx);
  dialog->m = tns__dialog_has_route_set;
  const std::string error = "-16(tns__dialog_route_set.count,0)";
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, dialog); });
  EXPECT_EQ(errorsWithoutTrail(ctx), error);
  EXPECT_EQ(trail(ctx).size(), 4u);
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
    return QxXmlET_tns__dialog_route_set(c, &dialog->tns_route_set, "e", nullptr);
  });
  EXPECT_EQ(errorsWithoutTrail(ctx), error);
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
    return QxXmlET_tns__dialog_route_set_Contents(c, &dialog->tns_route_set, nullptr);
  });
  EXPECT_EQ(errorsWithoutTrail(ctx), error);
  dialog->m = 0;
  rtxErrClear(ctx);
  encodedDocument<tns__dialog>(ctx, dialog);
  EXPECT_EQ(support::errors(ctx), "");
}

TEST(EncodeRouteSet, WithOneHopIsWritten) {
  Context ctx;
  Record<tns__dialog_route_set> record(ctx);
  Builder(ctx).hop(*record, "sip:only");
  EXPECT_EQ(encodedElement<tns__dialog_route_set>(ctx, record), "<e><hop>sip:only</hop></e>");
}

// ---- Failures -------------------------------------------------------------------------------------------------

// The trail of a failure in the identity of a participant of the second dialog.
std::vector<int> trailOfBadIdentity(tns_participant tns__dialog::*participant, uint32_t bit) {
  Context ctx;
  CompleteRecord<tns__dialog_info> record(ctx);
  auto *dialog = static_cast<tns__dialog *>(record->tns_dialog.tail->data);
  dialog->m = bit;
  (dialog->*participant).m = tns_participant_has_identity;
  (dialog->*participant).tns_identity.value = Builder(ctx).text("\xFF");
  encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_dialog_info(c, record); });
  return trail(ctx);
}

TEST(Encode, FailuresCarryTheTrailOfTheFunctionsThatTheyPass) {
  const std::vector<int> local = trailOfBadIdentity(&tns__dialog::tns_local, tns__dialog_has_local);
  const std::vector<int> remote = trailOfBadIdentity(&tns__dialog::tns_remote, tns__dialog_has_remote);
  // The contents of nameaddr, its element, those of participant, dialog and dialog-info likewise, the document.
  ASSERT_EQ(local.size(), 8u);
  ASSERT_EQ(remote.size(), 8u);
  EXPECT_EQ(std::set<int>(local.begin(), local.end()).size(), 8u) << "each call has a line of its own";
  for (size_t i = 0; i < 8; ++i)
    EXPECT_EQ(local[i] == remote[i], i != 4) << "they part where the dialog calls for its participants";
  EXPECT_EQ(trailOfBadIdentity(&tns__dialog::tns_local, tns__dialog_has_local), local) << "lines are stable";
}

TEST(EncodeType, EachOfItsStepsHasAPlaceOfItsOwn) {
  forEachType([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const size_t length = encodedElement<T>(ctx, record).size();
    std::set<int> outermost;
    for (size_t size = 0; size <= length; ++size) {
      std::vector<char> room(size + 1);
      rtxErrClear(ctx);
      EXPECT_EQ(rtxSetOutput(ctx, room.data(), size), 0);
      EXPECT_EQ(Functions<T>::encode(ctx, record, "e", nullptr), STATUS_BUFFER_OVERFLOW);
      const std::vector<int> lines = trail(ctx);
      ASSERT_GE(lines.size(), 2u);
      EXPECT_EQ(std::set<int>(lines.begin(), lines.end()).size(), lines.size());
      outermost.insert(lines.back());
    }
    // Start tag, contents if there are any, end tag.
    EXPECT_EQ(outermost.size(), shapeOf<T>().contents.empty() ? 2u : 3u);
  });
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Record<tns__dialog> bad(ctx);
  bad->m = tns__dialog_has_route_set;
  CompleteRecord<tns__dialog> good(ctx);
  for (int round = 0; round < 2; ++round) {
    encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, bad); });
    rtxErrClear(ctx);
    EXPECT_EQ(encodedDocument<tns__dialog>(ctx, good), completeDocument<tns__dialog>());
  }
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    EXPECT_EQ(Document<T>::encode(ctx, record), STATUS_WRITE_FAILED);
    EXPECT_EQ(errorsWithoutTrail(ctx), "-106");
    EXPECT_EQ(trail(ctx).size(), 1u);
  });
}

// ---- Room and storage -----------------------------------------------------------------------------------------

TEST(Encode, EveryOutputSize) {
  forEachDocument([]<typename T>() {
    support::everyOutputSize([](RuntimeContext *ctx) {
      CompleteRecord<T> record(ctx);
      return Document<T>::encode(ctx, record);
    });
  });
}

TEST(EncodeType, EveryOutputSize) {
  forEachType([]<typename T>() {
    support::everyOutputSize([](RuntimeContext *ctx) {
      const RtxNamespace ns = {"p", "urn:p"};
      CompleteRecord<T> record(ctx);
      return Functions<T>::encode(ctx, record, "e", &ns);
    });
  });
  for (const EnumEncoders &e : enumEncoders)
    support::everyOutputSize([&e](RuntimeContext *ctx) { return e.encode(ctx, 1, "e", nullptr); });
}

// Attributes longer than all that follows them: that must not fit in their stead.
TEST(Encode, EveryOutputSizeWithLongAttributesOfRoots) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tns__dialog_info> record(ctx);
    record->tns_version = 0;
    record->tns_state = 0;
    record->tns_entity = Builder(ctx).text(std::string(300, 'e'));
    return QxXmlE_tns_dialog_info(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tns__dialog> record(ctx);
    record->m = tns__dialog_has_direction;
    record->tns_direction = 0;
    record->tns_id = Builder(ctx).text(std::string(300, 'i'));
    return QxXmlE_tns_dialog(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    CompleteRecord<tns__state> record(ctx);
    rtxMemHeapFreePtr(ctx, record->value.value);
    record->value.value = nullptr;
    return QxXmlE_tns_state(ctx, record);
  });
}

// A growing output moves; every part is written across such a move at one of these lengths.
TEST(Encode, GrowingOutputMovesUnderneathEveryPart) {
  for (size_t length = 0; length < 1500; ++length) {
    Context ctx;
    Builder build(ctx);
    CompleteRecord<tns__dialog> record(ctx);
    rtxMemHeapFreePtr(ctx, record->tns_id.value);
    record->tns_id = build.text(std::string(length, 'i'));
    ASSERT_EQ(encodedDocument<tns__dialog>(ctx, record),
              replaced(completeDocument<tns__dialog>(), "id=\"d1\"", "id=\"" + std::string(length, 'i') + "\""));
  }
}

template <typename T> support::Outcome outcomeOf(RuntimeContext *ctx, T *record, const Builder &build) {
  if (build.failed()) return {STATUS_NO_MEMORY, {}, false};
  const int output = rtxSetOutputDynamic(ctx);
  if (output != 0) return {output, {}, false};
  const int status = Document<T>::encode(ctx, record);
  return {status, status == 0 ? support::outputText(ctx) : std::string()};
}

template <typename T> support::Outcome encodeOutcome(RuntimeContext *ctx) {
  Record<T> record(ctx);
  Builder build(ctx);
  build.complete(*record);
  return outcomeOf<T>(ctx, record, build);
}

support::Outcome encodeLongTexts(RuntimeContext *ctx) {
  Record<tns__dialog> record(ctx);
  Builder build(ctx);
  record->m = tns__dialog_has_route_set | tns__dialog_has_direction;
  record->tns_direction = 0;
  record->tns_id = build.text(std::string(40000, 'i'));
  record->tns_state.value = build.text(std::string(90000, 's'));
  build.hop(record->tns_route_set, std::string(200000, 'h'));
  return outcomeOf<tns__dialog>(ctx, record, build);
}

TEST(Encode, EveryFailingAllocation) {
  forEachDocument([]<typename T>() { EXPECT_GT(support::faults(encodeOutcome<T>).failed, 0u); });
  EXPECT_GT(support::faults(encodeLongTexts).failed, 4u);
}

TEST(Encode, EveryHeapLimit) {
  forEachDocument([]<typename T>() { EXPECT_GT(support::everyHeapLimit(encodeOutcome<T>).failed, 0u); });
}

TEST(EncodeState, WithoutStorageForItsDeclarationItFails) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 2000; });
  Record<tns__state> record(ctx);
  std::vector<void *> taken;
  while (void *block = rtxMemHeapAlloc(ctx, 1))
    taken.push_back(block);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(QxXmlE_tns_state(ctx, record), STATUS_NO_MEMORY);
  EXPECT_EQ(errorsWithoutTrail(ctx), "-10");
  EXPECT_EQ(declarationsIn(*record), 0u);
  for (void *block : taken)
    rtxMemHeapFreePtr(ctx, block);
  rtxErrClear(ctx);
  EXPECT_EQ(encodedDocument<tns__state>(ctx, record), "<tns:state" + oursAsTns + "></tns:state>");
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    encodedDocument<T>(ctx, record);
    const RtxHeapStats before = support::heapStats(ctx);
    encodedDocument<T>(ctx, record);
    EXPECT_EQ(support::heapStats(ctx).peakUsed, before.peakUsed);
    EXPECT_EQ(support::heapStats(ctx).blocks, before.blocks);
  });
}

} // namespace
