#include "types.h"

#include "lists.h"

using support::forEachItem;

namespace {

void freeText(RuntimeContext *ctx, const RtxXmlString &text) { rtxMemHeapFreePtr(ctx, text.value); }

} // namespace

namespace rules {

void releaseRest(RuntimeContext *ctx, const cp_exceptType &record) {
  freeText(ctx, record.cp_domain);
  freeText(ctx, record.cp_id);
}

void releaseRest(RuntimeContext *ctx, const cp_sphereType &record) { freeText(ctx, record.cp_value); }

void releaseRest(RuntimeContext *ctx, const cp_manyType_1 &record) {
  if (record.t == cp_manyType_1_except) releaseRest(ctx, record.u.cp_except);
}

void releaseRest(RuntimeContext *ctx, const cp_manyType &record) {
  forEachItem<const cp_manyType_1>(record.cp__choice, [&](const auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_identityType_1 &record) {
  if (record.t == cp_identityType_1_many) releaseRest(ctx, record.u.cp_many);
}

void releaseRest(RuntimeContext *ctx, const cp_identityType &record) {
  forEachItem<const cp_identityType_1>(record.items, [&](const auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_conditionsType_1 &record) {
  if (record.t == cp_conditionsType_1_identity) releaseRest(ctx, record.u.cp_identity);
  if (record.t == cp_conditionsType_1_sphere) releaseRest(ctx, record.u.cp_sphere);
}

void releaseRest(RuntimeContext *ctx, const cp_conditionsType &record) {
  forEachItem<const cp_conditionsType_1>(record.items, [&](const auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_ruleType &record) {
  if ((record.m & cp_ruleType_has_conditions) != 0) releaseRest(ctx, record.cp_conditions);
}

void releaseRest(RuntimeContext *ctx, const cp__ruleset &record) {
  forEachItem<const cp_ruleType>(record.cp_rule, [&](const auto &rule) { releaseRest(ctx, rule); });
}

} // namespace rules
