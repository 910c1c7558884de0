// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "RuleSet/QxXmlRuleSet.h"
#include "imscodec/core.hpp"

namespace imscodec::ruleset {

// cp_oneType
class oneType : public View<::cp_oneType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_oneType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_cp_oneType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_cp_oneType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<Foreign>("cp__any", cp_oneType_has_any, record.m..., record.cp__any...) &&
           visitor.template member<std::string_view>("cp_id", record.cp_id...);
  }

  Optional<Foreign> any() const { return {has(cp_oneType_has_any), &raw().cp__any}; }
  [[nodiscard]] bool set_any(Context &context, std::string_view xml) {
    return setOptional(context, cp_oneType_has_any, raw().cp__any, xml);
  }
  void clear_any(Context &context) { clearOptional(context, cp_oneType_has_any, raw().cp__any); }

  std::string_view id() const { return textOf(raw().cp_id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().cp_id, text, true);
  }
};

// cp_exceptType
class exceptType : public View<::cp_exceptType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_exceptType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->m & cp_exceptType_has_domain) detail::clear(ctx, record->cp_domain);
    if (record->m & cp_exceptType_has_id) detail::clear(ctx, record->cp_id);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_cp_exceptType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<std::string_view>("cp_domain", cp_exceptType_has_domain, record.m..., record.cp_domain...) &&
           visitor.template optional<std::string_view>("cp_id", cp_exceptType_has_id, record.m..., record.cp_id...);
  }

  Optional<std::string_view> domain() const { return {has(cp_exceptType_has_domain), &raw().cp_domain}; }
  [[nodiscard]] bool set_domain(Context &context, std::string_view text) {
    return setOptional(context, cp_exceptType_has_domain, raw().cp_domain, text);
  }
  void clear_domain(Context &context) { clearOptional(context, cp_exceptType_has_domain, raw().cp_domain); }

  Optional<std::string_view> id() const { return {has(cp_exceptType_has_id), &raw().cp_id}; }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return setOptional(context, cp_exceptType_has_id, raw().cp_id, text);
  }
  void clear_id(Context &context) { clearOptional(context, cp_exceptType_has_id, raw().cp_id); }
};

// cp_manyType_1
class manyType_1 : public View<::cp_manyType_1> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_manyType_1(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->t == cp_manyType_1_except) imscodec::ruleset::exceptType::sweep(ctx, &record->u.cp_except);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_manyType_1(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    if (!visitor.selector(record.t...)) return false;
    switch (detail::first(record.t...)) {
    case cp_manyType_1_except: return visitor.template alternative<imscodec::ruleset::exceptType>("cp_except", record.u.cp_except...);
    case cp_manyType_1_any: return visitor.template alternative<Foreign>("cp__any", record.u.cp__any...);
    default: return true;
    }
  }

  // The alternative that is chosen; none of a choice that nobody has made.
  enum class Kind : std::uint16_t {
    none,
    except = cp_manyType_1_except,
    any = cp_manyType_1_any,
  };
  Kind kind() const { return static_cast<Kind>(raw().t); }

  // Calls visitor with the alternative, or with std::monostate if there is none.
  template <class Visitor> decltype(auto) visit(Visitor &&visitor) const {
    switch (raw().t) {
    case cp_manyType_1_except: return std::forward<Visitor>(visitor)(imscodec::ruleset::exceptType(raw().u.cp_except));
    case cp_manyType_1_any: return std::forward<Visitor>(visitor)(Foreign{textOf(raw().u.cp__any)});
    default: return std::forward<Visitor>(visitor)(std::monostate{});
    }
  }

  Optional<imscodec::ruleset::exceptType> except() const { return {raw().t == cp_manyType_1_except, &raw().u.cp_except}; }
  imscodec::ruleset::exceptType choose_except(Context &context) {
    choose(context, cp_manyType_1_except);
    imscodec::ruleset::exceptType::initialise(context.get(), &raw().u.cp_except);
    return imscodec::ruleset::exceptType(raw().u.cp_except);
  }
  Optional<Foreign> any() const { return {raw().t == cp_manyType_1_any, &raw().u.cp__any}; }
  [[nodiscard]] bool choose_any(Context &context, std::string_view text) {
    RtxXmlString copy{};
    if (!detail::assign(context.get(), copy, text, false)) return false;
    choose(context, cp_manyType_1_any);
    raw().u.cp__any = copy;
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

// cp_manyType
class manyType : public View<::cp_manyType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_manyType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::ruleset::manyType_1>(ctx, record->cp__choice);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_manyType(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::ruleset::manyType_1>>("cp__choice", record.cp__choice...) &&
           visitor.template optional<std::string_view>("cp_domain", cp_manyType_has_domain, record.m..., record.cp_domain...);
  }

  List<imscodec::ruleset::manyType_1> choice() const { return List<imscodec::ruleset::manyType_1>(raw().cp__choice); }
  [[nodiscard]] Optional<imscodec::ruleset::manyType_1> add_choice(Context &context) {
    return detail::appendRecord<imscodec::ruleset::manyType_1>(context.get(), raw().cp__choice);
  }

  Optional<std::string_view> domain() const { return {has(cp_manyType_has_domain), &raw().cp_domain}; }
  [[nodiscard]] bool set_domain(Context &context, std::string_view text) {
    return setOptional(context, cp_manyType_has_domain, raw().cp_domain, text);
  }
  void clear_domain(Context &context) { clearOptional(context, cp_manyType_has_domain, raw().cp_domain); }
};

// cp_identityType_1
class identityType_1 : public View<::cp_identityType_1> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_identityType_1(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->t == cp_identityType_1_many) imscodec::ruleset::manyType::sweep(ctx, &record->u.cp_many);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_identityType_1(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    if (!visitor.selector(record.t...)) return false;
    switch (detail::first(record.t...)) {
    case cp_identityType_1_one: return visitor.template alternative<imscodec::ruleset::oneType>("cp_one", record.u.cp_one...);
    case cp_identityType_1_many: return visitor.template alternative<imscodec::ruleset::manyType>("cp_many", record.u.cp_many...);
    case cp_identityType_1_any: return visitor.template alternative<Foreign>("cp__any", record.u.cp__any...);
    default: return true;
    }
  }

  // The alternative that is chosen; none of a choice that nobody has made.
  enum class Kind : std::uint16_t {
    none,
    one = cp_identityType_1_one,
    many = cp_identityType_1_many,
    any = cp_identityType_1_any,
  };
  Kind kind() const { return static_cast<Kind>(raw().t); }

  // Calls visitor with the alternative, or with std::monostate if there is none.
  template <class Visitor> decltype(auto) visit(Visitor &&visitor) const {
    switch (raw().t) {
    case cp_identityType_1_one: return std::forward<Visitor>(visitor)(imscodec::ruleset::oneType(raw().u.cp_one));
    case cp_identityType_1_many: return std::forward<Visitor>(visitor)(imscodec::ruleset::manyType(raw().u.cp_many));
    case cp_identityType_1_any: return std::forward<Visitor>(visitor)(Foreign{textOf(raw().u.cp__any)});
    default: return std::forward<Visitor>(visitor)(std::monostate{});
    }
  }

  Optional<imscodec::ruleset::oneType> one() const { return {raw().t == cp_identityType_1_one, &raw().u.cp_one}; }
  imscodec::ruleset::oneType choose_one(Context &context) {
    choose(context, cp_identityType_1_one);
    imscodec::ruleset::oneType::initialise(context.get(), &raw().u.cp_one);
    return imscodec::ruleset::oneType(raw().u.cp_one);
  }
  Optional<imscodec::ruleset::manyType> many() const { return {raw().t == cp_identityType_1_many, &raw().u.cp_many}; }
  imscodec::ruleset::manyType choose_many(Context &context) {
    choose(context, cp_identityType_1_many);
    imscodec::ruleset::manyType::initialise(context.get(), &raw().u.cp_many);
    return imscodec::ruleset::manyType(raw().u.cp_many);
  }
  Optional<Foreign> any() const { return {raw().t == cp_identityType_1_any, &raw().u.cp__any}; }
  [[nodiscard]] bool choose_any(Context &context, std::string_view text) {
    RtxXmlString copy{};
    if (!detail::assign(context.get(), copy, text, false)) return false;
    choose(context, cp_identityType_1_any);
    raw().u.cp__any = copy;
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

// cp_identityType
class identityType : public View<::cp_identityType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_identityType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::ruleset::identityType_1>(ctx, record->items);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_identityType(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::ruleset::identityType_1>>("", record.items...);
  }

  List<imscodec::ruleset::identityType_1> items() const { return List<imscodec::ruleset::identityType_1>(raw().items); }
  [[nodiscard]] Optional<imscodec::ruleset::identityType_1> add_items(Context &context) {
    return detail::appendRecord<imscodec::ruleset::identityType_1>(context.get(), raw().items);
  }
};

// cp_sphereType
class sphereType : public View<::cp_sphereType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_sphereType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::clear(ctx, record->cp_value);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_cp_sphereType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("cp_value", record.cp_value...);
  }

  std::string_view value() const { return textOf(raw().cp_value); }
  [[nodiscard]] bool set_value(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().cp_value, text, true);
  }
};

// cp_validityType
class validityType : public View<::cp_validityType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_validityType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_cp_validityType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_cp_validityType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("cp_from", record.cp_from...) &&
           visitor.template member<std::string_view>("cp_until", record.cp_until...);
  }

  std::string_view from() const { return textOf(raw().cp_from); }
  [[nodiscard]] bool set_from(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().cp_from, text, true);
  }

  std::string_view until() const { return textOf(raw().cp_until); }
  [[nodiscard]] bool set_until(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().cp_until, text, true);
  }
};

// cp_conditionsType_1
class conditionsType_1 : public View<::cp_conditionsType_1> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_conditionsType_1(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->t == cp_conditionsType_1_identity) imscodec::ruleset::identityType::sweep(ctx, &record->u.cp_identity);
    if (record->t == cp_conditionsType_1_sphere) imscodec::ruleset::sphereType::sweep(ctx, &record->u.cp_sphere);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_conditionsType_1(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    if (!visitor.selector(record.t...)) return false;
    switch (detail::first(record.t...)) {
    case cp_conditionsType_1_identity: return visitor.template alternative<imscodec::ruleset::identityType>("cp_identity", record.u.cp_identity...);
    case cp_conditionsType_1_sphere: return visitor.template alternative<imscodec::ruleset::sphereType>("cp_sphere", record.u.cp_sphere...);
    case cp_conditionsType_1_validity: return visitor.template alternative<imscodec::ruleset::validityType>("cp_validity", record.u.cp_validity...);
    case cp_conditionsType_1_any: return visitor.template alternative<List<Foreign>>("cp__any", record.u.cp__any...);
    default: return true;
    }
  }

  // The alternative that is chosen; none of a choice that nobody has made.
  enum class Kind : std::uint16_t {
    none,
    identity = cp_conditionsType_1_identity,
    sphere = cp_conditionsType_1_sphere,
    validity = cp_conditionsType_1_validity,
    any = cp_conditionsType_1_any,
  };
  Kind kind() const { return static_cast<Kind>(raw().t); }

  // Calls visitor with the alternative, or with std::monostate if there is none.
  template <class Visitor> decltype(auto) visit(Visitor &&visitor) const {
    switch (raw().t) {
    case cp_conditionsType_1_identity: return std::forward<Visitor>(visitor)(imscodec::ruleset::identityType(raw().u.cp_identity));
    case cp_conditionsType_1_sphere: return std::forward<Visitor>(visitor)(imscodec::ruleset::sphereType(raw().u.cp_sphere));
    case cp_conditionsType_1_validity: return std::forward<Visitor>(visitor)(imscodec::ruleset::validityType(raw().u.cp_validity));
    case cp_conditionsType_1_any: return std::forward<Visitor>(visitor)(List<Foreign>(raw().u.cp__any.items));
    default: return std::forward<Visitor>(visitor)(std::monostate{});
    }
  }

  Optional<imscodec::ruleset::identityType> identity() const { return {raw().t == cp_conditionsType_1_identity, &raw().u.cp_identity}; }
  imscodec::ruleset::identityType choose_identity(Context &context) {
    choose(context, cp_conditionsType_1_identity);
    imscodec::ruleset::identityType::initialise(context.get(), &raw().u.cp_identity);
    return imscodec::ruleset::identityType(raw().u.cp_identity);
  }
  Optional<imscodec::ruleset::sphereType> sphere() const { return {raw().t == cp_conditionsType_1_sphere, &raw().u.cp_sphere}; }
  imscodec::ruleset::sphereType choose_sphere(Context &context) {
    choose(context, cp_conditionsType_1_sphere);
    imscodec::ruleset::sphereType::initialise(context.get(), &raw().u.cp_sphere);
    return imscodec::ruleset::sphereType(raw().u.cp_sphere);
  }
  Optional<imscodec::ruleset::validityType> validity() const { return {raw().t == cp_conditionsType_1_validity, &raw().u.cp_validity}; }
  imscodec::ruleset::validityType choose_validity(Context &context) {
    choose(context, cp_conditionsType_1_validity);
    imscodec::ruleset::validityType::initialise(context.get(), &raw().u.cp_validity);
    return imscodec::ruleset::validityType(raw().u.cp_validity);
  }
  Optional<List<Foreign>> any() const { return {raw().t == cp_conditionsType_1_any, &raw().u.cp__any.items}; }
  [[nodiscard]] bool add_any(Context &context, std::string_view xml) {
    if (raw().t != cp_conditionsType_1_any) choose(context, cp_conditionsType_1_any);
    return detail::appendText(context.get(), raw().u.cp__any.items, xml);
  }

private:
  // Gives back what was chosen before.
  void choose(Context &context, std::uint16_t selector) {
    dispose(context.get(), &raw());
    initialise(context.get(), &raw());
    raw().t = selector;
  }
};

// cp_conditionsType
class conditionsType : public View<::cp_conditionsType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_conditionsType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::ruleset::conditionsType_1>(ctx, record->items);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_conditionsType(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::ruleset::conditionsType_1>>("", record.items...);
  }

  List<imscodec::ruleset::conditionsType_1> items() const { return List<imscodec::ruleset::conditionsType_1>(raw().items); }
  [[nodiscard]] Optional<imscodec::ruleset::conditionsType_1> add_items(Context &context) {
    return detail::appendRecord<imscodec::ruleset::conditionsType_1>(context.get(), raw().items);
  }
};

// cp_extensibleType
class extensibleType : public View<::cp_extensibleType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_extensibleType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_cp_extensibleType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_cp_extensibleType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<Foreign>>("", record.items...);
  }

  List<Foreign> items() const { return List<Foreign>(raw().items.items); }
  [[nodiscard]] bool add_items(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().items.items, xml);
  }
};

// cp_ruleType
class ruleType : public View<::cp_ruleType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp_ruleType(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    if (record->m & cp_ruleType_has_conditions) imscodec::ruleset::conditionsType::sweep(ctx, &record->cp_conditions);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp_ruleType(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<imscodec::ruleset::conditionsType>("cp_conditions", cp_ruleType_has_conditions, record.m..., record.cp_conditions...) &&
           visitor.template optional<imscodec::ruleset::extensibleType>("cp_actions", cp_ruleType_has_actions, record.m..., record.cp_actions...) &&
           visitor.template optional<imscodec::ruleset::extensibleType>("cp_transformations", cp_ruleType_has_transformations, record.m..., record.cp_transformations...) &&
           visitor.template member<std::string_view>("cp_id", record.cp_id...);
  }

  Optional<imscodec::ruleset::conditionsType> conditions() const { return {has(cp_ruleType_has_conditions), &raw().cp_conditions}; }
  imscodec::ruleset::conditionsType make_conditions(Context &context) {
    return makeOptional<imscodec::ruleset::conditionsType>(context, cp_ruleType_has_conditions, raw().cp_conditions);
  }
  void clear_conditions(Context &context) { disposeOptional<imscodec::ruleset::conditionsType>(context, cp_ruleType_has_conditions, raw().cp_conditions); }

  Optional<imscodec::ruleset::extensibleType> actions() const { return {has(cp_ruleType_has_actions), &raw().cp_actions}; }
  imscodec::ruleset::extensibleType make_actions(Context &context) {
    return makeOptional<imscodec::ruleset::extensibleType>(context, cp_ruleType_has_actions, raw().cp_actions);
  }
  void clear_actions(Context &context) { disposeOptional<imscodec::ruleset::extensibleType>(context, cp_ruleType_has_actions, raw().cp_actions); }

  Optional<imscodec::ruleset::extensibleType> transformations() const { return {has(cp_ruleType_has_transformations), &raw().cp_transformations}; }
  imscodec::ruleset::extensibleType make_transformations(Context &context) {
    return makeOptional<imscodec::ruleset::extensibleType>(context, cp_ruleType_has_transformations, raw().cp_transformations);
  }
  void clear_transformations(Context &context) { disposeOptional<imscodec::ruleset::extensibleType>(context, cp_ruleType_has_transformations, raw().cp_transformations); }

  std::string_view id() const { return textOf(raw().cp_id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().cp_id, text, true);
  }
};

// cp__ruleset
class ruleset : public View<::cp__ruleset> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_cp__ruleset(ctx, record); }
  // Frees the texts that the C interface leaves to the heap.
  static void sweep(RuntimeContext *ctx, Raw *record) {
    detail::sweepItems<imscodec::ruleset::ruleType>(ctx, record->cp_rule);
  }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    sweep(ctx, record);
    QxMemFree_cp__ruleset(ctx, record);
  }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::ruleset::ruleType>>("cp_rule", record.cp_rule...);
  }

  List<imscodec::ruleset::ruleType> rule() const { return List<imscodec::ruleset::ruleType>(raw().cp_rule); }
  [[nodiscard]] Optional<imscodec::ruleset::ruleType> add_rule(Context &context) {
    return detail::appendRecord<imscodec::ruleset::ruleType>(context.get(), raw().cp_rule);
  }
};

} // namespace imscodec::ruleset

namespace imscodec {

template <> struct Document<imscodec::ruleset::ruleset> : detail::RecordDocument<imscodec::ruleset::ruleset, QxXmlD_cp_ruleset, QxXmlE_cp_ruleset, QxXmlV_cp_ruleset> {};

} // namespace imscodec
