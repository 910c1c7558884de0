#include "dialogs.h"

#include "capture.h"

namespace dialogs {

// ---- Releasing ------------------------------------------------------------------------------------------------

namespace {

void freeText(RuntimeContext *ctx, const RtxXmlString &text) { rtxMemHeapFreePtr(ctx, text.value); }

template <typename T, typename Use> void forEachItem(const RtxList &list, Use use) {
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next)
    use(*static_cast<T *>(node->data));
}

// What no function of the library gives back.
void releaseRest(RuntimeContext *ctx, const tns_participant_target &record) {
  forEachItem<tns_participant_target_param>(record.tns_param, [&](auto &param) { releaseWhole(ctx, param); });
}

void releaseRest(RuntimeContext *ctx, const tns_participant &record) {
  if ((record.m & tns_participant_has_target) != 0) releaseRest(ctx, record.tns_target);
}

void releaseRest(RuntimeContext *ctx, tns__dialog &record) {
  if ((record.m & tns__dialog_has_replaces) != 0) releaseWhole(ctx, record.tns_replaces);
  if ((record.m & tns__dialog_has_local) != 0) releaseRest(ctx, record.tns_local);
  if ((record.m & tns__dialog_has_remote) != 0) releaseRest(ctx, record.tns_remote);
}

} // namespace

void releaseWhole(RuntimeContext *ctx, tns__state &record) { QxMemFree_tns__state(ctx, &record); }
void releaseWhole(RuntimeContext *ctx, tns_nameaddr &record) { QxMemFree_tns_nameaddr(ctx, &record); }
void releaseWhole(RuntimeContext *ctx, tns__dialog_route_set &record) { QxMemFree_tns__dialog_route_set(ctx, &record); }
void releaseWhole(RuntimeContext *ctx, tns_sessd &record) { QxMemFree_tns_sessd(ctx, &record); }

void releaseWhole(RuntimeContext *ctx, tns__dialog_replaces &record) {
  freeText(ctx, record.tns_call_id);
  freeText(ctx, record.tns_local_tag);
  freeText(ctx, record.tns_remote_tag);
}

void releaseWhole(RuntimeContext *ctx, tns_participant_target_param &record) {
  freeText(ctx, record.tns_pname);
  freeText(ctx, record.tns_pval);
}

void releaseWhole(RuntimeContext *ctx, tns_participant_target &record) {
  releaseRest(ctx, record);
  QxMemFree_tns_participant_target(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, tns_participant &record) {
  releaseRest(ctx, record);
  QxMemFree_tns_participant(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, tns__dialog &record) {
  releaseRest(ctx, record);
  QxMemFree_tns__dialog(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, tns__dialog_info &record) {
  forEachItem<tns__dialog>(record.tns_dialog, [&](auto &dialog) { releaseRest(ctx, dialog); });
  QxMemFree_tns__dialog_info(ctx, &record);
}

// ---- Building -------------------------------------------------------------------------------------------------

RtxXmlString Builder::text(std::string_view text, bool cdata) {
  const char *copy = rtxUTF8Strdup(ctx, std::string(text).c_str());
  if (copy == nullptr) outOfMemory = true;
  return {cdata, copy};
}

template <typename T> T *Builder::item(RtxList &list, const T &value) {
  auto *item = static_cast<T *>(rtxMemHeapAlloc(ctx, sizeof(T)));
  if (item != nullptr && rtxDListAppend(ctx, &list, item) != nullptr) {
    *item = value;
    return item;
  }
  rtxMemHeapFreePtr(ctx, item);
  outOfMemory = true;
  return nullptr;
}

void Builder::foreign(RtxAnyList &list, std::string_view element) {
  if (auto *entry = item<RtxXmlString>(list.items, {})) *entry = text(element);
}

void Builder::declare(RtxNsDeclList &list, const char *prefix, const char *uri) {
  if (auto *entry = item<RtxNsDecl>(list.items, {}))
    *entry = {prefix == nullptr ? nullptr : text(prefix).value, text(uri).value};
}

void Builder::hop(tns__dialog_route_set &record, std::string_view uri, bool cdata) {
  if (auto *entry = item<RtxXmlString>(record.tns_hop, {})) *entry = text(uri, cdata);
}

void Builder::param(tns_participant_target &record, std::string_view name, std::string_view value) {
  if (auto *entry = item<tns_participant_target_param>(record.tns_param, {})) *entry = {text(name), text(value)};
}

tns__dialog *Builder::dialog(tns__dialog_info &record) {
  tns__dialog *added = item<tns__dialog>(record.tns_dialog, {});
  if (added != nullptr) {
    EXPECT_EQ(QxInit_tns__dialog(ctx, added), 0);
  }
  return added;
}

void Builder::complete(tns__state &record) {
  record.value = text("confirmed");
  record.tns_event = tns__state_event_local_bye;
  record.tns_code = 200;
  declare(record.nsDecls, "x", "urn:x");
  record.m = 3;
}

void Builder::complete(tns__dialog_replaces &record) {
  record = {text("rep-call"), text("rep-local"), text("rep-remote")};
}

void Builder::complete(tns_nameaddr &record) {
  record.value = text("sip:ann");
  record.tns_display_name = text("Ann");
  declare(record.nsDecls, "y", "urn:y");
  record.m = 1;
}

void Builder::complete(tns__dialog_route_set &record) {
  hop(record, "sip:hop1");
  hop(record, "sip:hop2");
}

void Builder::complete(tns_participant_target_param &record) { record = {text("rendering"), text("no")}; }

void Builder::complete(tns_participant_target &record) {
  param(record, "audio", "yes");
  param(record, "rendering", "no");
  record.tns_uri = text("sip:target");
}

void Builder::complete(tns_sessd &record) {
  record.value = text("v=0");
  record.tns_type = text("application/sdp");
  declare(record.nsDecls, "z", "urn:z");
}

void Builder::complete(tns_participant &record) {
  complete(record.tns_identity);
  complete(record.tns_target);
  complete(record.tns_session_description);
  record.tns_cseq = 17;
  foreign(record.anyElems, "<f/>");
  foreign(record.anyElems, "<g>1</g>");
  record.m = 15;
}

void Builder::complete(tns__dialog &record) {
  complete(record.tns_state);
  record.tns_duration = 90;
  complete(record.tns_replaces);
  complete(record.tns_referred_by);
  complete(record.tns_route_set);
  complete(record.tns_local);
  complete(record.tns_remote);
  foreign(record.anyElems, "<h/>");
  foreign(record.anyElems, "<i/>");
  record.tns_id = text("d1");
  record.tns_call_id = text("call");
  record.tns_local_tag = text("local");
  record.tns_remote_tag = text("remote");
  record.tns_direction = tns__dialog_direction_recipient;
  record.m = 1023;
}

void Builder::complete(tns__dialog_info &record) {
  if (tns__dialog *first = dialog(record)) complete(*first);
  if (tns__dialog *second = dialog(record)) second->tns_id = text("d2");
  foreign(record.anyElems, "<j/>");
  foreign(record.anyElems, "<k/>");
  record.tns_version = 5;
  record.tns_state = tns__dialog_info_state_partial;
  record.tns_entity = text("sip:entity");
}

// ---- Expectations ---------------------------------------------------------------------------------------------

std::string present(const Parts &parts, uint32_t m) {
  std::string all;
  for (const Part &part : parts)
    if (part.bit == 0 || (m & part.bit) != 0) all += part.text;
  return all;
}

uint32_t allBits(const Parts &parts) {
  uint32_t all = 0;
  for (const Part &part : parts)
    all |= part.bit;
  return all;
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
  return text;
}

std::string capturedPrint(int (*print)(const char *, const void *), const char *name, const void *record) {
  return support::captureStdout([=] { EXPECT_EQ(print(name, record), 0); });
}

} // namespace dialogs
