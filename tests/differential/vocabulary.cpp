#include "vocabulary.h"

#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "RuleSet/QxXmlRuleSet.h"

#include <algorithm>

namespace differential {

namespace {

template <class T> const T *named(const std::vector<T> &all, std::string_view name) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const T &one) { return one.name == name; });
  return found == all.end() ? nullptr : &*found;
}

ElementRule simple(std::string_view name, Form form, std::vector<std::string_view> values = {}) {
  return {name, {}, {}, Wildcard::none, false, form, std::move(values)};
}

Vocabulary isComposing() {
  return {"urn:ietf:params:xml:ns:im-iscomposing",
          "im-iscomposing.xsd",
          {{"isComposing",
            {},
            {{"state", 1, 1}, {"lastactive", 0, 1}, {"contenttype", 0, 1}, {"refresh", 0, 1}},
            Wildcard::many},
           simple("state", Form::text),
           simple("lastactive", Form::dateTime),
           simple("contenttype", Form::text),
           simple("refresh", Form::positive)},
          {{"isComposing", QxXmlV_tns_isComposing}}};
}

Vocabulary dialogInfo() {
  const std::vector<AttributeRule> tags = {
      {"call-id", Form::text, true}, {"local-tag", Form::text, true}, {"remote-tag", Form::text, true}};
  const std::vector<ChildRule> participant = {
      {"identity", 0, 1}, {"target", 0, 1}, {"session-description", 0, 1}, {"cseq", 0, 1}};
  return {"urn:ietf:params:xml:ns:dialog-info",
          "dialog-info.xsd",
          {{"dialog-info",
            {{"version", Form::unsignedNumber, true},
             {"state", Form::list, true, {"full", "partial"}},
             {"entity", Form::uri, true}},
            {{"dialog", 0, 2}},
            Wildcard::many},
           {"dialog",
            {{"id", Form::text, true},
             {"call-id", Form::text, false},
             {"local-tag", Form::text, false},
             {"remote-tag", Form::text, false},
             {"direction", Form::list, false, {"initiator", "recipient"}}},
            {{"state", 1, 1},
             {"duration", 0, 1},
             {"replaces", 0, 1},
             {"referred-by", 0, 1},
             {"route-set", 0, 1},
             {"local", 0, 1},
             {"remote", 0, 1}},
            Wildcard::many},
           {"state",
            {{"event",
              Form::list,
              false,
              {"cancelled", "rejected", "replaced", "local-bye", "remote-bye", "error", "timeout"}},
             {"code", Form::code, false}},
            {},
            Wildcard::none,
            false,
            Form::text},
           simple("duration", Form::unsignedNumber),
           {"replaces", tags, {}},
           {"referred-by", {}, {}, Wildcard::none, false, Form::uri},
           {"route-set", {}, {{"hop", 1, 2}}},
           simple("hop", Form::text),
           {"local", {}, participant, Wildcard::many},
           {"remote", {}, participant, Wildcard::many},
           {"identity", {}, {}, Wildcard::none, false, Form::uri},
           {"target", {{"uri", Form::text, true}}, {{"param", 0, 2}}},
           {"param", {{"pname", Form::text, true}, {"pval", Form::text, true}}, {}},
           {"session-description", {{"type", Form::text, true}}, {}, Wildcard::none, false, Form::text},
           simple("cseq", Form::unsignedNumber)},
          {{"dialog-info", QxXmlV_tns_dialog_info}, {"dialog", QxXmlV_tns_dialog}, {"state", QxXmlV_tns_state}}};
}

Vocabulary commonPolicy() {
  return {
      "urn:ietf:params:xml:ns:common-policy",
      "common-policy.xsd",
      {{"ruleset", {}, {{"rule", 0, 2}}},
       {"rule", {{"id", Form::identifier, true}}, {{"conditions", 0, 1}, {"actions", 0, 1}, {"transformations", 0, 1}}},
       {"conditions", {}, {{"identity", 0, 2}, {"sphere", 0, 2}, {"validity", 0, 2}}, Wildcard::many, true},
       {"identity", {}, {{"one", 1, 2}, {"many", 0, 2}}, Wildcard::many, true},
       {"one", {{"id", Form::uri, true}}, {}, Wildcard::one},
       {"many", {{"domain", Form::text, false}}, {{"except", 0, 2}}, Wildcard::many, true},
       {"except", {{"domain", Form::text, false}, {"id", Form::uri, false}}, {}},
       {"sphere", {{"value", Form::text, true}}, {}},
       {"validity", {}, {{"from", 1, 1}, {"until", 1, 1}}},
       simple("from", Form::dateTime),
       simple("until", Form::dateTime),
       {"actions", {}, {}, Wildcard::everything},
       {"transformations", {}, {}, Wildcard::everything}},
      {{"ruleset", QxXmlV_cp_ruleset}}};
}

Vocabulary debugInfo() {
  return {
      "urn:ietf:params:xml:ns:debuginfo",
      "debuginfo.xsd",
      {{"debuginfo",
        {{"version", Form::unsignedNumber, true}, {"state", Form::list, true, {"full", "partial"}}},
        {{"debugconfig", 0, 2}},
        Wildcard::many},
       {"debugconfig", {{"aor", Form::text, true}}, {{"session", 0, 2}}},
       {"session", {{"id", Form::text, true}}, {{"start-trigger", 1, 1}, {"stop-trigger", 1, 1}, {"control", 1, 1}}},
       {"start-trigger",
        {},
        {{"from", 0, 1},
         {"to", 0, 1},
         {"icsi", 0, 1},
         {"iari", 0, 1},
         {"method", 0, 1},
         {"time", 0, 1},
         {"debug-id", 0, 1}}},
       {"stop-trigger", {}, {{"time", 0, 1}, {"time-period", 0, 1}, {"reason", 0, 1}}},
       {"control", {}, {{"interface", 1, 1}, {"depth", 0, 1}, {"debug-id", 0, 1}}},
       simple("time", Form::dateTime),
       simple("from", Form::text),
       simple("to", Form::text),
       simple("method", Form::text),
       simple("icsi", Form::text),
       simple("iari", Form::text),
       simple("debug-id", Form::bytes),
       simple("time-period", Form::period),
       simple("interface", Form::text),
       simple("reason", Form::list, {"dialog_established", "session_end"}),
       simple("depth", Form::list, {"maximum", "minimum"})},
      {{"debuginfo", QxXmlV_tns_debuginfo},
       {"debugconfig", QxXmlV_tns_debugconfig},
       {"session", QxXmlV_tns_session},
       {"start-trigger", QxXmlV_tns_start_trigger},
       {"stop-trigger", QxXmlV_tns_stop_trigger},
       {"control", QxXmlV_tns_control},
       {"time", QxXmlV_tns_time},
       {"from", QxXmlV_tns_from},
       {"to", QxXmlV_tns_to},
       {"method", QxXmlV_tns_method},
       {"icsi", QxXmlV_tns_icsi},
       {"iari", QxXmlV_tns_iari},
       {"debug-id", QxXmlV_tns_debug_id},
       {"time-period", QxXmlV_tns_time_period},
       {"interface", QxXmlV_tns_interface},
       {"reason", QxXmlV_tns_reason},
       {"depth", QxXmlV_tns_depth}}};
}

} // namespace

bool ElementRule::hasChild(std::string_view child) const { return named(children, child) != nullptr; }

const AttributeRule *ElementRule::findAttribute(std::string_view attribute) const {
  return named(attributes, attribute);
}

const ElementRule *Vocabulary::find(std::string_view name) const { return named(elements, name); }

const Root *Vocabulary::findRoot(std::string_view name) const { return named(roots, name); }

std::string_view localPart(std::string_view name) { return name.substr(name.rfind(':') + 1); }

const std::vector<Vocabulary> &vocabularies() {
  static const std::vector<Vocabulary> all = {isComposing(), dialogInfo(), commonPolicy(), debugInfo()};
  return all;
}

} // namespace differential
