// Code that xsdcxx generates from the schemas: the tree mapping, which stands on the DOM of Xerces. The parser is kept
// for all documents, and documents are not validated, which is the cheapest way that its manual knows.
#include "bound.h"
#include "rivals.h"

#include "dialogInfo.hxx"
#include "isComposing.hxx"
#include "pocSettings.hxx"
#include "ruleSet.hxx"

#include <sstream>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/Wrapper4InputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace bench {

namespace {

namespace xml = xercesc;

struct Released {
  template <class Resource> void operator()(Resource *resource) const { resource->release(); }
};

// ---- As records -----------------------------------------------------------------------------------------------

template <class Value> std::optional<Text> optionalText(const Value &from) {
  return from.present() ? std::optional<Text>(*from) : std::nullopt;
}
template <class To, class From> std::optional<To> optional(const From &from) {
  return from.present() ? std::optional<To>(static_cast<To>(*from)) : std::nullopt;
}
// Enumerations count from 0 in the order of the schema.
template <class To, class From> std::optional<To> optionalCode(const From &from) {
  return from.present() ? std::optional<To>(static_cast<To>(static_cast<int>(*from))) : std::nullopt;
}

void convert(const xsdComposing::Composing &from, Arena &, IsComposing &to) {
  to = {from.state(), optionalText(from.lastactive()), optionalText(from.contenttype()),
        optional<uint32_t>(from.refresh())};
}

NameAddress nameAddress(const xsdDialog::Address &from) { return {Text(from), optionalText(from.display_name())}; }

Participant participant(const xsdDialog::Participant &from, Arena &storage) {
  Participant to;
  if (from.identity()) to.identity = nameAddress(*from.identity());
  if (from.target()) {
    to.target.emplace().uri = from.target()->uri();
    for (const auto &parameter : from.target()->param())
      to.target->parameters.append(storage) = {parameter.pname(), parameter.pval()};
  }
  if (from.session_description())
    to.sessionDescription = {Text(*from.session_description()), from.session_description()->type()};
  to.cseq = optional<uint32_t>(from.cseq());
  return to;
}

void convert(const xsdDialog::DialogInfo &from, Arena &storage, DialogInfo &to) {
  to.version = from.version();
  to.state = static_cast<Extent>(static_cast<int>(from.state()));
  to.entity = from.entity();
  for (const auto &dialog : from.dialog()) {
    Dialog &added = to.dialogs.append(storage);
    added.id = dialog.id();
    added.callId = optionalText(dialog.call_id());
    added.localTag = optionalText(dialog.local_tag());
    added.remoteTag = optionalText(dialog.remote_tag());
    added.direction = optionalCode<Direction>(dialog.direction());
    added.state = {Text(dialog.state()), optionalCode<StateEvent>(dialog.state().event()),
                   optional<uint16_t>(dialog.state().code())};
    added.duration = optional<uint32_t>(dialog.duration());
    if (dialog.replaces())
      added.replaces = {dialog.replaces()->call_id(), dialog.replaces()->local_tag(), dialog.replaces()->remote_tag()};
    if (dialog.referred_by()) added.referredBy = nameAddress(*dialog.referred_by());
    if (dialog.route_set()) {
      added.routeSet.emplace();
      for (const auto &hop : dialog.route_set()->hop())
        added.routeSet->append(storage) = hop;
    }
    if (dialog.local()) added.local = participant(*dialog.local(), storage);
    if (dialog.remote()) added.remote = participant(*dialog.remote(), storage);
  }
}

void convert(const xsdSettings::Settings &from, Arena &storage, PocSettings &to) {
  for (const auto &entity : from.entity()) {
    Entity &added = to.entities.append(storage);
    added.id = entity.id();
    if (entity.isb_settings()) added.sessionBarring = entity.isb_settings()->incoming_session_barring().active();
    if (entity.am_settings())
      added.answerMode = static_cast<AnswerMode>(static_cast<int>(entity.am_settings()->answer_mode()));
    if (entity.ipab_settings()) added.alertBarring = entity.ipab_settings()->incoming_personal_alert_barring().active();
    if (entity.sss_settings())
      added.simultaneousSessions = entity.sss_settings()->simultaneous_sessions_support().active();
  }
}

// Elements of other vocabularies stay nodes of a DOM; as text only to compare.
std::optional<List<Foreign>> foreign(const xsdRules::Rule::actions_optional &from, Arena &storage) {
  if (!from) return std::nullopt;
  const XMLCh features[] = {xml::chLatin_L, xml::chLatin_S, xml::chNull};
  xml::DOMImplementation *implementation = xml::DOMImplementationRegistry::getDOMImplementation(features);
  std::unique_ptr<xml::DOMLSSerializer, Released> serializer(implementation->createLSSerializer());
  List<Foreign> to;
  for (const xml::DOMElement &element : from->any()) {
    XMLCh *written = serializer->writeToString(&element);
    xml::TranscodeToStr bytes(written, "UTF-8");
    to.append(storage).xml = storage.copy(reinterpret_cast<const char *>(bytes.str()));
    xml::XMLString::release(&written);
  }
  return to;
}

Many many(const xsdRules::Many &from, Arena &storage) {
  Many to;
  to.domain = optionalText(from.domain());
  for (const auto &except : from.except())
    to.exceptions.append(storage) = {optionalText(except.domain()), optionalText(except.id())};
  return to;
}

// The tree mapping keeps a list for each alternative of a choice; the documents have them in the schema's order.
void convert(const xsdRules::RuleSet &from, Arena &storage, RuleSet &to) {
  for (const auto &rule : from.rule()) {
    Rule &added = to.rules.append(storage);
    added.id = rule.id();
    if (rule.conditions()) {
      added.conditions.emplace();
      for (const auto &identity : rule.conditions()->identity()) {
        Identity items;
        for (const auto &one : identity.one())
          items.append(storage) = One{one.id()};
        for (const auto &item : identity.many())
          items.append(storage) = many(item, storage);
        added.conditions->append(storage) = items;
      }
      for (const auto &sphere : rule.conditions()->sphere())
        added.conditions->append(storage) = Sphere{sphere.value()};
      for (const auto &validity : rule.conditions()->validity())
        added.conditions->append(storage) = Validity{validity.from(), validity.until()};
    }
    added.actions = foreign(rule.actions(), storage);
    added.transformations = foreign(rule.transformations(), storage);
  }
}

// ---- Binding --------------------------------------------------------------------------------------------------

template <class Object> struct Generated;
template <> struct Generated<xsdComposing::Composing> {
  using Record = IsComposing;
  static constexpr const char *uri = "urn:ietf:params:xml:ns:im-iscomposing";
  static auto parse(const xml::DOMDocument &tree, xml_schema::flags flags) {
    return xsdComposing::isComposing(tree, flags);
  }
  static void serialize(std::ostream &out, const xsdComposing::Composing &object,
                        const xml_schema::namespace_infomap &names) {
    xsdComposing::isComposing(out, object, names, "UTF-8", xml_schema::flags::dont_initialize);
  }
};
template <> struct Generated<xsdDialog::DialogInfo> {
  using Record = DialogInfo;
  static constexpr const char *uri = "urn:ietf:params:xml:ns:dialog-info";
  static auto parse(const xml::DOMDocument &tree, xml_schema::flags flags) {
    return xsdDialog::dialog_info(tree, flags);
  }
  static void serialize(std::ostream &out, const xsdDialog::DialogInfo &object,
                        const xml_schema::namespace_infomap &names) {
    xsdDialog::dialog_info(out, object, names, "UTF-8", xml_schema::flags::dont_initialize);
  }
};
template <> struct Generated<xsdSettings::Settings> {
  using Record = PocSettings;
  static constexpr const char *uri = "urn:oma:params:xml:ns:poc:poc-settings";
  static auto parse(const xml::DOMDocument &tree, xml_schema::flags flags) {
    return xsdSettings::poc_settings(tree, flags);
  }
  static void serialize(std::ostream &out, const xsdSettings::Settings &object,
                        const xml_schema::namespace_infomap &names) {
    xsdSettings::poc_settings(out, object, names, "UTF-8", xml_schema::flags::dont_initialize);
  }
};

template <> struct Generated<xsdRules::RuleSet> {
  using Record = RuleSet;
  static constexpr const char *uri = "urn:ietf:params:xml:ns:common-policy";
  static auto parse(const xml::DOMDocument &tree, xml_schema::flags flags) { return xsdRules::ruleset(tree, flags); }
  static void serialize(std::ostream &out, const xsdRules::RuleSet &object,
                        const xml_schema::namespace_infomap &names) {
    xsdRules::ruleset(out, object, names, "UTF-8", xml_schema::flags::dont_initialize);
  }
};

// Xerces counts how often it was started.
struct Platform {
  Platform() { xml::XMLPlatformUtils::Initialize(); }
  ~Platform() { xml::XMLPlatformUtils::Terminate(); }
  Platform(const Platform &) = delete;
  Platform &operator=(const Platform &) = delete;
};

template <class Object> class XsdBinding {
  using Code = Generated<Object>;

public:
  using Record = typename Code::Record;

  XsdBinding() {
    const XMLCh features[] = {xml::chLatin_L, xml::chLatin_S, xml::chNull};
    parser.reset(xml::DOMImplementationRegistry::getDOMImplementation(features)->createLSParser(
        xml::DOMImplementationLS::MODE_SYNCHRONOUS, nullptr));
    xml::DOMConfiguration *options = parser->getDomConfig();
    options->setParameter(xml::XMLUni::fgDOMComments, false);
    options->setParameter(xml::XMLUni::fgDOMDatatypeNormalization, true);
    options->setParameter(xml::XMLUni::fgDOMEntities, false);
    options->setParameter(xml::XMLUni::fgDOMNamespaces, true);
    options->setParameter(xml::XMLUni::fgDOMElementContentWhitespace, false);
    options->setParameter(xml::XMLUni::fgDOMValidate, false);
    options->setParameter(xml::XMLUni::fgXercesSchema, false);
    names[""].name = Code::uri;
  }

  void decode(std::string_view body) {
    xml::MemBufInputSource bytes(reinterpret_cast<const XMLByte *>(body.data()), body.size(), "", false);
    bytes.setCopyBufToStream(false);
    xml::Wrapper4InputSource source(&bytes, false);
    parser->resetDocumentPool();
    xml::DOMDocument *tree = parser->parse(&source);
    if (!tree) refuse("xsdcxx cannot read it");
    object = Code::parse(*tree, xml_schema::flags::dont_initialize);
  }

  std::string_view encode() {
    stream.str({});
    Code::serialize(stream, *object, names);
    return stream.view();
  }

  void convert(Arena &storage, Record &record) const { bench::convert(*object, storage, record); }

private:
  Platform platform;
  std::unique_ptr<xml::DOMLSParser, Released> parser;
  std::unique_ptr<Object> object;
  xml_schema::namespace_infomap names;
  std::ostringstream stream;
};

template <template <class> class Work> std::unique_ptr<Workload> make(const Document &document) {
  switch (document.name.front()) {
  case 'a': return std::make_unique<Work<XsdBinding<xsdComposing::Composing>>>(document);
  case 'c': return std::make_unique<Work<XsdBinding<xsdRules::RuleSet>>>(document);
  case 'e': return std::make_unique<Work<XsdBinding<xsdSettings::Settings>>>(document);
  default: return std::make_unique<Work<XsdBinding<xsdDialog::DialogInfo>>>(document);
  }
}

} // namespace

void addXsdcxx(std::vector<NamedWorkload> &workloads) {
  workloads.push_back({"xsdcxx-decode", make<BoundDecode>, true, "abcde"});
  workloads.push_back({"xsdcxx-encode", make<BoundEncode>, true, "abcde"});
}

} // namespace bench
