// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "FilterSet/QxXmlFilterSet.h"
#include "imscodec/core.hpp"

namespace imscodec::filterset {

enum class TypeType : std::uint16_t {
  xpath = 0,
  namespace_ = 1,
};

using imscodec::text; // found by the type of the code

// NSBinding
class NSBinding : public View<::NSBinding> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_NSBinding(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::clear(ctx, record->prefix);
    detail::clear(ctx, record->urn);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_NSBinding(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("prefix", record.prefix...) &&
           visitor.template member<std::string_view>("urn", record.urn...);
  }

  std::string_view prefix() const { return textOf(raw().prefix); }
  [[nodiscard]] bool set_prefix(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().prefix, text, true);
  }

  std::string_view urn() const { return textOf(raw().urn); }
  [[nodiscard]] bool set_urn(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().urn, text, true);
  }
};

// NSBindings
class NSBindings : public View<::NSBindings> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_NSBindings(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::filterset::NSBinding>(ctx, record->ns_binding);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_NSBindings(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_NSBindings(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::filterset::NSBinding>>("ns_binding", record.ns_binding...);
  }

  List<imscodec::filterset::NSBinding> ns_binding() const { return List<imscodec::filterset::NSBinding>(raw().ns_binding); }
  [[nodiscard]] Optional<imscodec::filterset::NSBinding> add_ns_binding(Context &context) {
    return detail::appendRecord<imscodec::filterset::NSBinding>(context.get(), raw().ns_binding);
  }
};

// InclType
class InclType : public View<::InclType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_InclType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_InclType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_InclType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template optional<imscodec::filterset::TypeType>("type", InclType_has_type, record.m..., record.type...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  Optional<imscodec::filterset::TypeType> type() const { return {has(InclType_has_type), &raw().type}; }
  void set_type(imscodec::filterset::TypeType value) { raw().type = static_cast<std::uint16_t>(value); mark(InclType_has_type); }
  void clear_type() { unmark(InclType_has_type); }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// ExclType
class ExclType : public View<::ExclType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_ExclType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_ExclType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_ExclType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template optional<imscodec::filterset::TypeType>("type", ExclType_has_type, record.m..., record.type...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  Optional<imscodec::filterset::TypeType> type() const { return {has(ExclType_has_type), &raw().type}; }
  void set_type(imscodec::filterset::TypeType value) { raw().type = static_cast<std::uint16_t>(value); mark(ExclType_has_type); }
  void clear_type() { unmark(ExclType_has_type); }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// WhatType
class WhatType : public View<::WhatType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_WhatType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_WhatType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_WhatType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::filterset::InclType>>("include", record.include...) &&
           visitor.template member<List<imscodec::filterset::ExclType>>("exclude", record.exclude...) &&
           visitor.template member<List<Foreign>>("", record._any...);
  }

  List<imscodec::filterset::InclType> include() const { return List<imscodec::filterset::InclType>(raw().include); }
  [[nodiscard]] Optional<imscodec::filterset::InclType> add_include(Context &context) {
    return detail::appendRecord<imscodec::filterset::InclType>(context.get(), raw().include);
  }

  List<imscodec::filterset::ExclType> exclude() const { return List<imscodec::filterset::ExclType>(raw().exclude); }
  [[nodiscard]] Optional<imscodec::filterset::ExclType> add_exclude(Context &context) {
    return detail::appendRecord<imscodec::filterset::ExclType>(context.get(), raw().exclude);
  }

  List<Foreign> any() const { return List<Foreign>(raw()._any.items); }
  [[nodiscard]] bool add_any(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw()._any.items, xml);
  }
};

// ChangedType
class ChangedType : public View<::ChangedType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_ChangedType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_ChangedType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_ChangedType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template optional<std::string_view>("from", ChangedType_has_from, record.m..., record.from...) &&
           visitor.template optional<std::string_view>("to", ChangedType_has_to, record.m..., record.to...) &&
           visitor.template optional<double>("by", ChangedType_has_by, record.m..., record.by...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  Optional<std::string_view> from() const { return {has(ChangedType_has_from), &raw().from}; }
  [[nodiscard]] bool set_from(Context &context, std::string_view text) {
    return setOptional(context, ChangedType_has_from, raw().from, text);
  }
  void clear_from(Context &context) { clearOptional(context, ChangedType_has_from, raw().from); }

  Optional<std::string_view> to() const { return {has(ChangedType_has_to), &raw().to}; }
  [[nodiscard]] bool set_to(Context &context, std::string_view text) {
    return setOptional(context, ChangedType_has_to, raw().to, text);
  }
  void clear_to(Context &context) { clearOptional(context, ChangedType_has_to, raw().to); }

  Optional<double> by() const { return {has(ChangedType_has_by), &raw().by}; }
  void set_by(double value) { raw().by = value; mark(ChangedType_has_by); }
  void clear_by() { unmark(ChangedType_has_by); }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// TriggerType
class TriggerType : public View<::TriggerType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_TriggerType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_TriggerType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_TriggerType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::filterset::ChangedType>>("changed", record.changed...) &&
           visitor.template member<List<std::string_view>>("added", record.added...) &&
           visitor.template member<List<std::string_view>>("removed", record.removed...) &&
           visitor.template member<List<Foreign>>("", record._any...);
  }

  List<imscodec::filterset::ChangedType> changed() const { return List<imscodec::filterset::ChangedType>(raw().changed); }
  [[nodiscard]] Optional<imscodec::filterset::ChangedType> add_changed(Context &context) {
    return detail::appendRecord<imscodec::filterset::ChangedType>(context.get(), raw().changed);
  }

  List<std::string_view> added() const { return List<std::string_view>(raw().added); }
  [[nodiscard]] bool add_added(Context &context, std::string_view text) {
    return detail::appendText(context.get(), raw().added, text);
  }

  List<std::string_view> removed() const { return List<std::string_view>(raw().removed); }
  [[nodiscard]] bool add_removed(Context &context, std::string_view text) {
    return detail::appendText(context.get(), raw().removed, text);
  }

  List<Foreign> any() const { return List<Foreign>(raw()._any.items); }
  [[nodiscard]] bool add_any(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw()._any.items, xml);
  }
};

// FilterType
class FilterType : public View<::FilterType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_FilterType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_FilterType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_FilterType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<imscodec::filterset::WhatType>("what", FilterType_has_what, record.m..., record.what...) &&
           visitor.template member<List<imscodec::filterset::TriggerType>>("trigger", record.trigger...) &&
           visitor.template member<List<Foreign>>("", record._any...) &&
           visitor.template member<std::string_view>("id", record.id...) &&
           visitor.template optional<std::string_view>("uri", FilterType_has_uri, record.m..., record.uri...) &&
           visitor.template optional<std::string_view>("domain", FilterType_has_domain, record.m..., record.domain...) &&
           visitor.template optional<bool>("remove_", FilterType_has_remove, record.m..., record.remove_...) &&
           visitor.template optional<bool>("enabled", FilterType_has_enabled, record.m..., record.enabled...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  Optional<imscodec::filterset::WhatType> what() const { return {has(FilterType_has_what), &raw().what}; }
  imscodec::filterset::WhatType make_what(Context &context) {
    return makeOptional<imscodec::filterset::WhatType>(context, FilterType_has_what, raw().what);
  }
  void clear_what(Context &context) { disposeOptional<imscodec::filterset::WhatType>(context, FilterType_has_what, raw().what); }

  List<imscodec::filterset::TriggerType> trigger() const { return List<imscodec::filterset::TriggerType>(raw().trigger); }
  [[nodiscard]] Optional<imscodec::filterset::TriggerType> add_trigger(Context &context) {
    return detail::appendRecord<imscodec::filterset::TriggerType>(context.get(), raw().trigger);
  }

  List<Foreign> any() const { return List<Foreign>(raw()._any.items); }
  [[nodiscard]] bool add_any(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw()._any.items, xml);
  }

  std::string_view id() const { return textOf(raw().id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().id, text, true);
  }

  Optional<std::string_view> uri() const { return {has(FilterType_has_uri), &raw().uri}; }
  [[nodiscard]] bool set_uri(Context &context, std::string_view text) {
    return setOptional(context, FilterType_has_uri, raw().uri, text);
  }
  void clear_uri(Context &context) { clearOptional(context, FilterType_has_uri, raw().uri); }

  Optional<std::string_view> domain() const { return {has(FilterType_has_domain), &raw().domain}; }
  [[nodiscard]] bool set_domain(Context &context, std::string_view text) {
    return setOptional(context, FilterType_has_domain, raw().domain, text);
  }
  void clear_domain(Context &context) { clearOptional(context, FilterType_has_domain, raw().domain); }

  Optional<bool> remove_() const { return {has(FilterType_has_remove), &raw().remove_}; }
  void set_remove_(bool value) { raw().remove_ = value; mark(FilterType_has_remove); }
  void clear_remove_() { unmark(FilterType_has_remove); }

  Optional<bool> enabled() const { return {has(FilterType_has_enabled), &raw().enabled}; }
  void set_enabled(bool value) { raw().enabled = value; mark(FilterType_has_enabled); }
  void clear_enabled() { unmark(FilterType_has_enabled); }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// FilterSetType
class FilterSetType : public View<::FilterSetType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_FilterSetType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->m & FilterSetType_has_ns_bindings) imscodec::filterset::NSBindings::sweep(ctx, &record->ns_bindings);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_FilterSetType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_FilterSetType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<imscodec::filterset::NSBindings>("ns_bindings", FilterSetType_has_ns_bindings, record.m..., record.ns_bindings...) &&
           visitor.template member<List<imscodec::filterset::FilterType>>("filter", record.filter...) &&
           visitor.template optional<std::string_view>("package_", FilterSetType_has_package, record.m..., record.package_...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  Optional<imscodec::filterset::NSBindings> ns_bindings() const { return {has(FilterSetType_has_ns_bindings), &raw().ns_bindings}; }
  imscodec::filterset::NSBindings make_ns_bindings(Context &context) {
    return makeOptional<imscodec::filterset::NSBindings>(context, FilterSetType_has_ns_bindings, raw().ns_bindings);
  }
  void clear_ns_bindings(Context &context) { disposeOptional<imscodec::filterset::NSBindings>(context, FilterSetType_has_ns_bindings, raw().ns_bindings); }

  List<imscodec::filterset::FilterType> filter() const { return List<imscodec::filterset::FilterType>(raw().filter); }
  [[nodiscard]] Optional<imscodec::filterset::FilterType> add_filter(Context &context) {
    return detail::appendRecord<imscodec::filterset::FilterType>(context.get(), raw().filter);
  }

  Optional<std::string_view> package_() const { return {has(FilterSetType_has_package), &raw().package_}; }
  [[nodiscard]] bool set_package_(Context &context, std::string_view text) {
    return setOptional(context, FilterSetType_has_package, raw().package_, text);
  }
  void clear_package_(Context &context) { clearOptional(context, FilterSetType_has_package, raw().package_); }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// Documents by the names of their roots.
using filter_set = FilterSetType;

} // namespace imscodec::filterset

namespace imscodec {

template <> struct EnumTexts<imscodec::filterset::TypeType> {
  static constexpr EnumText<imscodec::filterset::TypeType> rows[] = {
    {imscodec::filterset::TypeType::xpath, "xpath"},
    {imscodec::filterset::TypeType::namespace_, "namespace"},
  };
};

template <> struct Document<imscodec::filterset::FilterSetType> : detail::RecordDocument<imscodec::filterset::FilterSetType, QxXmlD_filter_set, QxXmlE_filter_set, QxXmlV_filter_set> {};

} // namespace imscodec
