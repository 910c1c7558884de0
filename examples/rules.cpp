// Edits a rule set as a settings page does: adds a rule, changes one and removes one. What other vocabularies have put
// into the rules stays as it is.
#include "imscodec.hpp"

#include <cstdio>
#include <map>
#include <string>

using namespace imscodec;
using namespace imscodec::ruleset;

namespace {

using RuleSet = imscodec::ruleset::ruleset; // its vocabulary has the same name

constexpr std::string_view body = R"(<?xml version="1.0" encoding="UTF-8"?>
<cp:ruleset xmlns:cp="urn:ietf:params:xml:ns:common-policy" xmlns:pr="urn:ietf:params:xml:ns:pres-rules"
            xmlns:door="urn:example:door">
  <cp:rule id="family">
    <cp:conditions>
      <cp:identity><cp:one id="sip:mum@home.example"/><cp:one id="sip:dad@home.example"/></cp:identity>
      <door:keys door:kind="front" copies="2"><door:key serial="A-17"/></door:keys>
    </cp:conditions>
    <cp:actions><pr:sub-handling>allow</pr:sub-handling></cp:actions>
    <cp:transformations>
      <pr:provide-services><pr:service-uri-scheme>sip</pr:service-uri-scheme></pr:provide-services>
      <bell xmlns="urn:example:bell" tone="soft &amp; short"/>
    </cp:transformations>
  </cp:rule>
  <cp:rule id="colleagues">
    <cp:conditions>
      <cp:identity><cp:many domain="work.example"><cp:except id="sip:chief@work.example"/></cp:many></cp:identity>
      <cp:sphere value="work"/>
    </cp:conditions>
    <cp:actions><pr:sub-handling>polite-block</pr:sub-handling></cp:actions>
  </cp:rule>
  <cp:rule id="visitors">
    <cp:conditions>
      <cp:validity><cp:from>2026-05-01T08:00:00Z</cp:from><cp:until>2026-05-03T20:00:00Z</cp:until></cp:validity>
    </cp:conditions>
  </cp:rule>
</cp:ruleset>)";

int complain(const Outcome &outcome) {
  for (const Error error : outcome.errors()) {
    char line[256];
    std::fprintf(stderr, "%s\n", error.format(line).data());
  }
  return 1;
}

// ---- Edits: false for lack of storage, or of the rule -----------------------------------------------------------

// Lets a user see the state that the rules guard.
bool allow(Context &context, RuleSet rules, std::string_view id, std::string_view user) {
  auto rule = rules.add_rule(context);
  if (!rule || !rule->set_id(context, id)) return false;
  auto condition = rule->make_conditions(context).add_items(context);
  if (!condition) return false;
  auto who = condition->choose_identity(context).add_items(context);
  if (!who || !who->choose_one(context).set_id(context, user)) return false;
  return rule->make_actions(context).add_items(
      context, R"(<pr:sub-handling xmlns:pr="urn:ietf:params:xml:ns:pres-rules">allow</pr:sub-handling>)");
}

bool moveToSphere(Context &context, RuleSet rules, std::string_view id, std::string_view sphere) {
  for (const ruleType rule : rules.rule()) {
    if (rule.id() != id || !rule.conditions()) continue;
    for (const conditionsType_1 condition : rule.conditions()->items())
      if (auto found = condition.sphere()) return found->set_value(context, sphere);
  }
  return false;
}

// Takes the rule out of the list, and gives back what it holds.
bool remove(Context &context, RuleSet rules, std::string_view id) {
  RtxList &list = rules.raw().cp_rule;
  for (RtxListNode *node = list.head; node; node = node->next) {
    auto *rule = static_cast<ruleType::Raw *>(node->data);
    if (ruleType(*rule).id() != id) continue;
    (node->prev ? node->prev->next : list.head) = node->next;
    (node->next ? node->next->prev : list.tail) = node->prev;
    --list.count;
    ruleType::dispose(context.get(), rule);
    rtxMemHeapFreePtr(context.get(), rule);
    rtxMemHeapFreePtr(context.get(), node);
    return true;
  }
  return false;
}

// ---- What a rule says -------------------------------------------------------------------------------------------

class Description {
public:
  void operator()(const oneType &one) { add("one", one.id()); }
  void operator()(const manyType &many) {
    add("many", many.domain().value_or("of any domain"));
    for (const manyType_1 exception : many.choice())
      exception.visit(*this);
  }
  void operator()(const exceptType &except) {
    add("except", except.id() ? *except.id() : except.domain().value_or("nobody"));
  }
  void operator()(const identityType &identity) {
    for (const identityType_1 item : identity.items())
      item.visit(*this);
  }
  void operator()(const sphereType &sphere) { add("in sphere", sphere.value()); }
  void operator()(const validityType &validity) {
    add("from", validity.from());
    add("until", validity.until());
  }
  void operator()(const Foreign &foreign) { add("foreign", foreign.xml); }
  void operator()(const List<Foreign> &list) {
    for (const Foreign foreign : list)
      (*this)(foreign);
  }
  void operator()(std::monostate) { add("nothing", ""); }

  std::string text;

private:
  void add(std::string_view what, std::string_view value) {
    text.append("    ").append(what).append(" ").append(value).append("\n");
  }
};

std::string described(const ruleType &rule) {
  Description description;
  if (const auto conditions = rule.conditions()) {
    description.text += "  if\n";
    for (const conditionsType_1 condition : conditions->items())
      condition.visit(description);
  }
  if (const auto actions = rule.actions()) {
    description.text += "  do\n";
    description(actions->items());
  }
  if (const auto transformations = rule.transformations()) {
    description.text += "  show\n";
    description(transformations->items());
  }
  return description.text;
}

using Descriptions = std::map<std::string, std::string>;

Descriptions described(const RuleSet &rules) {
  Descriptions all;
  for (const ruleType rule : rules.rule())
    all[std::string(rule.id())] = described(rule);
  return all;
}

} // namespace

int main() {
  Context context;
  auto rules = context.decode<RuleSet>(body);
  if (!rules) return complain(rules);
  const Descriptions before = described(*rules);

  if (!allow(context, *rules, "neighbour", "sip:nora@next.example")) return 1;
  if (!moveToSphere(context, *rules, "colleagues", "home office")) return 1;
  if (!remove(context, *rules, "visitors")) return 1;
  const auto written = context.encode(*rules);
  if (!written) return complain(written);

  // What others will read in it.
  Context other;
  const auto reread = other.decode<RuleSet>(*written);
  if (!reread) return complain(reread);
  const Descriptions after = described(*reread);
  for (const auto &[id, description] : after) {
    const auto found = before.find(id);
    const char *change = found == before.end() ? "new" : found->second == description ? "unchanged" : "changed";
    std::printf("%s (%s)\n%s", id.c_str(), change, description.c_str());
  }
  return after.size() == rules->rule().size() && after.contains("neighbour") && !after.contains("visitors") &&
                 after.at("family") == before.at("family")
             ? 0
             : 1;
}
