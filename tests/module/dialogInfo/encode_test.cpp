// Writing documents of dialog state.
#include "encoding.h"
#include "xmlJudge.h"

#include "IsComposing/QxXmlIsComposing.h"

using namespace dialogs;
using support::Context;

namespace {

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

TEST(EncodeState, WithoutStorageForItsDeclarationItFails) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 2000; });
  Record<tns__state> record(ctx);
  std::vector<void *> taken;
  while (void *block = rtxMemHeapAlloc(ctx, 1))
    taken.push_back(block);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(QxXmlE_tns_state(ctx, record), STATUS_NO_MEMORY);
  EXPECT_EQ(errorsWithoutPlaces(ctx), "-10");
  EXPECT_EQ(declarationsIn(*record), 0u);
  for (void *block : taken)
    rtxMemHeapFreePtr(ctx, block);
  rtxErrClear(ctx);
  EXPECT_EQ(encodedDocument<tns__state>(ctx, record), "<tns:state" + oursAsTns + "></tns:state>");
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

} // namespace
