// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "IsComposing/QxXmlIsComposing.h"
#include "imscodec/core.hpp"

namespace imscodec::iscomposing {

// tns__isComposing
class isComposing : public View<::tns__isComposing> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__isComposing(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__isComposing(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__isComposing(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("tns_state", record.tns_state...) &&
           visitor.template optional<std::string_view>("tns_lastactive", tns__isComposing_has_lastactive, record.m..., record.tns_lastactive...) &&
           visitor.template optional<std::string_view>("tns_contenttype", tns__isComposing_has_contenttype, record.m..., record.tns_contenttype...) &&
           visitor.template optional<std::uint32_t>("tns_refresh", tns__isComposing_has_refresh, record.m..., record.tns_refresh...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...);
  }

  std::string_view state() const { return textOf(raw().tns_state); }
  [[nodiscard]] bool set_state(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_state, text, true);
  }

  Optional<std::string_view> lastactive() const { return {has(tns__isComposing_has_lastactive), &raw().tns_lastactive}; }
  [[nodiscard]] bool set_lastactive(Context &context, std::string_view text) {
    return setOptional(context, tns__isComposing_has_lastactive, raw().tns_lastactive, text);
  }
  void clear_lastactive(Context &context) { clearOptional(context, tns__isComposing_has_lastactive, raw().tns_lastactive); }

  Optional<std::string_view> contenttype() const { return {has(tns__isComposing_has_contenttype), &raw().tns_contenttype}; }
  [[nodiscard]] bool set_contenttype(Context &context, std::string_view text) {
    return setOptional(context, tns__isComposing_has_contenttype, raw().tns_contenttype, text);
  }
  void clear_contenttype(Context &context) { clearOptional(context, tns__isComposing_has_contenttype, raw().tns_contenttype); }

  Optional<std::uint32_t> refresh() const { return {has(tns__isComposing_has_refresh), &raw().tns_refresh}; }
  void set_refresh(std::uint32_t value) { raw().tns_refresh = value; mark(tns__isComposing_has_refresh); }
  void clear_refresh() { unmark(tns__isComposing_has_refresh); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }
};

} // namespace imscodec::iscomposing

namespace imscodec {

template <> struct Document<imscodec::iscomposing::isComposing> : detail::RecordDocument<imscodec::iscomposing::isComposing, QxXmlD_tns_isComposing, QxXmlE_tns_isComposing, QxXmlV_tns_isComposing> {};

} // namespace imscodec
