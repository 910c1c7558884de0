// Writing a type under a name of the caller's, and the text of a code.
#include "encoding.h"
#include "faults.h"
#include "xmlJudge.h"

using namespace dialogs;
using support::Context;

namespace {

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

} // namespace
