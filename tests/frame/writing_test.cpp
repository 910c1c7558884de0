// What encoders make of records, right and wrong ones.
#include "Catalogue.h"
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "conditions.h"
#include "context.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <gtest/gtest.h>
#include <vector>

using frame::appendItem;
using frame::appendText;
using frame::encode;
using frame::Record;
using frame::text;
using support::Context;

namespace {

// The part of an encoded document behind the XML declaration.
std::string body(const std::string &document) {
  size_t end = document.find("?>\n");
  return end == std::string::npos ? document : document.substr(end + 3);
}

int errorsOf(RuntimeContext *ctx, const ims::DocumentSchema &document, const void *record, const char *errors) {
  int status = 0;
  encode(ctx, document, record, &status);
  EXPECT_EQ(frame::briefErrors(ctx), errors);
  rtxErrClear(ctx);
  return status;
}

// ---- Choices --------------------------------------------------------------------------------------------------

TEST(Choice, UnknownSelectorsAreNamed) {
  const ims::TypeSchema *choices[] = {&cp_manyType_1Schema, &cp_identityType_1Schema, &cp_conditionsType_1Schema,
                                      &tIMS3GPP_1Schema};
  for (const ims::TypeSchema *type : choices) {
    SCOPED_TRACE(type->name);
    for (uint32_t selector : {0u, type->fieldCount + 1u, 65535u}) {
      Context ctx;
      Record record(ctx, *type);
      record.as<uint16_t>() = static_cast<uint16_t>(selector);
      rtxSetOutputDynamic(ctx);
      EXPECT_EQ(ims::encodeType(ctx, *type, record.data(), nullptr, nullptr), STATUS_INVALID_CHOICE);
      EXPECT_EQ(frame::briefErrors(ctx), "-9(" + std::to_string(selector) + ")");
      EXPECT_EQ(frame::printed(*type, record.data()), "r.t = " + std::to_string(selector) + "\n");
      EXPECT_EQ(ims::freeRecord(ctx, *type, record.data()), 0);
    }
  }
}

TEST(Choice, ByValueHasNoElementOfItsOwn) {
  Context ctx;
  Record record(ctx, tIMS3GPPSchema);
  auto &ims3gpp = record.as<tIMS3GPP>();
  ims3gpp.version = 1;
  EXPECT_EQ(errorsOf(ctx, ims_3gppDocument, &ims3gpp, "-9(0)"), STATUS_INVALID_CHOICE);
  ims3gpp._choice1.t = 2;
  ims3gpp._choice1.u.service_info = text(ctx, "a&b");
  EXPECT_EQ(body(encode(ctx, ims_3gppDocument, &ims3gpp)),
            "<ims-3gpp version=\"1\"><service-info>a&amp;b</service-info></ims-3gpp>");
}

// ---- Lists that must not be empty -----------------------------------------------------------------------------

TEST(EmptyList, IsRefusedUnderTheTypesName) {
  Context ctx;
  Record record(ctx, tns__dialogSchema);
  auto &dialog = record.as<tns__dialog>();
  dialog.m = 8;
  EXPECT_EQ(errorsOf(ctx, tns_dialogDocument, &dialog, "-16(tns__dialog_route_set.count|int 0)"), -16);
  appendText(ctx, dialog.tns_route_set.tns_hop, "h");
  EXPECT_EQ(errorsOf(ctx, tns_dialogDocument, &dialog, ""), 0);

  Record filterSet(ctx, FilterSetTypeSchema);
  filterSet.as<FilterSetType>().m = 1;
  EXPECT_EQ(errorsOf(ctx, filter_setDocument, filterSet.data(), "-16(NSBindings.count|int 0)"), -16);

  Record conditions(ctx, cp_conditionsTypeSchema);
  appendItem<cp_conditionsType_1>(ctx, conditions.as<cp_conditionsType>().items)->t = 1;
  int status = 0;
  EXPECT_EQ(body(encode(ctx, frame::conditionsDocument, conditions.data(), &status)),
            "<cp:conditions xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"><cp:identity>");
  EXPECT_EQ(status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(frame::briefErrors(ctx), "-16(cp_identityType.count|int 0)");
}

// ---- Ranges ---------------------------------------------------------------------------------------------------

TEST(Range, HoldsForAChildButCostsARootOnlyItsAttributes) {
  for (uint16_t code : {uint16_t{99}, uint16_t{100}, uint16_t{699}, uint16_t{700}}) {
    SCOPED_TRACE(code);
    bool wrong = code < 100 || code > 699;
    const std::string error = wrong ? "-16(tns__state.tns_code|uint " + std::to_string(code) + ")" : "";
    Context ctx;
    Record record(ctx, tns__dialogSchema);
    auto &dialog = record.as<tns__dialog>();
    dialog.tns_state.m = 2;
    dialog.tns_state.tns_code = code;
    EXPECT_EQ(errorsOf(ctx, tns_dialogDocument, &dialog, error.c_str()), wrong ? -16 : 0);

    const std::string attribute = wrong ? "" : " code=\"" + std::to_string(code) + "\"";
    dialog.tns_state.value = text(ctx, "s");
    EXPECT_EQ(body(encode(ctx, tns_stateDocument, &dialog.tns_state)),
              "<tns:state xmlns:tns=\"urn:ietf:params:xml:ns:dialog-info\"" + attribute + ">s</tns:state>");
    EXPECT_EQ(frame::briefErrors(ctx), error) << "recorded all the same";
  }
}

// ---- Attributes -----------------------------------------------------------------------------------------------

TEST(Attributes, UnknownCodesAreWrittenAsSuch) {
  Context ctx;
  Record record(ctx, tns__stateSchema);
  auto &state = record.as<tns__state>();
  state.m = 1;
  state.tns_event = 7;
  EXPECT_NE(encode(ctx, tns_stateDocument, &state).find(" event=\"_UNKNOWN_\""), std::string::npos);
}

TEST(Attributes, AreQualifiedWhereThePrefixIsBound) {
  Context ctx;
  Record record(ctx, tns__debuginfoSchema);
  auto &info = record.as<tns__debuginfo>();
  info.tns_version = 3;
  info.tns_state = 1;
  EXPECT_EQ(body(encode(ctx, tns_debuginfoDocument, &info)),
            "<tns:debuginfo xmlns:tns=\"urn:ietf:params:xml:ns:debuginfo\" tns:version=\"3\" tns:state=\"partial\">"
            "</tns:debuginfo>");

  // Under a default declaration of the host's there is no prefix, so the names stay bare.
  rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:ietf:params:xml:ns:debuginfo", false);
  ctx->flags |= NamespacesPreset;
  EXPECT_EQ(body(encode(ctx, tns_debuginfoDocument, &info)),
            "<debuginfo xmlns=\"urn:ietf:params:xml:ns:debuginfo\" version=\"3\" state=\"partial\"></debuginfo>");
}

TEST(Attributes, AreQualifiedOnlyUnderANamespace) {
  Context ctx;
  Record record(ctx, tns__sessionSchema);
  record.as<tns__session>().tns_id = text(ctx, "s");
  rtxSetOutputDynamic(ctx);
  EXPECT_EQ(ims::encodeTypeStart(ctx, tns__sessionSchema, record.data(), "session", nullptr), 0);
  EXPECT_STREQ(rtxGetOutput(ctx, nullptr), "<session id=\"s\"");
}

TEST(Attributes, KeptDeclarationsAreWrittenOnce) {
  Context ctx;
  Record record(ctx, WhatTypeSchema);
  auto *include = appendItem<InclType>(ctx, record.as<WhatType>().include);
  include->m = 1;
  include->type = 1;
  include->value = text(ctx, "q:x");
  auto *declaration = appendItem<RtxNsDecl>(ctx, include->nsDecls.items);
  declaration->prefix = text(ctx, "q").value;
  declaration->uri = text(ctx, "urn:q").value;
  auto *attribute = appendItem<RtxNamePair>(ctx, include->_anyAttr.items);
  attribute->name = text(ctx, "q:a").value;
  attribute->value = text(ctx, "1").value;
  EXPECT_EQ(body(encode(ctx, frame::documentOf(WhatTypeSchema), record.data())),
            "<p:root xmlns:p=\"urn:ietf:params:xml:ns:simple-filter\"><p:include xmlns:q=\"urn:q\" type=\"namespace\" "
            "q:a=\"1\">q:x</p:include></p:root>");
}

// A start tag of their own ends with the declarations of a text; attributes written into another's begin with them.
TEST(Attributes, AndDeclarationsHaveTheirOrder) {
  Context ctx;
  Record record(ctx, tns__stateSchema);
  auto &state = record.as<tns__state>();
  state.m = 2;
  state.tns_code = 200;
  auto *declaration = appendItem<RtxNsDecl>(ctx, state.nsDecls.items);
  declaration->prefix = text(ctx, "q").value;
  declaration->uri = text(ctx, "urn:q").value;
  rtxSetOutputDynamic(ctx);
  EXPECT_EQ(ims::encodeTypeStart(ctx, tns__stateSchema, &state, "state", nullptr), 0);
  EXPECT_STREQ(rtxGetOutput(ctx, nullptr), "<state code=\"200\" xmlns:q=\"urn:q\"");
  rtxSetOutputDynamic(ctx);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "state", nullptr, nullptr, false), 0);
  EXPECT_EQ(ims::encodeTypeAttributes(ctx, tns__stateSchema, &state, nullptr), 0);
  EXPECT_EQ(ims::encodeTypeEnd(ctx, tns__stateSchema, "state", nullptr), 0);
  EXPECT_STREQ(rtxGetOutput(ctx, nullptr), "<state xmlns:q=\"urn:q\" code=\"200\"/>");
}

// The lack of room for a root's attribute is no reason to go on without it.
TEST(Attributes, OfARootNeedTheirRoom) {
  Context ctx;
  Record record(ctx, tns__dialog_infoSchema);
  auto &info = record.as<tns__dialog_info>();
  info.tns_version = 1;
  info.tns_entity = text(ctx, std::string(300, 'e'));
  const std::string whole = encode(ctx, tns_dialog_infoDocument, &info);
  std::string buffer(whole.size() - 100, '\0');
  rtxSetOutput(ctx, buffer.data(), buffer.size());
  EXPECT_EQ(ims::encodeDocument(ctx, tns_dialog_infoDocument, &info), STATUS_BUFFER_OVERFLOW);
}

// ---- Declarations ---------------------------------------------------------------------------------------------

TEST(Declaration, OfARootThatKeepsItsOwnIsMadeOnce) {
  Context ctx;
  Record record(ctx, tns__stateSchema);
  auto &state = record.as<tns__state>();
  state.value = text(ctx, "s");
  const std::string first = encode(ctx, tns_stateDocument, &state);
  EXPECT_EQ(state.nsDecls.items.count, 1u);
  const size_t blocks = support::heapStats(ctx).blocks;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(encode(ctx, tns_stateDocument, &state), first);
    EXPECT_EQ(state.nsDecls.items.count, 1u);
    EXPECT_EQ(support::heapStats(ctx).blocks, blocks);
  }
}

TEST(Declaration, OfARootThatKeepsItsOwnIsMadeEvenIfTheHostHasIt) {
  Context ctx;
  rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:ietf:params:xml:ns:dialog-info", false);
  ctx->flags |= NamespacesPreset;
  Record record(ctx, tns__stateSchema);
  auto &state = record.as<tns__state>();
  state.value = text(ctx, "s");
  EXPECT_EQ(body(encode(ctx, tns_stateDocument, &state)),
            "<h:state xmlns:h=\"urn:ietf:params:xml:ns:dialog-info\">s</h:state>");
  EXPECT_EQ(state.nsDecls.items.count, 0u);
}

TEST(Declaration, AsDefaultDoesNotAskWhatTheHostHasPreset) {
  for (uint32_t flags : {0u, uint32_t{NamespacesPreset}}) {
    Context ctx;
    ctx->flags |= flags;
    Record record(ctx, FilterSetTypeSchema);
    auto &filterSet = record.as<FilterSetType>();
    filterSet.m = 2;
    filterSet.package_ = text(ctx, "p");
    EXPECT_EQ(body(encode(ctx, filter_setDocument, &filterSet)),
              "<filter-set xmlns=\"urn:ietf:params:xml:ns:simple-filter\" package=\"p\"></filter-set>");
  }
}

TEST(Declaration, OfOneDocumentDoesNotReachTheNext) {
  Context ctx;
  Record rules(ctx, cp__rulesetSchema);
  Record dialog(ctx, tns__dialogSchema);
  Record filters(ctx, FilterSetTypeSchema);
  Record plain(ctx, tIMS3GPPSchema);
  plain.as<tIMS3GPP>()._choice1.t = 2;
  plain.as<tIMS3GPP>().version = 1;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(body(encode(ctx, filter_setDocument, filters.data())),
              "<filter-set xmlns=\"urn:ietf:params:xml:ns:simple-filter\"></filter-set>");
    EXPECT_EQ(body(encode(ctx, ims_3gppDocument, plain.data())), "<ims-3gpp version=\"1\"><service-info/></ims-3gpp>");
    EXPECT_EQ(body(encode(ctx, cp_rulesetDocument, rules.data())),
              "<cp:ruleset xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"></cp:ruleset>");
    EXPECT_EQ(body(encode(ctx, tns_dialogDocument, dialog.data())),
              "<tns:dialog xmlns:tns=\"urn:ietf:params:xml:ns:dialog-info\" id=\"\"><tns:state/></tns:dialog>");
  }
}

// ---- Texts ----------------------------------------------------------------------------------------------------

TEST(Text, ThatIsNotUtf8StopsBeforeItsElement) {
  Context ctx;
  Record record(ctx, tns__controlSchema);
  record.as<tns__control>().tns_interface = text(ctx, "a\xFF");
  int status = 0;
  EXPECT_EQ(body(encode(ctx, tns_controlDocument, record.data(), &status)),
            "<tns:control xmlns:tns=\"urn:ietf:params:xml:ns:debuginfo\">");
  EXPECT_EQ(status, STATUS_INVALID_UTF8);
  EXPECT_EQ(frame::briefErrors(ctx), "-102");
}

TEST(Text, OptionalMembersAreWrittenByTheirBitAlone) {
  Context ctx;
  Record record(ctx, tns__start_triggerSchema);
  auto &trigger = record.as<tns__start_trigger>();
  const uint8_t bytes[] = {0x0A, 0xFF};
  trigger.tns_from = text(ctx, "f");
  trigger.m = 64;
  trigger.tns_debug_id = {2, bytes};
  EXPECT_EQ(body(encode(ctx, tns_start_triggerDocument, &trigger)),
            "<tns:start-trigger xmlns:tns=\"urn:ietf:params:xml:ns:debuginfo\"><tns:debug-id>0AFF</tns:debug-id>"
            "</tns:start-trigger>");
  EXPECT_EQ(frame::printed(tns__start_triggerSchema, &trigger), "r.tns_debug_id = 0AFF\n");
  trigger.m = 0;
  EXPECT_EQ(frame::printed(tns__start_triggerSchema, &trigger), "");
  trigger.tns_debug_id = {0, nullptr};
  trigger.m = 1; // so that the text is given back
}

// ---- Documents of simple types --------------------------------------------------------------------------------

TEST(SimpleDocument, OfText) {
  Context ctx;
  RtxXmlString written = text(ctx, " a  b<");
  EXPECT_EQ(body(encode(ctx, typeDocument, &written)), "<type> a  b&lt;</type>");
  EXPECT_EQ(body(encode(ctx, tns_timeDocument, &written)),
            "<time xmlns=\"urn:ietf:params:xml:ns:debuginfo\"> a  b&lt;</time>");
  support::setInput(ctx, "<type> a  b&lt;</type>");
  RtxXmlString read = {false, nullptr};
  EXPECT_EQ(ims::decodeDocument(ctx, typeDocument, &read), 0);
  EXPECT_STREQ(read.value, " a  b<");
  support::setInput(ctx, "<time> a\n b </time>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_timeDocument, &read), 0);
  EXPECT_STREQ(read.value, "a b");
  support::setInput(ctx, "<x:kind xmlns:x='urn:x' y='1'>t<z>u</z>v</x:kind>");
  EXPECT_EQ(ims::decodeDocument(ctx, typeDocument, &read), STATUS_ROOT_MISMATCH);
  EXPECT_EQ(frame::briefErrors(ctx), "-3(type|kind) -33(kind|y) -41(z)");
  EXPECT_STREQ(read.value, "tv");
}

TEST(SimpleDocument, OfBytes) {
  Context ctx;
  const uint8_t bytes[] = {0x0A, 0xFF};
  RtxHexBinary value = {2, bytes};
  EXPECT_EQ(body(encode(ctx, tns_debug_idDocument, &value)),
            "<debug-id xmlns=\"urn:ietf:params:xml:ns:debuginfo\">0AFF</debug-id>");
  RtxHexBinary read = {7, bytes};
  support::setInput(ctx, "<debug-id> 0aff </debug-id>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_debug_idDocument, &read), 0);
  ASSERT_EQ(read.length, 2u);
  EXPECT_EQ(read.bytes[1], 0xFF);
  support::setInput(ctx, "<debug-id/>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_debug_idDocument, &read), 0);
  EXPECT_EQ(read.length, 0u);
  support::setInput(ctx, "<debug-id>0A0</debug-id>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_debug_idDocument, &read), STATUS_INVALID_LEXICAL_FORM);
}

TEST(SimpleDocument, OfACode) {
  Context ctx;
  uint16_t code = 1;
  EXPECT_EQ(body(encode(ctx, tns_reasonDocument, &code)),
            "<reason xmlns=\"urn:ietf:params:xml:ns:debuginfo\">session_end</reason>");
  code = 2;
  EXPECT_NE(encode(ctx, tns_reasonDocument, &code).find("_UNKNOWN_"), std::string::npos);
  support::setInput(ctx, "<reason>dialog_established</reason>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_reasonDocument, &code), 0);
  EXPECT_EQ(code, 0);
  code = 5;
  support::setInput(ctx, "<reason>session-end</reason>");
  EXPECT_EQ(ims::decodeDocument(ctx, tns_reasonDocument, &code), STATUS_ENUM_NOT_FOUND);
  EXPECT_EQ(frame::briefErrors(ctx), "-4(session-end)");
  EXPECT_EQ(code, 5);
}

TEST(SimpleDocument, IsNotTouchedByADocumentCutOff) {
  Context ctx;
  RtxXmlString read = {false, "untouched"};
  support::setInput(ctx, "<type>t");
  EXPECT_EQ(ims::decodeDocument(ctx, typeDocument, &read), STATUS_PARSE_FAILED);
  EXPECT_STREQ(read.value, "untouched");
}

TEST(SimpleDocument, IsNeverValidated) {
  Context ctx;
  for (const ims::DocumentSchema *document : ims::allDocuments()) {
    if (document->type) continue;
    EXPECT_EQ(ims::validateDocument(ctx, *document), STATUS_NOT_SUPPORTED);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

// ---- A registry that belongs to the other family --------------------------------------------------------------

TEST(SharedRegistry, EncodersOfEitherFamilyReadWithinTheTable) {
  for (bool debugFirst : {false, true}) {
    SCOPED_TRACE(debugFirst ? "claimed by the debug module" : "claimed by the other modules");
    Context ctx;
    ASSERT_NE(debugFirst ? QxGet_DebugEvent_NSURI(ctx) : QxGet_IMS_NSURI(ctx), nullptr);
    Record dialog(ctx, tns__dialogSchema);
    Record rules(ctx, cp__rulesetSchema);
    Record control(ctx, tns__controlSchema);
    encode(ctx, tns_dialogDocument, dialog.data());
    encode(ctx, cp_rulesetDocument, rules.data());
    encode(ctx, tns_controlDocument, control.data());
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

// ---- The trail ------------------------------------------------------------------------------------------------

TEST(Trail, LeadsFromTheFieldToTheDocument) {
  using namespace ims;
  Context ctx;
  Record record(ctx, tns__dialog_infoSchema);
  auto *dialog = appendItem<tns__dialog>(ctx, record.as<tns__dialog_info>().tns_dialog);
  dialog->tns_state.m = 2;
  dialog->tns_state.tns_code = 1;
  int status = 0;
  encode(ctx, tns_dialog_infoDocument, record.data(), &status);
  ASSERT_EQ(status, STATUS_CONSTRAINT_VIOLATION);
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_NE(error, nullptr);
  const TypeSchema &state = tns__stateSchema;
  const TypeSchema &outer = tns__dialogSchema;
  const TypeSchema &info = tns__dialog_infoSchema;
  const std::vector<int> expected = {siteLine(state, File::encoder, 3, step::facet),
                                     siteLine(state, File::encoder, 0, step::wrapStart),
                                     siteLine(outer, File::encoder, 1, step::write),
                                     siteLine(outer, File::encoder, 0, step::wrapContents),
                                     siteLine(info, File::encoder, 1, step::write),
                                     siteLine(tns_dialog_infoDocument, File::encoder, step::wrapRootContents)};
  std::vector<int> lines;
  for (uint32_t i = 0; i < error->siteCount; ++i)
    lines.push_back(error->sites[i].line);
  EXPECT_EQ(lines, expected);
  EXPECT_STREQ(error->sites[0].path, "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfoEnc");
}

} // namespace
