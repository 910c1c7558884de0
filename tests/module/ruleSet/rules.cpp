#include "rules.h"

namespace rules {

cp_manyType_1 *Builder::item(cp_manyType &record, uint16_t t) {
  auto *added = append<cp_manyType_1>(record.cp__choice);
  if (added != nullptr) added->t = t;
  return added;
}

cp_identityType_1 *Builder::item(cp_identityType &record, uint16_t t) {
  auto *added = append<cp_identityType_1>(record.items);
  if (added != nullptr) added->t = t;
  return added;
}

cp_conditionsType_1 *Builder::item(cp_conditionsType &record, uint16_t t) {
  auto *added = append<cp_conditionsType_1>(record.items);
  if (added != nullptr) added->t = t;
  return added;
}

cp_ruleType *Builder::rule(cp__ruleset &record, std::string_view id) {
  auto *added = append<cp_ruleType>(record.cp_rule);
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
    foreign(added->u.cp__any, element);
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
  foreign(record.items, "<x/>");
  foreign(record.items, "<y>2</y>");
}

void Builder::complete(cp_ruleType &record) {
  complete(record.cp_conditions);
  complete(record.cp_actions);
  foreign(record.cp_transformations.items, "<t/>");
  record.cp_id = text("r1");
  record.m = 7;
}

void Builder::complete(cp__ruleset &record) {
  if (auto *first = append<cp_ruleType>(record.cp_rule)) complete(*first);
  rule(record, "r2");
}

std::string encodedDocument(RuntimeContext *ctx, const cp__ruleset *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [=](RuntimeContext *c) { return QxXmlE_cp_ruleset(c, record); }));
}

} // namespace rules
