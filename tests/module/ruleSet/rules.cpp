#include "rules.h"

#include "capture.h"

namespace rules {

// ---- Releasing ------------------------------------------------------------------------------------------------

namespace {

void freeText(RuntimeContext *ctx, const RtxXmlString &text) { rtxMemHeapFreePtr(ctx, text.value); }

// What no function of the library gives back.
void releaseRest(RuntimeContext *ctx, const cp_exceptType &record) {
  freeText(ctx, record.cp_domain);
  freeText(ctx, record.cp_id);
}

void releaseRest(RuntimeContext *ctx, const cp_manyType_1 &record) {
  if (record.t == cp_manyType_1_except) releaseRest(ctx, record.u.cp_except);
}

void releaseRest(RuntimeContext *ctx, const cp_manyType &record) {
  forEachItem<cp_manyType_1>(record.cp__choice, [&](auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_identityType_1 &record) {
  if (record.t == cp_identityType_1_many) releaseRest(ctx, record.u.cp_many);
}

void releaseRest(RuntimeContext *ctx, const cp_identityType &record) {
  forEachItem<cp_identityType_1>(record.items, [&](auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_conditionsType_1 &record) {
  if (record.t == cp_conditionsType_1_identity) releaseRest(ctx, record.u.cp_identity);
  if (record.t == cp_conditionsType_1_sphere) freeText(ctx, record.u.cp_sphere.cp_value);
}

void releaseRest(RuntimeContext *ctx, const cp_conditionsType &record) {
  forEachItem<cp_conditionsType_1>(record.items, [&](auto &item) { releaseRest(ctx, item); });
}

void releaseRest(RuntimeContext *ctx, const cp_ruleType &record) {
  if ((record.m & cp_ruleType_has_conditions) != 0) releaseRest(ctx, record.cp_conditions);
}

} // namespace

void releaseWhole(RuntimeContext *ctx, cp_oneType &record) { QxMemFree_cp_oneType(ctx, &record); }
void releaseWhole(RuntimeContext *ctx, cp_exceptType &record) { releaseRest(ctx, record); }
void releaseWhole(RuntimeContext *ctx, cp_sphereType &record) { freeText(ctx, record.cp_value); }
void releaseWhole(RuntimeContext *ctx, cp_validityType &record) { QxMemFree_cp_validityType(ctx, &record); }
void releaseWhole(RuntimeContext *ctx, cp_extensibleType &record) { QxMemFree_cp_extensibleType(ctx, &record); }

void releaseWhole(RuntimeContext *ctx, cp_manyType_1 &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_manyType_1(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_manyType &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_manyType(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_identityType_1 &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_identityType_1(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_identityType &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_identityType(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_conditionsType_1 &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_conditionsType_1(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_conditionsType &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_conditionsType(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp_ruleType &record) {
  releaseRest(ctx, record);
  QxMemFree_cp_ruleType(ctx, &record);
}

void releaseWhole(RuntimeContext *ctx, cp__ruleset &record) {
  forEachItem<cp_ruleType>(record.cp_rule, [&](auto &rule) { releaseRest(ctx, rule); });
  QxMemFree_cp__ruleset(ctx, &record);
}

// ---- Building -------------------------------------------------------------------------------------------------

RtxXmlString Builder::text(std::string_view text, bool cdata) {
  const char *copy = rtxUTF8Strdup(ctx, std::string(text).c_str());
  if (copy == nullptr) outOfMemory = true;
  return {cdata, copy};
}

template <typename T> T *Builder::appended(RtxList &list) {
  auto *item = static_cast<T *>(rtxMemHeapAlloc(ctx, sizeof(T)));
  if (item != nullptr && rtxDListAppend(ctx, &list, item) != nullptr) {
    std::memset(static_cast<void *>(item), 0, sizeof(T));
    return item;
  }
  rtxMemHeapFreePtr(ctx, item);
  outOfMemory = true;
  return nullptr;
}

void Builder::foreign(RtxList &list, std::string_view element) {
  if (auto *entry = appended<RtxXmlString>(list)) *entry = text(element);
}

cp_manyType_1 *Builder::item(cp_manyType &record, uint16_t t) {
  auto *added = appended<cp_manyType_1>(record.cp__choice);
  if (added != nullptr) added->t = t;
  return added;
}

cp_identityType_1 *Builder::item(cp_identityType &record, uint16_t t) {
  auto *added = appended<cp_identityType_1>(record.items);
  if (added != nullptr) added->t = t;
  return added;
}

cp_conditionsType_1 *Builder::item(cp_conditionsType &record, uint16_t t) {
  auto *added = appended<cp_conditionsType_1>(record.items);
  if (added != nullptr) added->t = t;
  return added;
}

cp_ruleType *Builder::rule(cp__ruleset &record, std::string_view id) {
  auto *added = appended<cp_ruleType>(record.cp_rule);
  if (added != nullptr) added->cp_id = text(id);
  return added;
}

void Builder::one(cp_identityType &record, std::string_view id) {
  if (auto *added = item(record, cp_identityType_1_one)) added->u.cp_one.cp_id = text(id);
}

void Builder::sphere(cp_conditionsType &record, std::string_view value) {
  if (auto *added = item(record, cp_conditionsType_1_sphere)) added->u.cp_sphere.cp_value = text(value);
}

void Builder::validity(cp_conditionsType &record, std::string_view from, std::string_view until) {
  if (auto *added = item(record, cp_conditionsType_1_validity)) added->u.cp_validity = {text(from), text(until)};
}

void Builder::foreign(cp_manyType &record, std::string_view element) {
  if (auto *added = item(record, cp_manyType_1_any)) added->u.cp__any = text(element);
}

void Builder::foreign(cp_identityType &record, std::string_view element) {
  if (auto *added = item(record, cp_identityType_1_any)) added->u.cp__any = text(element);
}

void Builder::foreign(cp_conditionsType &record, const std::vector<std::string> &elements) {
  auto *added = item(record, cp_conditionsType_1_any);
  if (added == nullptr) return;
  for (const std::string &element : elements)
    foreign(added->u.cp__any.items, element);
}

void Builder::complete(cp_oneType &record) { record = {1, text("<o/>"), text("sip:one")}; }

void Builder::complete(cp_exceptType &record) { record = {3, text("except.example"), text("sip:except")}; }

void Builder::complete(cp_manyType_1 &record) {
  record.t = cp_manyType_1_except;
  complete(record.u.cp_except);
}

void Builder::complete(cp_manyType &record) {
  if (auto *except = item(record, cp_manyType_1_except)) complete(except->u.cp_except);
  foreign(record, "<m/>");
  record.cp_domain = text("many.example");
  record.m = 1;
}

void Builder::complete(cp_identityType_1 &record) {
  record.t = cp_identityType_1_one;
  complete(record.u.cp_one);
}

void Builder::complete(cp_identityType &record) {
  if (auto *one = item(record, cp_identityType_1_one)) complete(one->u.cp_one);
  if (auto *many = item(record, cp_identityType_1_many)) complete(many->u.cp_many);
  foreign(record, "<i/>");
}

void Builder::complete(cp_sphereType &record) { record.cp_value = text("work"); }

void Builder::complete(cp_validityType &record) {
  record = {text("2024-01-01T00:00:00Z"), text("2024-12-31T23:59:59Z")};
}

void Builder::complete(cp_conditionsType_1 &record) {
  record.t = cp_conditionsType_1_identity;
  complete(record.u.cp_identity);
}

void Builder::complete(cp_conditionsType &record) {
  if (auto *identity = item(record, cp_conditionsType_1_identity)) complete(identity->u.cp_identity);
  foreign(record, {"<c/>", "<d>1</d>"});
  if (auto *sphere = item(record, cp_conditionsType_1_sphere)) complete(sphere->u.cp_sphere);
  if (auto *validity = item(record, cp_conditionsType_1_validity)) complete(validity->u.cp_validity);
  foreign(record, {"<e/>"});
}

void Builder::complete(cp_extensibleType &record) {
  foreign(record.items.items, "<x/>");
  foreign(record.items.items, "<y>2</y>");
}

void Builder::complete(cp_ruleType &record) {
  complete(record.cp_conditions);
  complete(record.cp_actions);
  foreign(record.cp_transformations.items.items, "<t/>");
  record.cp_id = text("r1");
  record.m = 7;
}

void Builder::complete(cp__ruleset &record) {
  if (auto *first = appended<cp_ruleType>(record.cp_rule)) complete(*first);
  rule(record, "r2");
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

std::string encodedDocument(RuntimeContext *ctx, const cp__ruleset *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [=](RuntimeContext *c) { return QxXmlE_cp_ruleset(c, record); }));
}

std::string capturedPrint(int (*print)(const char *, const void *), const char *name, const void *record) {
  return support::captureStdout([=] { EXPECT_EQ(print(name, record), 0); });
}

} // namespace rules
