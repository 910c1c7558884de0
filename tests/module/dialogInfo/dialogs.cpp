#include "dialogs.h"

namespace dialogs {

void Builder::declare(RtxNsDeclList &list, const char *prefix, const char *uri) {
  if (auto *entry = append<RtxNsDecl>(list.items))
    *entry = {prefix == nullptr ? nullptr : text(prefix).value, text(uri).value};
}

void Builder::param(tns_participant_target &record, std::string_view name, std::string_view value) {
  if (auto *entry = append<tns_participant_target_param>(record.tns_param)) *entry = {text(name), text(value)};
}

tns__dialog *Builder::dialog(tns__dialog_info &record) {
  tns__dialog *added = append<tns__dialog>(record.tns_dialog);
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

} // namespace dialogs
