// Members of every kind, read and set, against the C record beneath.
#include "context.h"
#include "imscodec.hpp"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

using namespace imscodec;

namespace {

static_assert(std::ranges::forward_range<List<dialoginfo::dialog>>);
static_assert(std::ranges::sized_range<List<std::string_view>>);
static_assert(std::ranges::view<List<Foreign>> && std::ranges::borrowed_range<List<Foreign>>);
static_assert(std::ranges::forward_range<Errors> && std::ranges::view<Errors>);
static_assert(sizeof(dialoginfo::dialog) == sizeof(void *) && std::is_trivially_copyable_v<dialoginfo::dialog>);

class CppMembers : public testing::Test {
protected:
  // A condition of a rule, which is a choice of several kinds.
  static Optional<ruleset::conditionsType_1> addCondition(Context &context, ruleset::ruleset rules) {
    auto rule = rules.add_rule(context);
    EXPECT_TRUE(rule);
    return rule ? rule->make_conditions(context).add_items(context) : Optional<ruleset::conditionsType_1>();
  }

  Context context;
  support::HeapBalance balance{context.get()};
};

TEST_F(CppMembers, RequiredTextIsSetReplacedAndRead) {
  auto record = context.create<iscomposing::isComposing>();
  EXPECT_EQ(nullptr, record->state().data());
  ASSERT_TRUE(record->set_state(context, "active"));
  ASSERT_TRUE(record->set_state(context, "idle"));
  EXPECT_EQ("idle", record->state());
  EXPECT_STREQ("idle", record.raw().tns_state.value);
  ASSERT_TRUE(record->set_state(context, {}));
  EXPECT_EQ("", record->state());
  EXPECT_NE(nullptr, record->state().data());
}

TEST_F(CppMembers, TextWithANulIsRefusedAndNothingChanges) {
  auto record = context.create<iscomposing::isComposing>();
  ASSERT_TRUE(record->set_state(context, "idle"));
  EXPECT_FALSE(record->set_state(context, std::string_view("a\0b", 3)));
  EXPECT_FALSE(record->set_contenttype(context, std::string_view("\0", 1)));
  EXPECT_EQ("idle", record->state());
  EXPECT_FALSE(record->contenttype());
}

TEST_F(CppMembers, OptionalTextIsSetReplacedAndCleared) {
  auto record = context.create<iscomposing::isComposing>();
  EXPECT_FALSE(record->contenttype());
  ASSERT_TRUE(record->set_contenttype(context, "text/plain"));
  ASSERT_TRUE(record->set_contenttype(context, "text/html"));
  EXPECT_EQ("text/html", record->contenttype());
  EXPECT_EQ(uint32_t{tns__isComposing_has_contenttype}, record.raw().m);
  record->clear_contenttype(context);
  EXPECT_FALSE(record->contenttype());
  EXPECT_EQ(0u, record.raw().m);
}

TEST_F(CppMembers, NumbersAreSetAndCleared) {
  auto record = context.create<iscomposing::isComposing>();
  EXPECT_FALSE(record->refresh());
  record->set_refresh(60);
  EXPECT_EQ(60u, record->refresh());
  EXPECT_EQ(uint32_t{tns__isComposing_has_refresh}, record.raw().m);
  record->clear_refresh();
  EXPECT_FALSE(record->refresh());

  auto state = context.create<dialoginfo::state>();
  state->set_code(487);
  EXPECT_EQ(487, state->code());
  auto info = context.create<dialoginfo::dialog_info>();
  info->set_version(7);
  EXPECT_EQ(7u, info->version());
  auto body = context.create<imcn::ims_3gpp>();
  body->set_version(1.5);
  EXPECT_EQ(1.5, body->version());
}

TEST_F(CppMembers, BooleansHaveTheirDefaults) {
  auto set = context.create<filterset::filter_set>();
  auto filter = set->add_filter(context);
  ASSERT_TRUE(filter);
  EXPECT_FALSE(filter->enabled());
  EXPECT_TRUE(filter->raw().enabled);
  filter->set_enabled(false);
  EXPECT_EQ(false, filter->enabled());
  filter->set_remove_(true);
  EXPECT_EQ(true, filter->remove_());
  filter->clear_remove_();
  EXPECT_FALSE(filter->remove_());
}

TEST_F(CppMembers, EnumerationsAreCodes) {
  auto state = context.create<dialoginfo::state>();
  EXPECT_FALSE(state->event());
  state->set_event(dialoginfo::state_event::local_bye);
  EXPECT_EQ(dialoginfo::state_event::local_bye, state->event());
  EXPECT_EQ(tns__state_event_local_bye, state.raw().tns_event);
  state->clear_event();
  EXPECT_FALSE(state->event());
  auto info = context.create<dialoginfo::dialog_info>();
  info->set_state(dialoginfo::dialog_info_state::partial);
  EXPECT_EQ(dialoginfo::dialog_info_state::partial, info->state());
}

TEST_F(CppMembers, BytesAreSetReplacedAndCleared) {
  auto trigger = context.create<debugevent::start_trigger>();
  EXPECT_FALSE(trigger->debug_id());
  const std::uint8_t first[] = {1, 2};
  const std::uint8_t second[] = {0xFE};
  ASSERT_TRUE(trigger->set_debug_id(context, first));
  ASSERT_TRUE(trigger->set_debug_id(context, second));
  ASSERT_TRUE(trigger->debug_id());
  ASSERT_EQ(1u, trigger->debug_id()->size());
  EXPECT_EQ(0xFE, trigger->debug_id()->front());
  trigger->clear_debug_id(context);
  EXPECT_FALSE(trigger->debug_id());
}

TEST_F(CppMembers, RecordsWithinAreMadeOnceAndCleared) {
  auto dialog = context.create<dialoginfo::dialog>();
  EXPECT_FALSE(dialog->remote());
  ASSERT_TRUE(dialog->make_remote(context).make_identity(context).set_value(context, "sip:b@example.net"));
  EXPECT_EQ("sip:b@example.net", dialog->make_remote(context).make_identity(context).value());
  EXPECT_EQ("sip:b@example.net", dialog->remote()->identity()->value());
  EXPECT_FALSE(dialog->local());
  dialog->clear_remote(context);
  EXPECT_FALSE(dialog->remote());
  EXPECT_FALSE(dialog->make_remote(context).identity());
  ASSERT_TRUE(dialog->state().set_value(context, "early"));
  EXPECT_STREQ("early", dialog.raw().tns_state.value.value);
}

TEST_F(CppMembers, ListsOfRecordsGrowAndAreRanges) {
  auto info = context.create<dialoginfo::dialog_info>();
  EXPECT_TRUE(info->dialog().empty());
  for (const char *id : {"a", "b", "c"}) {
    auto dialog = info->add_dialog(context);
    ASSERT_TRUE(dialog && dialog->set_id(context, id));
  }
  EXPECT_EQ(3u, info->dialog().size());
  EXPECT_EQ("a", info->dialog().front().id());
  std::string ids;
  for (const auto dialog : info->dialog())
    ids += dialog.id();
  EXPECT_EQ("abc", ids);
  const auto found = std::ranges::find(info->dialog(), "b", [](const auto &dialog) { return dialog.id(); });
  ASSERT_NE(info->dialog().end(), found);
  EXPECT_EQ("b", (*found).id());
}

TEST_F(CppMembers, ListsOfTextsAndForeignElementsGrow) {
  auto dialog = context.create<dialoginfo::dialog>();
  auto routes = dialog->make_route_set(context);
  ASSERT_TRUE(routes.add_hop(context, "sip:p1") && routes.add_hop(context, "sip:p2"));
  EXPECT_FALSE(routes.add_hop(context, std::string_view("\0", 1)));
  const auto hops = dialog->route_set()->hop();
  EXPECT_EQ((std::vector<std::string_view>{"sip:p1", "sip:p2"}),
            (std::vector<std::string_view>{hops.begin(), hops.end()}));
  ASSERT_TRUE(dialog->add_anyElems(context, "<x xmlns='urn:x'/>"));
  EXPECT_EQ("<x xmlns='urn:x'/>", dialog->anyElems().front().xml);
}

TEST_F(CppMembers, ForeignAttributesAndDeclarationsAreWrittenAndRead) {
  auto set = context.create<filterset::filter_set>();
  ASSERT_TRUE(set->add_anyAttr(context, "colour", "red"));
  auto filter = set->add_filter(context);
  ASSERT_TRUE(filter && filter->set_id(context, "f"));
  auto include = filter->make_what(context).add_include(context);
  ASSERT_TRUE(include && include->set_value(context, "p:a"));
  ASSERT_TRUE(include->add_nsDecls(context, "p", "urn:p"));
  include->set_type(filterset::TypeType::namespace_);

  const auto written = context.encode(set);
  ASSERT_TRUE(written) << written.statusText();
  const std::string body(*written);
  EXPECT_NE(body.npos, body.find(" colour=\"red\"")) << body;
  EXPECT_NE(body.npos, body.find("xmlns:p=\"urn:p\"")) << body;
  auto read = context.decode<filterset::filter_set>(body);
  ASSERT_TRUE(read);
  const auto attribute = read->anyAttr().front();
  EXPECT_EQ("colour", attribute.name);
  EXPECT_EQ("red", attribute.value);
  const auto again = read->filter().front().what()->include().front();
  EXPECT_EQ(filterset::TypeType::namespace_, again.type());
  EXPECT_EQ("p", again.nsDecls().front().prefix);
  EXPECT_EQ("urn:p", again.nsDecls().front().uri);
}

TEST_F(CppMembers, DefaultNamespaceHasNoPrefix) {
  auto state = context.create<dialoginfo::state>();
  ASSERT_TRUE(state->add_nsDecls(context, std::nullopt, "urn:x"));
  EXPECT_EQ(nullptr, state->nsDecls().front().prefix.data());
}

// Which alternative a visitor was called with.
struct NameOf {
  std::string operator()(std::monostate) const { return "none"; }
  std::string operator()(ruleset::oneType one) const { return "one " + std::string(one.id()); }
  std::string operator()(ruleset::manyType many) const { return "many " + std::string(many.domain().value_or("")); }
  std::string operator()(Foreign foreign) const { return "any " + std::string(foreign.xml); }
};

TEST_F(CppMembers, ChoicesAreVisited) {
  auto rules = context.create<ruleset::ruleset>();
  auto condition = addCondition(context, *rules);
  ASSERT_TRUE(condition);
  auto identity = condition->choose_identity(context).add_items(context);
  ASSERT_TRUE(identity);
  EXPECT_EQ("none", identity->visit(NameOf()));
  EXPECT_EQ(ruleset::identityType_1::Kind::none, identity->kind());

  auto one = identity->choose_one(context);
  ASSERT_TRUE(one.set_id(context, "a"));
  EXPECT_EQ("one a", identity->visit(NameOf()));
  EXPECT_EQ(cp_identityType_1_one, identity->raw().t);
  EXPECT_FALSE(identity->many());

  auto many = identity->choose_many(context);
  ASSERT_TRUE(many.set_domain(context, "d"));
  EXPECT_EQ("many d", identity->visit(NameOf()));
  EXPECT_EQ(ruleset::identityType_1::Kind::many, identity->kind());

  ASSERT_TRUE(identity->choose_any(context, "<x/>"));
  EXPECT_EQ("any <x/>", identity->visit(NameOf()));
  EXPECT_FALSE(identity->choose_any(context, std::string_view("\0", 1)));
  EXPECT_EQ("<x/>", identity->any()->xml);

  identity->raw().t = 99;
  EXPECT_EQ("none", identity->visit(NameOf()));
  identity->raw().t = cp_identityType_1_any;
}

TEST_F(CppMembers, ChoicesOfListsAndTextsGrowAndChange) {
  auto rules = context.create<ruleset::ruleset>();
  auto condition = addCondition(context, *rules);
  ASSERT_TRUE(condition);
  condition->choose_identity(context);
  ASSERT_TRUE(condition->add_any(context, "<x/>") && condition->add_any(context, "<y/>"));
  EXPECT_EQ(2u, condition->any()->size());

  auto body = context.create<imcn::ims_3gpp>();
  ASSERT_TRUE(body->choice1().choose_service_info(context, "info"));
  EXPECT_EQ("info", body->choice1().service_info());
  auto service = body->choice1().choose_alternative_service(context);
  ASSERT_TRUE(service.set_type(context, "emergency"));
  EXPECT_FALSE(body->choice1().service_info());
  EXPECT_EQ("emergency", body->choice1().alternative_service()->type());
}

TEST_F(CppMembers, SingleForeignElementIsSetAndCleared) {
  auto rules = context.create<ruleset::ruleset>();
  auto condition = addCondition(context, *rules);
  ASSERT_TRUE(condition);
  auto identity = condition->choose_identity(context).add_items(context);
  ASSERT_TRUE(identity);
  auto one = identity->choose_one(context);
  ASSERT_TRUE(one.set_any(context, "<x/>"));
  EXPECT_EQ("<x/>", one.any()->xml);
  one.clear_any(context);
  EXPECT_FALSE(one.any());
}

} // namespace
