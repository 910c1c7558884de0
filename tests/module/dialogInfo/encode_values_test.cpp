// Values that are refused or written as they are: codes, texts and route sets.
#include "encoding.h"

#include <set>

using namespace dialogs;
using support::Context;

namespace {

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
      EXPECT_EQ(errorsWithoutPlaces(ctx), inRange ? "" : "-16(tns__state.tns_code," + std::to_string(code) + "u)");
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
    EXPECT_EQ(errorsWithoutPlaces(ctx), "-16(tns__state.tns_code," + std::to_string(code) + "u)");
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
      EXPECT_EQ(errorsWithoutPlaces(ctx), "-102");
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
      EXPECT_EQ(errorsWithoutPlaces(ctx), "-102");
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
    record.owned = false; // texts are shared: they go with the heap
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
  EXPECT_EQ(encodedElement<tns__dialog>(ctx, record), replaced(shapeOf<tns__dialog>().element("e", 0), "~", ""));
}

// An attribute of a root that cannot be written costs the root its further attributes, not the document.
TEST(EncodeText, AttributeOfARootThatFailsIsRecordedAndTheDocumentCompleted) {
  Context ctx;
  Builder build(ctx);
  CompleteRecord<tns__dialog> dialog(ctx);
  dialog->tns_call_id = build.text("\x01");
  const std::string text = encodedInPart(ctx, 0, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, dialog); });
  EXPECT_EQ(errorsWithoutPlaces(ctx), "-102");
  EXPECT_EQ(trail(ctx).size(), 1u);
  EXPECT_EQ(support::withoutDeclaration(text), "<tns:dialog" + oursAsTns + " id=\"d1\">" +
                                                   replaced(shapeOf<tns__dialog>().contentsOf(~0u), "~", "tns:") +
                                                   "</tns:dialog>");

  CompleteRecord<tns__dialog_info> info(ctx);
  static_cast<tns__dialog *>(info->tns_dialog.tail->data)->tns_id = build.text("\x01");
  encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_dialog_info(c, info); });
  EXPECT_EQ(errorsWithoutPlaces(ctx), "-102") << "below the root it ends the document";
}

// ---- Route sets -----------------------------------------------------------------------------------------------

TEST(EncodeRouteSet, WithoutAHopIsRefused) {
  Context ctx;
  Record<tns__dialog> dialog(ctx);
  dialog->m = tns__dialog_has_route_set;
  const std::string error = "-16(tns__dialog_route_set.count,0)";
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, dialog); });
  EXPECT_EQ(errorsWithoutPlaces(ctx), error);
  EXPECT_EQ(trail(ctx).size(), 4u);
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
    return QxXmlET_tns__dialog_route_set(c, &dialog->tns_route_set, "e", nullptr);
  });
  EXPECT_EQ(errorsWithoutPlaces(ctx), error);
  encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) {
    return QxXmlET_tns__dialog_route_set_Contents(c, &dialog->tns_route_set, nullptr);
  });
  EXPECT_EQ(errorsWithoutPlaces(ctx), error);
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

} // namespace
