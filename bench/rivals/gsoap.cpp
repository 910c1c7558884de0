// Code that gSOAP generates from the schemas: C structures and their serializers, texts on the storage of gSOAP's own
// context. Modes that do less work are chosen: plain trees, UTF-8 as it stands, one namespace to know.
#include "bound.h"
#include "rivals.h"

#include "soapH.h"

#include <algorithm>

// The library wants a table by this name; each binding sets its own.
struct Namespace namespaces[] = {{nullptr, nullptr, nullptr, nullptr}};

namespace bench {

namespace {

template <class Object> struct Generated;
#define GENERATED(Object, TheRecord, prefix, name, uri)                                                                \
  template <> struct Generated<Object> {                                                                               \
    using Record = TheRecord;                                                                                          \
    static constexpr const char *tag = prefix ":" name;                                                                \
    static constexpr Namespace table[] = {{prefix, uri, nullptr, nullptr}, {}};                                        \
    static constexpr auto get = soap_get_##Object;                                                                     \
    static constexpr auto put = soap_put_##Object;                                                                     \
  };
GENERATED(ns1__Composing, IsComposing, "ns1", "isComposing", "urn:ietf:params:xml:ns:im-iscomposing")
GENERATED(ns2__DialogInfo, DialogInfo, "ns2", "dialog-info", "urn:ietf:params:xml:ns:dialog-info")
GENERATED(ns3__Settings, PocSettings, "ns3", "poc-settings", "urn:oma:params:xml:ns:poc:poc-settings")
GENERATED(ns4__RuleSet, RuleSet, "ns4", "ruleset", "urn:ietf:params:xml:ns:common-policy")
#undef GENERATED

// ---- As records -----------------------------------------------------------------------------------------------

Text text(const char *from) { return from ? Text(from) : Text(); }
std::optional<Text> optional(const char *from) { return from ? std::optional<Text>(from) : std::nullopt; }
template <class To, class From> std::optional<To> optional(const From *from) {
  return from ? std::optional<To>(static_cast<To>(*from)) : std::nullopt;
}

void convert(const ns1__Composing &from, Arena &, IsComposing &to) {
  to = {text(from.state), optional(from.lastactive), optional(from.contenttype), optional<uint32_t>(from.refresh)};
}

NameAddress nameAddress(const ns2__Address &from) { return {text(from.__item), optional(from.display_name)}; }

Participant participant(const ns2__Participant &from, Arena &storage) {
  Participant to;
  if (from.identity) to.identity = nameAddress(*from.identity);
  if (from.target) {
    to.target.emplace().uri = text(from.target->uri);
    for (int i = 0; i < from.target->__sizeparam; ++i)
      to.target->parameters.append(storage) = {text(from.target->param[i].pname), text(from.target->param[i].pval)};
  }
  if (from.session_description)
    to.sessionDescription = {text(from.session_description->__item), text(from.session_description->type)};
  to.cseq = optional<uint32_t>(from.cseq);
  return to;
}

void convert(const ns2__DialogInfo &from, Arena &storage, DialogInfo &to) {
  to.version = from.version;
  to.state = static_cast<Extent>(from.state);
  to.entity = text(from.entity);
  for (int i = 0; i < from.__sizedialog; ++i) {
    const ns2__Dialog &dialog = from.dialog[i];
    Dialog &added = to.dialogs.append(storage);
    added.id = text(dialog.id);
    added.callId = optional(dialog.call_id);
    added.localTag = optional(dialog.local_tag);
    added.remoteTag = optional(dialog.remote_tag);
    added.direction = optional<Direction>(dialog.direction);
    added.state = {text(dialog.state->__item), optional<StateEvent>(dialog.state->event),
                   optional<uint16_t>(dialog.state->code)};
    added.duration = optional<uint32_t>(dialog.duration);
    if (dialog.replaces)
      added.replaces = {text(dialog.replaces->call_id), text(dialog.replaces->local_tag),
                        text(dialog.replaces->remote_tag)};
    if (dialog.referred_by) added.referredBy = nameAddress(*dialog.referred_by);
    if (dialog.route_set) {
      added.routeSet.emplace();
      for (int hop = 0; hop < dialog.route_set->__sizehop; ++hop)
        added.routeSet->append(storage) = text(dialog.route_set->hop[hop]);
    }
    if (dialog.local) added.local = participant(*dialog.local, storage);
    if (dialog.remote) added.remote = participant(*dialog.remote, storage);
  }
}

void convert(const ns3__Settings &from, Arena &storage, PocSettings &to) {
  auto active = [](const ns3__Switch &setting) { return setting.active == xsd__boolean__true_; };
  for (int i = 0; i < from.__sizeentity; ++i) {
    const ns3__Entity &entity = from.entity[i];
    Entity &added = to.entities.append(storage);
    added.id = text(entity.id);
    if (entity.isb_settings) added.sessionBarring = active(*entity.isb_settings->incoming_session_barring);
    if (entity.am_settings) added.answerMode = static_cast<AnswerMode>(entity.am_settings->answer_mode);
    if (entity.ipab_settings) added.alertBarring = active(*entity.ipab_settings->incoming_personal_alert_barring);
    if (entity.sss_settings) added.simultaneousSessions = active(*entity.sss_settings->simultaneous_sessions_support);
  }
}

Many many(const ns4__Many &from, Arena &storage) {
  Many to;
  to.domain = optional(from.domain);
  for (int i = 0; i < from.__sizeexcept; ++i)
    to.exceptions.append(storage) = {optional(from.except[i].domain), optional(from.except[i].id)};
  return to;
}

Condition condition(const __ns4__union_Conditions &from, Arena &storage) {
  switch (from.__union_Conditions) {
  case SOAP_UNION__ns4__union_Conditions_sphere: return Sphere{text(from.union_Conditions.sphere->value)};
  case SOAP_UNION__ns4__union_Conditions_validity:
    return Validity{text(from.union_Conditions.validity->from), text(from.union_Conditions.validity->until)};
  default: break;
  }
  Identity to;
  const ns4__Identity &identity = *from.union_Conditions.identity;
  for (int i = 0; i < identity.__size_Identity; ++i) {
    const __ns4__union_Identity &item = identity.__union_Identity[i];
    if (item.__union_Identity == SOAP_UNION__ns4__union_Identity_one)
      to.append(storage) = One{text(item.union_Identity.one->id)};
    else
      to.append(storage) = many(*item.union_Identity.many, storage);
  }
  return to;
}

std::optional<List<Foreign>> foreign(const ns4__Extensible *from, Arena &storage) {
  if (!from) return std::nullopt;
  List<Foreign> to;
  for (int i = 0; i < from->__size; ++i)
    to.append(storage) = {text(from->__any[i])};
  return to;
}

void convert(const ns4__RuleSet &from, Arena &storage, RuleSet &to) {
  for (int i = 0; i < from.__sizerule; ++i) {
    const ns4__Rule &rule = from.rule[i];
    Rule &added = to.rules.append(storage);
    added.id = text(rule.id);
    if (rule.conditions) {
      added.conditions.emplace();
      for (int item = 0; item < rule.conditions->__size_Conditions; ++item)
        added.conditions->append(storage) = condition(rule.conditions->__union_Conditions[item], storage);
    }
    added.actions = foreign(rule.actions, storage);
    added.transformations = foreign(rule.transformations, storage);
  }
}

// ---- Binding --------------------------------------------------------------------------------------------------

// How the documents come: each as a message of its own, by the book; or following each other as if from one stream,
// all objects of the last one given back at once. The calls that begin and end a message clear tables of references
// that plain trees do not use, which for a small document costs more than reading it.
enum class Arrival {
  messages,
  stream
};

template <class Object, Arrival arrival> class GsoapBinding {
  using Code = Generated<Object>;

public:
  using Record = typename Code::Record;

  GsoapBinding() : context(soap_new1(SOAP_C_UTFSTRING | SOAP_XML_TREE)) {
    soap_set_namespaces(context, Code::table);
    context->user = this;
    context->frecv = receive;
    context->fsend = send;
  }
  GsoapBinding(const GsoapBinding &) = delete;
  GsoapBinding &operator=(const GsoapBinding &) = delete;
  ~GsoapBinding() {
    soap_destroy(context);
    soap_end(context);
    soap_free(context);
  }

  void decode(std::string_view body) {
    soap_destroy(context);
    if constexpr (arrival == Arrival::stream)
      soap_dealloc(context, nullptr);
    else
      soap_end(context);
    input = body;
    bool good = (arrival == Arrival::stream && begun) || soap_begin_recv(context) == SOAP_OK;
    begun = true;
    good = good && Code::get(context, &object, Code::tag, nullptr);
    if constexpr (arrival == Arrival::messages) good = good && soap_end_recv(context) == SOAP_OK;
    if (!good) refuse("gSOAP cannot read it");
  }

  std::string_view encode() {
    output.clear();
    if (soap_begin_send(context) != SOAP_OK || Code::put(context, &object, Code::tag, nullptr) != SOAP_OK ||
        soap_end_send(context) != SOAP_OK)
      refuse("gSOAP cannot write it");
    return output;
  }

  void convert(Arena &storage, Record &record) const { bench::convert(object, storage, record); }

private:
  static size_t receive(soap *context, char *bytes, size_t room) {
    std::string_view &left = static_cast<GsoapBinding *>(context->user)->input;
    size_t size = std::min(room, left.size());
    std::memcpy(bytes, left.data(), size);
    left.remove_prefix(size);
    return size;
  }
  static int send(soap *context, const char *bytes, size_t size) {
    static_cast<GsoapBinding *>(context->user)->output.append(bytes, size);
    return SOAP_OK;
  }

  soap *context;
  bool begun = false;
  Object object;
  std::string_view input;
  std::string output;
};

template <template <class> class Work, Arrival arrival> std::unique_ptr<Workload> make(const Document &document) {
  switch (document.name.front()) {
  case 'a': return std::make_unique<Work<GsoapBinding<ns1__Composing, arrival>>>(document);
  case 'c': return std::make_unique<Work<GsoapBinding<ns4__RuleSet, arrival>>>(document);
  case 'e': return std::make_unique<Work<GsoapBinding<ns3__Settings, arrival>>>(document);
  default: return std::make_unique<Work<GsoapBinding<ns2__DialogInfo, arrival>>>(document);
  }
}

} // namespace

void addGsoap(std::vector<NamedWorkload> &workloads) {
  workloads.push_back({"gsoap-decode", make<BoundDecode, Arrival::messages>, true, "abcde"});
  workloads.push_back({"gsoap-stream", make<BoundDecode, Arrival::stream>, true, "abcde"});
  workloads.push_back({"gsoap-encode", make<BoundEncode, Arrival::messages>, true, "abcde"});
}

} // namespace bench
