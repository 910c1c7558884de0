// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "ImCn/QxXmlImCn.h"
#include "imscodec/core.hpp"

namespace imscodec::imcn {

// tAlternativeService
class tAlternativeService : public View<::tAlternativeService> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tAlternativeService(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tAlternativeService(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tAlternativeService(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("type", record.type...) &&
           visitor.template member<std::string_view>("reason", record.reason...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  std::string_view type() const { return textOf(raw().type); }
  [[nodiscard]] bool set_type(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().type, text, true);
  }

  std::string_view reason() const { return textOf(raw().reason); }
  [[nodiscard]] bool set_reason(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().reason, text, true);
  }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// tIMS3GPP_1
class tIMS3GPP_1 : public View<::tIMS3GPP_1> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tIMS3GPP_1(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tIMS3GPP_1(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    if (!visitor.selector(record.t...)) return false;
    switch (detail::first(record.t...)) {
    case tIMS3GPP_1_alternative_service: return visitor.template alternative<imscodec::imcn::tAlternativeService>("alternative_service", record.u.alternative_service...);
    case tIMS3GPP_1_service_info: return visitor.template alternative<std::string_view>("service_info", record.u.service_info...);
    default: return true;
    }
  }

  // The alternative that is chosen; none of a choice that nobody has made.
  enum class Kind : std::uint16_t {
    none,
    alternative_service = tIMS3GPP_1_alternative_service,
    service_info = tIMS3GPP_1_service_info,
  };
  Kind kind() const { return static_cast<Kind>(raw().t); }

  // Calls visitor with the alternative, or with std::monostate if there is none.
  template <class Visitor> decltype(auto) visit(Visitor &&visitor) const {
    switch (raw().t) {
    case tIMS3GPP_1_alternative_service: return std::forward<Visitor>(visitor)(imscodec::imcn::tAlternativeService(raw().u.alternative_service));
    case tIMS3GPP_1_service_info: return std::forward<Visitor>(visitor)(textOf(raw().u.service_info));
    default: return std::forward<Visitor>(visitor)(std::monostate{});
    }
  }

  Optional<imscodec::imcn::tAlternativeService> alternative_service() const { return {raw().t == tIMS3GPP_1_alternative_service, &raw().u.alternative_service}; }
  imscodec::imcn::tAlternativeService choose_alternative_service(Context &context) {
    choose(context, tIMS3GPP_1_alternative_service);
    imscodec::imcn::tAlternativeService::initialise(context.get(), &raw().u.alternative_service);
    return imscodec::imcn::tAlternativeService(raw().u.alternative_service);
  }
  Optional<std::string_view> service_info() const { return {raw().t == tIMS3GPP_1_service_info, &raw().u.service_info}; }
  [[nodiscard]] bool choose_service_info(Context &context, std::string_view text) {
    RtxXmlString copy{};
    if (!detail::assign(context.get(), copy, text, false)) return false;
    choose(context, tIMS3GPP_1_service_info);
    raw().u.service_info = copy;
    return true;
  }

private:
  // Gives back what was chosen before.
  void choose(Context &context, std::uint16_t selector) {
    dispose(context.get(), &raw());
    initialise(context.get(), &raw());
    raw().t = selector;
  }
};

// tIMS3GPP
class tIMS3GPP : public View<::tIMS3GPP> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tIMS3GPP(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tIMS3GPP(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::imcn::tIMS3GPP_1>("_choice1", record._choice1...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<double>("version", record.version...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  imscodec::imcn::tIMS3GPP_1 choice1() const { return imscodec::imcn::tIMS3GPP_1(raw()._choice1); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  double version() const { return raw().version; }
  void set_version(double value) { raw().version = value; }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// Documents by the names of their roots.
using ims_3gpp = tIMS3GPP;
struct type {}; // of a single value
struct action {}; // of a single value

} // namespace imscodec::imcn

namespace imscodec {

template <> struct Document<imscodec::imcn::tIMS3GPP> : detail::RecordDocument<imscodec::imcn::tIMS3GPP, QxXmlD_ims_3gpp, QxXmlE_ims_3gpp, QxXmlV_ims_3gpp> {};
template <> struct Document<imscodec::imcn::type> : detail::TextDocument<QxXmlD_type, QxXmlE_type, QxXmlV_type> {};
template <> struct Document<imscodec::imcn::action> : detail::TextDocument<QxXmlD_action, QxXmlE_action, QxXmlV_action> {};

} // namespace imscodec
