#include "types.h"

#include "lists.h"

namespace {

void freeTexts(RuntimeContext *ctx, std::initializer_list<RtxXmlString> texts) {
  for (const RtxXmlString &text : texts)
    rtxMemHeapFreePtr(ctx, text.value);
}

} // namespace

namespace dialogs {

void releaseRest(RuntimeContext *ctx, const tns__dialog_replaces &record) {
  freeTexts(ctx, {record.tns_call_id, record.tns_local_tag, record.tns_remote_tag});
}

void releaseRest(RuntimeContext *ctx, const tns_participant_target_param &record) {
  freeTexts(ctx, {record.tns_pname, record.tns_pval});
}

void releaseRest(RuntimeContext *ctx, const tns_participant_target &record) {
  support::forEachItem<const tns_participant_target_param>(record.tns_param,
                                                           [&](const auto &param) { releaseRest(ctx, param); });
}

void releaseRest(RuntimeContext *ctx, const tns_participant &record) {
  if ((record.m & tns_participant_has_target) != 0) releaseRest(ctx, record.tns_target);
}

void releaseRest(RuntimeContext *ctx, const tns__dialog &record) {
  if ((record.m & tns__dialog_has_replaces) != 0) releaseRest(ctx, record.tns_replaces);
  if ((record.m & tns__dialog_has_local) != 0) releaseRest(ctx, record.tns_local);
  if ((record.m & tns__dialog_has_remote) != 0) releaseRest(ctx, record.tns_remote);
}

void releaseRest(RuntimeContext *ctx, const tns__dialog_info &record) {
  support::forEachItem<const tns__dialog>(record.tns_dialog, [&](const auto &dialog) { releaseRest(ctx, dialog); });
}

} // namespace dialogs
