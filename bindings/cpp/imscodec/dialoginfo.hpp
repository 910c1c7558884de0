// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "DialogInfo/QxXmlDialogInfo.h"
#include "imscodec/core.hpp"

namespace imscodec::dialoginfo {

enum class state_event : std::uint16_t {
  cancelled = 0,
  rejected = 1,
  replaced = 2,
  local_bye = 3,
  remote_bye = 4,
  error = 5,
  timeout = 6,
};

enum class dialog_direction : std::uint16_t {
  initiator = 0,
  recipient = 1,
};

enum class dialog_info_state : std::uint16_t {
  full = 0,
  partial = 1,
};

using imscodec::text; // found by the type of the code

// tns__state
class state : public View<::tns__state> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__state(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__state(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__state(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template optional<imscodec::dialoginfo::state_event>("tns_event", tns__state_has_event, record.m..., record.tns_event...) &&
           visitor.template optional<std::uint16_t>("tns_code", tns__state_has_code, record.m..., record.tns_code...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  Optional<imscodec::dialoginfo::state_event> event() const { return {has(tns__state_has_event), &raw().tns_event}; }
  void set_event(imscodec::dialoginfo::state_event value) { raw().tns_event = static_cast<std::uint16_t>(value); mark(tns__state_has_event); }
  void clear_event() { unmark(tns__state_has_event); }

  Optional<std::uint16_t> code() const { return {has(tns__state_has_code), &raw().tns_code}; }
  void set_code(std::uint16_t value) { raw().tns_code = value; mark(tns__state_has_code); }
  void clear_code() { unmark(tns__state_has_code); }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// tns__dialog_replaces
class dialog_replaces : public View<::tns__dialog_replaces> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__dialog_replaces(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::clear(ctx, record->tns_call_id);
    detail::clear(ctx, record->tns_local_tag);
    detail::clear(ctx, record->tns_remote_tag);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__dialog_replaces(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("tns_call_id", record.tns_call_id...) &&
           visitor.template member<std::string_view>("tns_local_tag", record.tns_local_tag...) &&
           visitor.template member<std::string_view>("tns_remote_tag", record.tns_remote_tag...);
  }

  std::string_view call_id() const { return textOf(raw().tns_call_id); }
  [[nodiscard]] bool set_call_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_call_id, text, true);
  }

  std::string_view local_tag() const { return textOf(raw().tns_local_tag); }
  [[nodiscard]] bool set_local_tag(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_local_tag, text, true);
  }

  std::string_view remote_tag() const { return textOf(raw().tns_remote_tag); }
  [[nodiscard]] bool set_remote_tag(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_remote_tag, text, true);
  }
};

// tns_nameaddr
class nameaddr : public View<::tns_nameaddr> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns_nameaddr(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns_nameaddr(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns_nameaddr(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template optional<std::string_view>("tns_display_name", tns_nameaddr_has_display_name, record.m..., record.tns_display_name...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  Optional<std::string_view> display_name() const { return {has(tns_nameaddr_has_display_name), &raw().tns_display_name}; }
  [[nodiscard]] bool set_display_name(Context &context, std::string_view text) {
    return setOptional(context, tns_nameaddr_has_display_name, raw().tns_display_name, text);
  }
  void clear_display_name(Context &context) { clearOptional(context, tns_nameaddr_has_display_name, raw().tns_display_name); }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// tns__dialog_route_set
class dialog_route_set : public View<::tns__dialog_route_set> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__dialog_route_set(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__dialog_route_set(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__dialog_route_set(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<std::string_view>>("tns_hop", record.tns_hop...);
  }

  List<std::string_view> hop() const { return List<std::string_view>(raw().tns_hop); }
  [[nodiscard]] bool add_hop(Context &context, std::string_view text) {
    return detail::appendText(context.get(), raw().tns_hop, text);
  }
};

// tns_participant_target_param
class participant_target_param : public View<::tns_participant_target_param> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns_participant_target_param(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::clear(ctx, record->tns_pname);
    detail::clear(ctx, record->tns_pval);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns_participant_target_param(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("tns_pname", record.tns_pname...) &&
           visitor.template member<std::string_view>("tns_pval", record.tns_pval...);
  }

  std::string_view pname() const { return textOf(raw().tns_pname); }
  [[nodiscard]] bool set_pname(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_pname, text, true);
  }

  std::string_view pval() const { return textOf(raw().tns_pval); }
  [[nodiscard]] bool set_pval(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_pval, text, true);
  }
};

// tns_participant_target
class participant_target : public View<::tns_participant_target> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns_participant_target(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::dialoginfo::participant_target_param>(ctx, record->tns_param);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_tns_participant_target(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns_participant_target(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::dialoginfo::participant_target_param>>("tns_param", record.tns_param...) &&
           visitor.template member<std::string_view>("tns_uri", record.tns_uri...);
  }

  List<imscodec::dialoginfo::participant_target_param> param() const { return List<imscodec::dialoginfo::participant_target_param>(raw().tns_param); }
  [[nodiscard]] Optional<imscodec::dialoginfo::participant_target_param> add_param(Context &context) {
    return detail::appendRecord<imscodec::dialoginfo::participant_target_param>(context.get(), raw().tns_param);
  }

  std::string_view uri() const { return textOf(raw().tns_uri); }
  [[nodiscard]] bool set_uri(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_uri, text, true);
  }
};

// tns_sessd
class sessd : public View<::tns_sessd> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns_sessd(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns_sessd(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns_sessd(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("value", record.value...) &&
           visitor.template member<std::string_view>("tns_type", record.tns_type...) &&
           visitor.template member<List<NamespaceDeclaration>>("nsDecls", record.nsDecls...);
  }

  std::string_view value() const { return textOf(raw().value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().value, text, true);
  }

  std::string_view type() const { return textOf(raw().tns_type); }
  [[nodiscard]] bool set_type(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_type, text, true);
  }

  List<NamespaceDeclaration> nsDecls() const { return List<NamespaceDeclaration>(raw().nsDecls.items); }
  [[nodiscard]] bool add_nsDecls(Context &context, std::optional<std::string_view> prefix, std::string_view uri) {
    return detail::appendPair<RtxNsDecl>(context.get(), raw().nsDecls.items, prefix, uri);
  }
};

// tns_participant
class participant : public View<::tns_participant> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns_participant(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->m & tns_participant_has_target) imscodec::dialoginfo::participant_target::sweep(ctx, &record->tns_target);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_tns_participant(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns_participant(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<imscodec::dialoginfo::nameaddr>("tns_identity", tns_participant_has_identity, record.m..., record.tns_identity...) &&
           visitor.template optional<imscodec::dialoginfo::participant_target>("tns_target", tns_participant_has_target, record.m..., record.tns_target...) &&
           visitor.template optional<imscodec::dialoginfo::sessd>("tns_session_description", tns_participant_has_session_description, record.m..., record.tns_session_description...) &&
           visitor.template optional<std::uint32_t>("tns_cseq", tns_participant_has_cseq, record.m..., record.tns_cseq...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...);
  }

  Optional<imscodec::dialoginfo::nameaddr> identity() const { return {has(tns_participant_has_identity), &raw().tns_identity}; }
  imscodec::dialoginfo::nameaddr make_identity(Context &context) {
    return makeOptional<imscodec::dialoginfo::nameaddr>(context, tns_participant_has_identity, raw().tns_identity);
  }
  void clear_identity(Context &context) { disposeOptional<imscodec::dialoginfo::nameaddr>(context, tns_participant_has_identity, raw().tns_identity); }

  Optional<imscodec::dialoginfo::participant_target> target() const { return {has(tns_participant_has_target), &raw().tns_target}; }
  imscodec::dialoginfo::participant_target make_target(Context &context) {
    return makeOptional<imscodec::dialoginfo::participant_target>(context, tns_participant_has_target, raw().tns_target);
  }
  void clear_target(Context &context) { disposeOptional<imscodec::dialoginfo::participant_target>(context, tns_participant_has_target, raw().tns_target); }

  Optional<imscodec::dialoginfo::sessd> session_description() const { return {has(tns_participant_has_session_description), &raw().tns_session_description}; }
  imscodec::dialoginfo::sessd make_session_description(Context &context) {
    return makeOptional<imscodec::dialoginfo::sessd>(context, tns_participant_has_session_description, raw().tns_session_description);
  }
  void clear_session_description(Context &context) { disposeOptional<imscodec::dialoginfo::sessd>(context, tns_participant_has_session_description, raw().tns_session_description); }

  Optional<std::uint32_t> cseq() const { return {has(tns_participant_has_cseq), &raw().tns_cseq}; }
  void set_cseq(std::uint32_t value) { raw().tns_cseq = value; mark(tns_participant_has_cseq); }
  void clear_cseq() { unmark(tns_participant_has_cseq); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }
};

// tns__dialog
class dialog : public View<::tns__dialog> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__dialog(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->m & tns__dialog_has_replaces) imscodec::dialoginfo::dialog_replaces::sweep(ctx, &record->tns_replaces);
    if (record->m & tns__dialog_has_local) imscodec::dialoginfo::participant::sweep(ctx, &record->tns_local);
    if (record->m & tns__dialog_has_remote) imscodec::dialoginfo::participant::sweep(ctx, &record->tns_remote);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_tns__dialog(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__dialog(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::dialoginfo::state>("tns_state", record.tns_state...) &&
           visitor.template optional<std::uint32_t>("tns_duration", tns__dialog_has_duration, record.m..., record.tns_duration...) &&
           visitor.template optional<imscodec::dialoginfo::dialog_replaces>("tns_replaces", tns__dialog_has_replaces, record.m..., record.tns_replaces...) &&
           visitor.template optional<imscodec::dialoginfo::nameaddr>("tns_referred_by", tns__dialog_has_referred_by, record.m..., record.tns_referred_by...) &&
           visitor.template optional<imscodec::dialoginfo::dialog_route_set>("tns_route_set", tns__dialog_has_route_set, record.m..., record.tns_route_set...) &&
           visitor.template optional<imscodec::dialoginfo::participant>("tns_local", tns__dialog_has_local, record.m..., record.tns_local...) &&
           visitor.template optional<imscodec::dialoginfo::participant>("tns_remote", tns__dialog_has_remote, record.m..., record.tns_remote...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<std::string_view>("tns_id", record.tns_id...) &&
           visitor.template optional<std::string_view>("tns_call_id", tns__dialog_has_call_id, record.m..., record.tns_call_id...) &&
           visitor.template optional<std::string_view>("tns_local_tag", tns__dialog_has_local_tag, record.m..., record.tns_local_tag...) &&
           visitor.template optional<std::string_view>("tns_remote_tag", tns__dialog_has_remote_tag, record.m..., record.tns_remote_tag...) &&
           visitor.template optional<imscodec::dialoginfo::dialog_direction>("tns_direction", tns__dialog_has_direction, record.m..., record.tns_direction...);
  }

  imscodec::dialoginfo::state state() const { return imscodec::dialoginfo::state(raw().tns_state); }

  Optional<std::uint32_t> duration() const { return {has(tns__dialog_has_duration), &raw().tns_duration}; }
  void set_duration(std::uint32_t value) { raw().tns_duration = value; mark(tns__dialog_has_duration); }
  void clear_duration() { unmark(tns__dialog_has_duration); }

  Optional<imscodec::dialoginfo::dialog_replaces> replaces() const { return {has(tns__dialog_has_replaces), &raw().tns_replaces}; }
  imscodec::dialoginfo::dialog_replaces make_replaces(Context &context) {
    return makeOptional<imscodec::dialoginfo::dialog_replaces>(context, tns__dialog_has_replaces, raw().tns_replaces);
  }
  void clear_replaces(Context &context) { disposeOptional<imscodec::dialoginfo::dialog_replaces>(context, tns__dialog_has_replaces, raw().tns_replaces); }

  Optional<imscodec::dialoginfo::nameaddr> referred_by() const { return {has(tns__dialog_has_referred_by), &raw().tns_referred_by}; }
  imscodec::dialoginfo::nameaddr make_referred_by(Context &context) {
    return makeOptional<imscodec::dialoginfo::nameaddr>(context, tns__dialog_has_referred_by, raw().tns_referred_by);
  }
  void clear_referred_by(Context &context) { disposeOptional<imscodec::dialoginfo::nameaddr>(context, tns__dialog_has_referred_by, raw().tns_referred_by); }

  Optional<imscodec::dialoginfo::dialog_route_set> route_set() const { return {has(tns__dialog_has_route_set), &raw().tns_route_set}; }
  imscodec::dialoginfo::dialog_route_set make_route_set(Context &context) {
    return makeOptional<imscodec::dialoginfo::dialog_route_set>(context, tns__dialog_has_route_set, raw().tns_route_set);
  }
  void clear_route_set(Context &context) { disposeOptional<imscodec::dialoginfo::dialog_route_set>(context, tns__dialog_has_route_set, raw().tns_route_set); }

  Optional<imscodec::dialoginfo::participant> local() const { return {has(tns__dialog_has_local), &raw().tns_local}; }
  imscodec::dialoginfo::participant make_local(Context &context) {
    return makeOptional<imscodec::dialoginfo::participant>(context, tns__dialog_has_local, raw().tns_local);
  }
  void clear_local(Context &context) { disposeOptional<imscodec::dialoginfo::participant>(context, tns__dialog_has_local, raw().tns_local); }

  Optional<imscodec::dialoginfo::participant> remote() const { return {has(tns__dialog_has_remote), &raw().tns_remote}; }
  imscodec::dialoginfo::participant make_remote(Context &context) {
    return makeOptional<imscodec::dialoginfo::participant>(context, tns__dialog_has_remote, raw().tns_remote);
  }
  void clear_remote(Context &context) { disposeOptional<imscodec::dialoginfo::participant>(context, tns__dialog_has_remote, raw().tns_remote); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  std::string_view id() const { return textOf(raw().tns_id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_id, text, true);
  }

  Optional<std::string_view> call_id() const { return {has(tns__dialog_has_call_id), &raw().tns_call_id}; }
  [[nodiscard]] bool set_call_id(Context &context, std::string_view text) {
    return setOptional(context, tns__dialog_has_call_id, raw().tns_call_id, text);
  }
  void clear_call_id(Context &context) { clearOptional(context, tns__dialog_has_call_id, raw().tns_call_id); }

  Optional<std::string_view> local_tag() const { return {has(tns__dialog_has_local_tag), &raw().tns_local_tag}; }
  [[nodiscard]] bool set_local_tag(Context &context, std::string_view text) {
    return setOptional(context, tns__dialog_has_local_tag, raw().tns_local_tag, text);
  }
  void clear_local_tag(Context &context) { clearOptional(context, tns__dialog_has_local_tag, raw().tns_local_tag); }

  Optional<std::string_view> remote_tag() const { return {has(tns__dialog_has_remote_tag), &raw().tns_remote_tag}; }
  [[nodiscard]] bool set_remote_tag(Context &context, std::string_view text) {
    return setOptional(context, tns__dialog_has_remote_tag, raw().tns_remote_tag, text);
  }
  void clear_remote_tag(Context &context) { clearOptional(context, tns__dialog_has_remote_tag, raw().tns_remote_tag); }

  Optional<imscodec::dialoginfo::dialog_direction> direction() const { return {has(tns__dialog_has_direction), &raw().tns_direction}; }
  void set_direction(imscodec::dialoginfo::dialog_direction value) { raw().tns_direction = static_cast<std::uint16_t>(value); mark(tns__dialog_has_direction); }
  void clear_direction() { unmark(tns__dialog_has_direction); }
};

// tns__dialog_info
class dialog_info : public View<::tns__dialog_info> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__dialog_info(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::dialoginfo::dialog>(ctx, record->tns_dialog);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_tns__dialog_info(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__dialog_info(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::dialoginfo::dialog>>("tns_dialog", record.tns_dialog...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<std::uint32_t>("tns_version", record.tns_version...) &&
           visitor.template member<imscodec::dialoginfo::dialog_info_state>("tns_state", record.tns_state...) &&
           visitor.template member<std::string_view>("tns_entity", record.tns_entity...);
  }

  List<imscodec::dialoginfo::dialog> dialog() const { return List<imscodec::dialoginfo::dialog>(raw().tns_dialog); }
  [[nodiscard]] Optional<imscodec::dialoginfo::dialog> add_dialog(Context &context) {
    return detail::appendRecord<imscodec::dialoginfo::dialog>(context.get(), raw().tns_dialog);
  }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  std::uint32_t version() const { return raw().tns_version; }
  void set_version(std::uint32_t value) { raw().tns_version = value; }

  imscodec::dialoginfo::dialog_info_state state() const { return static_cast<imscodec::dialoginfo::dialog_info_state>(raw().tns_state); }
  void set_state(imscodec::dialoginfo::dialog_info_state value) { raw().tns_state = static_cast<std::uint16_t>(value); }

  std::string_view entity() const { return textOf(raw().tns_entity); }
  [[nodiscard]] bool set_entity(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_entity, text, true);
  }
};

} // namespace imscodec::dialoginfo

namespace imscodec {

template <> struct EnumTexts<imscodec::dialoginfo::state_event> {
  static constexpr EnumText<imscodec::dialoginfo::state_event> rows[] = {
    {imscodec::dialoginfo::state_event::cancelled, "cancelled"},
    {imscodec::dialoginfo::state_event::rejected, "rejected"},
    {imscodec::dialoginfo::state_event::replaced, "replaced"},
    {imscodec::dialoginfo::state_event::local_bye, "local-bye"},
    {imscodec::dialoginfo::state_event::remote_bye, "remote-bye"},
    {imscodec::dialoginfo::state_event::error, "error"},
    {imscodec::dialoginfo::state_event::timeout, "timeout"},
  };
};

template <> struct EnumTexts<imscodec::dialoginfo::dialog_direction> {
  static constexpr EnumText<imscodec::dialoginfo::dialog_direction> rows[] = {
    {imscodec::dialoginfo::dialog_direction::initiator, "initiator"},
    {imscodec::dialoginfo::dialog_direction::recipient, "recipient"},
  };
};

template <> struct EnumTexts<imscodec::dialoginfo::dialog_info_state> {
  static constexpr EnumText<imscodec::dialoginfo::dialog_info_state> rows[] = {
    {imscodec::dialoginfo::dialog_info_state::full, "full"},
    {imscodec::dialoginfo::dialog_info_state::partial, "partial"},
  };
};

template <> struct Document<imscodec::dialoginfo::dialog_info> : detail::RecordDocument<imscodec::dialoginfo::dialog_info, QxXmlD_tns_dialog_info, QxXmlE_tns_dialog_info, QxXmlV_tns_dialog_info> {};
template <> struct Document<imscodec::dialoginfo::dialog> : detail::RecordDocument<imscodec::dialoginfo::dialog, QxXmlD_tns_dialog, QxXmlE_tns_dialog, QxXmlV_tns_dialog> {};
template <> struct Document<imscodec::dialoginfo::state> : detail::RecordDocument<imscodec::dialoginfo::state, QxXmlD_tns_state, QxXmlE_tns_state, QxXmlV_tns_state> {};

} // namespace imscodec
