// The records of the codec as records of the rivals, to compare with.
#include "rival.h"

#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "FilterSet/QxXmlFilterSet.h"
#include "ImCn/QxXmlImCn.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "PocSettings/QxXmlPocSettings.h"
#include "QxXmlIMS.h"
#include "RuleSet/QxXmlRuleSet.h"

#include <libxml/parser.h>

#include <vector>

namespace bench {

namespace {

// Converts what a decoder has left. Content that the rivals' records have no place for is refused.
class Conversion {
public:
  explicit Conversion(Arena &texts) : storage(texts) {}

  void convert(const tns__isComposing &from, IsComposing &to) {
    to.state = text(from.tns_state);
    if (from.m & tns__isComposing_has_lastactive) to.lastActive = text(from.tns_lastactive);
    if (from.m & tns__isComposing_has_contenttype) to.contentType = text(from.tns_contenttype);
    if (from.m & tns__isComposing_has_refresh) to.refresh = from.tns_refresh;
    requireEmpty(from.anyElems.items);
  }

  void convert(const tns__dialog_info &from, DialogInfo &to) {
    to.version = from.tns_version;
    to.state = static_cast<Extent>(from.tns_state);
    to.entity = text(from.tns_entity);
    each<tns__dialog>(from.tns_dialog, [&](const auto &dialog) { convert(dialog, to.dialogs.append(storage)); });
    requireEmpty(from.anyElems.items);
  }

  void convert(const cp__ruleset &from, RuleSet &to) {
    each<cp_ruleType>(from.cp_rule, [&](const auto &rule) { convert(rule, to.rules.append(storage)); });
  }

  void convert(const poc_settingsType &from, PocSettings &to) {
    each<entityType>(from.entity, [&](const auto &entity) { convert(entity, to.entities.append(storage)); });
    requireEmpty(from.anyElems.items);
    requireEmpty(from._anyAttr.items);
  }

  void convert(const FilterSetType &from, FilterSet &to) {
    if (from.m & FilterSetType_has_package) to.package = text(from.package_);
    if (from.m & FilterSetType_has_ns_bindings) {
      to.bindings.emplace();
      each<NSBinding>(from.ns_bindings.ns_binding, [&](const auto &binding) {
        to.bindings->append(storage) = {text(binding.prefix), text(binding.urn)};
      });
    }
    each<FilterType>(from.filter, [&](const auto &filter) { convert(filter, to.filters.append(storage)); });
    requireEmpty(from._anyAttr.items);
  }

  void convert(const tIMS3GPP &from, Alternative &to) {
    to.version = from.version;
    if (from._choice1.t != tIMS3GPP_1_alternative_service) refuse("no alternative service");
    const tAlternativeService &service = from._choice1.u.alternative_service;
    to.type = text(service.type);
    to.reason = text(service.reason);
    foreign(service.anyElems.items, to.others);
    requireEmpty(service._anyAttr.items);
    requireEmpty(from.anyElems.items);
    requireEmpty(from._anyAttr.items);
  }

  void convert(const tns__debuginfo &from, DebugInfo &to) {
    to.version = from.tns_version;
    to.state = static_cast<Extent>(from.tns_state);
    each<tns__debugconfig>(from.tns_debugconfig, [&](const auto &config) {
      DebugConfig &converted = to.configs.append(storage);
      converted.user = text(config.tns_aor);
      each<tns__session>(config.tns_session,
                         [&](const auto &session) { convert(session, converted.sessions.append(storage)); });
    });
    requireEmpty(from.anyElems.items);
  }

private:
  static void requireEmpty(const RtxList &list) {
    if (list.head) refuse("content that no rival reads");
  }

  Text text(const RtxXmlString &from) { return from.value ? storage.copy(from.value) : Text(); }
  Text bytes(const RtxHexBinary &from) {
    return storage.copy({reinterpret_cast<const char *>(from.bytes), from.length});
  }

  template <class Item, class Call> void each(const RtxList &list, Call call) {
    for (const RtxListNode *node = list.head; node; node = node->next)
      call(*static_cast<const Item *>(node->data));
  }

  void texts(const RtxList &from, List<Text> &to) {
    each<RtxXmlString>(from, [&](const auto &item) { to.append(storage) = text(item); });
  }
  void foreign(const RtxList &from, List<Foreign> &to) {
    each<RtxXmlString>(from, [&](const auto &item) { to.append(storage).xml = text(item); });
  }

  void convert(const tns__dialog &from, Dialog &to) {
    to.id = text(from.tns_id);
    if (from.m & tns__dialog_has_call_id) to.callId = text(from.tns_call_id);
    if (from.m & tns__dialog_has_local_tag) to.localTag = text(from.tns_local_tag);
    if (from.m & tns__dialog_has_remote_tag) to.remoteTag = text(from.tns_remote_tag);
    if (from.m & tns__dialog_has_direction) to.direction = static_cast<bench::Direction>(from.tns_direction);
    to.state.value = text(from.tns_state.value);
    if (from.tns_state.m & tns__state_has_event) to.state.event = static_cast<StateEvent>(from.tns_state.tns_event);
    if (from.tns_state.m & tns__state_has_code) to.state.code = from.tns_state.tns_code;
    if (from.m & tns__dialog_has_duration) to.duration = from.tns_duration;
    if (from.m & tns__dialog_has_replaces)
      to.replaces = {text(from.tns_replaces.tns_call_id), text(from.tns_replaces.tns_local_tag),
                     text(from.tns_replaces.tns_remote_tag)};
    if (from.m & tns__dialog_has_referred_by) to.referredBy = nameAddress(from.tns_referred_by);
    if (from.m & tns__dialog_has_route_set) texts(from.tns_route_set.tns_hop, to.routeSet.emplace());
    if (from.m & tns__dialog_has_local) convert(from.tns_local, to.local.emplace());
    if (from.m & tns__dialog_has_remote) convert(from.tns_remote, to.remote.emplace());
    requireEmpty(from.anyElems.items);
  }

  NameAddress nameAddress(const tns_nameaddr &from) {
    NameAddress to;
    to.value = text(from.value);
    if (from.m & tns_nameaddr_has_display_name) to.displayName = text(from.tns_display_name);
    return to;
  }

  void convert(const tns_participant &from, Participant &to) {
    if (from.m & tns_participant_has_identity) to.identity = nameAddress(from.tns_identity);
    if (from.m & tns_participant_has_target) {
      to.target.emplace().uri = text(from.tns_target.tns_uri);
      each<tns_participant_target_param>(from.tns_target.tns_param, [&](const auto &parameter) {
        to.target->parameters.append(storage) = {text(parameter.tns_pname), text(parameter.tns_pval)};
      });
    }
    if (from.m & tns_participant_has_session_description)
      to.sessionDescription = {text(from.tns_session_description.value), text(from.tns_session_description.tns_type)};
    if (from.m & tns_participant_has_cseq) to.cseq = from.tns_cseq;
    requireEmpty(from.anyElems.items);
  }

  void convert(const cp_ruleType &from, Rule &to) {
    to.id = text(from.cp_id);
    if (from.m & cp_ruleType_has_conditions) {
      to.conditions.emplace();
      each<cp_conditionsType_1>(from.cp_conditions.items,
                                [&](const auto &condition) { convert(condition, to.conditions->append(storage)); });
    }
    if (from.m & cp_ruleType_has_actions) foreign(from.cp_actions.items.items, to.actions.emplace());
    if (from.m & cp_ruleType_has_transformations)
      foreign(from.cp_transformations.items.items, to.transformations.emplace());
  }

  void convert(const cp_conditionsType_1 &from, Condition &to) {
    switch (from.t) {
    case cp_conditionsType_1_identity: {
      Identity &identity = to.emplace<Identity>();
      each<cp_identityType_1>(from.u.cp_identity.items, [&](const auto &item) {
        auto &converted = identity.append(storage);
        if (item.t == cp_identityType_1_one)
          converted = One{text(item.u.cp_one.cp_id)};
        else if (item.t == cp_identityType_1_many)
          convert(item.u.cp_many, converted.template emplace<Many>());
        else
          refuse("content that no rival reads");
      });
      break;
    }
    case cp_conditionsType_1_sphere: to = Sphere{text(from.u.cp_sphere.cp_value)}; break;
    case cp_conditionsType_1_validity:
      to = Validity{text(from.u.cp_validity.cp_from), text(from.u.cp_validity.cp_until)};
      break;
    default: refuse("content that no rival reads");
    }
  }

  void convert(const cp_manyType &from, Many &to) {
    if (from.m & cp_manyType_has_domain) to.domain = text(from.cp_domain);
    each<cp_manyType_1>(from.cp__choice, [&](const auto &item) {
      if (item.t != cp_manyType_1_except) refuse("content that no rival reads");
      const cp_exceptType &except = item.u.cp_except;
      Except &converted = to.exceptions.append(storage);
      if (except.m & cp_exceptType_has_domain) converted.domain = text(except.cp_domain);
      if (except.m & cp_exceptType_has_id) converted.id = text(except.cp_id);
    });
  }

  void convert(const entityType &from, Entity &to) {
    to.id = text(from.id);
    if (from.m & entityType_has_isb_settings) to.sessionBarring = from.isb_settings.incoming_session_barring.active;
    if (from.m & entityType_has_am_settings) to.answerMode = static_cast<AnswerMode>(from.am_settings.answer_mode);
    if (from.m & entityType_has_ipab_settings)
      to.alertBarring = from.ipab_settings.incoming_personal_alert_barring.active;
    if (from.m & entityType_has_sss_settings)
      to.simultaneousSessions = from.sss_settings.simultaneous_sessions_support.active;
    requireEmpty(from.anyElems.items);
    requireEmpty(from._anyAttr.items);
  }

  void convert(const FilterType &from, Filter &to) {
    to.id = text(from.id);
    if (from.m & FilterType_has_uri) to.uri = text(from.uri);
    if (from.m & FilterType_has_domain) to.domain = text(from.domain);
    to.remove = from.remove_;
    to.enabled = from.enabled;
    if (from.m & FilterType_has_what) {
      to.what.emplace();
      each<InclType>(from.what.include, [&](const auto &item) { select(item, to.what->included.append(storage)); });
      each<ExclType>(from.what.exclude, [&](const auto &item) { select(item, to.what->excluded.append(storage)); });
      requireEmpty(from.what._any.items);
    }
    each<TriggerType>(from.trigger, [&](const auto &trigger) { convert(trigger, to.triggers.append(storage)); });
    requireEmpty(from._any.items);
    requireEmpty(from._anyAttr.items);
  }

  template <class Item> void select(const Item &from, Selection &to) {
    to.value = text(from.value);
    if (from.m & InclType_has_type) to.type = static_cast<SelectionType>(from.type);
  }

  void convert(const TriggerType &from, Trigger &to) {
    each<ChangedType>(from.changed, [&](const auto &item) {
      Changed &changed = to.changed.append(storage);
      changed.value = text(item.value);
      if (item.m & ChangedType_has_from) changed.from = text(item.from);
      if (item.m & ChangedType_has_to) changed.to = text(item.to);
      if (item.m & ChangedType_has_by) changed.by = item.by;
    });
    texts(from.added, to.added);
    texts(from.removed, to.removed);
    requireEmpty(from._any.items);
  }

  void convert(const tns__session &from, Session &to) {
    to.id = text(from.tns_id);
    const tns__start_trigger &start = from.tns_start_trigger;
    if (start.m & tns__start_trigger_has_from) to.start.from = text(start.tns_from);
    if (start.m & tns__start_trigger_has_to) to.start.to = text(start.tns_to);
    if (start.m & tns__start_trigger_has_icsi) to.start.service = text(start.tns_icsi);
    if (start.m & tns__start_trigger_has_iari) to.start.application = text(start.tns_iari);
    if (start.m & tns__start_trigger_has_method) to.start.method = text(start.tns_method);
    if (start.m & tns__start_trigger_has_time) to.start.time = text(start.tns_time);
    if (start.m & tns__start_trigger_has_debug_id) to.start.debugId = bytes(start.tns_debug_id);
    const tns__stop_trigger &stop = from.tns_stop_trigger;
    if (stop.m & tns__stop_trigger_has_time) to.stop.time = text(stop.tns_time);
    if (stop.m & tns__stop_trigger_has_time_period) to.stop.period = text(stop.tns_time_period);
    if (stop.m & tns__stop_trigger_has_reason) to.stop.reason = static_cast<StopReason>(stop.tns_reason);
    const tns__control &control = from.tns_control;
    to.control.interfaces = text(control.tns_interface);
    if (control.m & tns__control_has_depth) to.control.depth = static_cast<Depth>(control.tns_depth);
    if (control.m & tns__control_has_debug_id) to.control.debugId = bytes(control.tns_debug_id);
  }

  Arena &storage;
};

// The record type of the codec that stands for one of ours.
template <class Record> struct CodecRecord;
template <> struct CodecRecord<IsComposing> { using Type = tns__isComposing; };
template <> struct CodecRecord<DialogInfo> { using Type = tns__dialog_info; };
template <> struct CodecRecord<RuleSet> { using Type = cp__ruleset; };
template <> struct CodecRecord<PocSettings> { using Type = poc_settingsType; };
template <> struct CodecRecord<FilterSet> { using Type = FilterSetType; };
template <> struct CodecRecord<Alternative> { using Type = tIMS3GPP; };
template <> struct CodecRecord<DebugInfo> { using Type = tns__debuginfo; };

// ---- Foreign elements by their meaning ------------------------------------------------------------------------

struct Parsed {
  // The rivals may leave out the declarations that stood further out.
  explicit Parsed(Text xml)
      : text("<around xmlns:pr='urn:ietf:params:xml:ns:pres-rules'>" + std::string(xml) + "</around>"),
        tree(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr,
                           XML_PARSE_NOERROR | XML_PARSE_NOBLANKS)) {}
  Parsed(const Parsed &) = delete;
  Parsed &operator=(const Parsed &) = delete;
  ~Parsed() { xmlFreeDoc(tree); }

  std::string text;
  xmlDocPtr tree;
};

bool same(const xmlNs *left, const xmlNs *right) {
  return left && right ? xmlStrEqual(left->href, right->href) != 0 : left == right;
}

bool same(const xmlNode *left, const xmlNode *right) {
  for (; left && right; left = left->next, right = right->next) {
    if (left->type != right->type || !xmlStrEqual(left->name, right->name)) return false;
    if (left->type != XML_ELEMENT_NODE) {
      if (!xmlStrEqual(left->content, right->content)) return false;
      continue;
    }
    if (!same(left->ns, right->ns) || left->properties || right->properties || !same(left->children, right->children))
      return false;
  }
  return left == right;
}

} // namespace

bool operator==(const Foreign &left, const Foreign &right) {
  Parsed a(left.xml);
  Parsed b(right.xml);
  return a.tree && b.tree && same(a.tree->children, b.tree->children);
}

template <class Record>
void readByCodec(const Document &document, std::string_view body, Arena &storage, Record &record) {
  typename CodecRecord<Record>::Type decoded;
  RuntimeContext *context = rtxContextCreate(nullptr);
  int status = rtxSetInput(context, body.data(), body.size());
  if (status == 0) status = document.decode(context, &decoded);
  if (status == 0) Conversion(storage).convert(decoded, record);
  rtxContextFree(context);
  if (status != 0) refuse("the codec cannot read it");
}
template void readByCodec(const Document &, std::string_view, Arena &, IsComposing &);
template void readByCodec(const Document &, std::string_view, Arena &, DialogInfo &);
template void readByCodec(const Document &, std::string_view, Arena &, RuleSet &);
template void readByCodec(const Document &, std::string_view, Arena &, PocSettings &);
template void readByCodec(const Document &, std::string_view, Arena &, FilterSet &);
template void readByCodec(const Document &, std::string_view, Arena &, Alternative &);
template void readByCodec(const Document &, std::string_view, Arena &, DebugInfo &);

} // namespace bench
