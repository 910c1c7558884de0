// Contexts and records that own themselves, and what is told of errors.
#include "context.h"
#include "imscodec.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace imscodec;
using namespace imscodec::dialoginfo;
using imscodec::iscomposing::isComposing;

namespace {

static_assert(!std::is_copy_constructible_v<Context> && !std::is_copy_assignable_v<Context>);
static_assert(std::is_nothrow_move_constructible_v<Context> && std::is_nothrow_move_assignable_v<Context>);
static_assert(!std::is_copy_constructible_v<Record<isComposing>> && !std::is_copy_assignable_v<Record<isComposing>>);
static_assert(std::is_nothrow_move_constructible_v<Record<isComposing>>);

constexpr std::string_view good =
    "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'><state>active</state></isComposing>";
constexpr std::string_view careless =
    "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'>\n<state>active</state>\n "
    "<refresh>soon</refresh><bogus/>"
    "</isComposing>";

// Storage that ends after so many blocks.
struct Storage {
  size_t left;
  static void *allocate(void *self, size_t size) {
    auto *storage = static_cast<Storage *>(self);
    if (storage->left == 0) return nullptr;
    --storage->left;
    return ::operator new(size);
  }
  static void release(void *, void *block) { ::operator delete(block); }
  RuntimeOptions options() {
    RuntimeOptions chosen;
    rtxOptionsInit(&chosen);
    chosen.allocate = allocate;
    chosen.release = release;
    chosen.allocatorUser = this;
    return chosen;
  }
};

TEST(CppContext, MovesAndLeavesNothingBehind) {
  Context first;
  ASSERT_TRUE(first);
  RuntimeContext *const ctx = first.get();
  Context second(std::move(first));
  EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(ctx, second.get());
  Context third;
  third = std::move(second);
  EXPECT_EQ(ctx, third.get());
  Context &same = third;
  third = std::move(same);
  EXPECT_EQ(ctx, third.get());
  Context fourth(third.release());
  EXPECT_FALSE(third);
  EXPECT_EQ(ctx, fourth.get());
}

TEST(CppContext, WithoutStorageFailsEveryCall) {
  Storage none{0};
  Context context(none.options());
  EXPECT_FALSE(context);
  EXPECT_EQ(STATUS_BAD_CONTEXT, context.decode<isComposing>(good).status());
  EXPECT_EQ(STATUS_BAD_CONTEXT, context.validate<isComposing>(good).status());
  auto record = context.create<isComposing>();
  EXPECT_FALSE(record->set_state(context, "idle"));
  EXPECT_FALSE(record->add_anyElems(context, "<x/>"));
  const auto encoded = context.encode(record);
  EXPECT_EQ(STATUS_BAD_CONTEXT, encoded.status());
  EXPECT_TRUE(encoded.errors().empty());
}

TEST(CppContext, EveryRefusalOfTheHeapIsToldAndLeavesTheRecordWhole) {
  bool succeeded = false;
  for (size_t limit = 0; limit < 4096 && !succeeded; limit += 8) {
    RuntimeOptions options;
    rtxOptionsInit(&options);
    options.heapLimit = limit;
    Context context(options);
    if (!context) continue;
    const support::HeapBalance balance(context.get());
    auto info = context.create<dialog_info>();
    auto call = info->add_dialog(context);
    EXPECT_EQ(call.has_value() ? 1u : 0u, info->dialog().size());
    if (!call) continue;
    const bool hop = call->make_route_set(context).add_hop(context, "sip:p");
    EXPECT_EQ(hop ? 1u : 0u, call->route_set()->hop().size());
    const bool declared = call->state().add_nsDecls(context, "p", "urn:p");
    EXPECT_EQ(declared ? 1u : 0u, call->state().nsDecls().size());
    succeeded = hop && declared && call->set_id(context, "a");
  }
  EXPECT_TRUE(succeeded);
}

TEST(CppRecord, MovesAndGivesBackOnce) {
  Context context;
  const support::HeapBalance balance(context.get());
  auto first = context.create<isComposing>();
  ASSERT_TRUE(first->set_state(context, "idle"));
  Record<isComposing> second(std::move(first));
  auto third = context.create<isComposing>();
  ASSERT_TRUE(third->set_state(context, "active"));
  third = std::move(second);
  EXPECT_EQ("idle", third->state());
}

TEST(CppRecord, ReleasedLeavesItsTextsToTheHeap) {
  Context context;
  {
    auto record = context.create<isComposing>();
    ASSERT_TRUE(record->set_state(context, "idle"));
    record.release();
  }
  EXPECT_EQ(1u, support::heapStats(context.get()).blocks);
  context.reset();
  EXPECT_EQ(0u, support::heapStats(context.get()).blocks);
}

TEST(CppRecord, OutlivesAMoveOfItsContext) {
  Context second; // goes after the record
  Context first;
  const auto record = first.decode<isComposing>(good);
  ASSERT_TRUE(record);
  second = std::move(first);
  EXPECT_EQ("active", record->state());
  EXPECT_TRUE(second.encode(*record));
}

TEST(CppErrors, HaveStatusPlaceAndText) {
  Context context;
  const support::HeapBalance balance(context.get());
  auto result = context.decode<isComposing>(careless);
  EXPECT_FALSE(result);
  EXPECT_EQ(STATUS_INVALID_CONTENT, result.status());
  EXPECT_EQ(rtxStatusText(STATUS_INVALID_CONTENT), result.statusText());
  const std::vector<Error> errors{*result.errors().begin(), *std::next(result.errors().begin())};
  EXPECT_EQ(2, std::ranges::distance(result.errors()));
  EXPECT_EQ(STATUS_INVALID_CONTENT, errors[0].status());
  EXPECT_EQ(3u, errors[0].line());
  EXPECT_EQ(careless.find("soon"), errors[0].offset());
  EXPECT_EQ(11u, errors[0].column());
  EXPECT_EQ("/isComposing/refresh", errors[0].elementPath());
  EXPECT_EQ(STATUS_UNEXPECTED_ELEMENT, errors[1].status());
  ASSERT_EQ(1u, errors[1].parameters().size());
  EXPECT_STREQ("bogus", errors[1].parameters()[0].text);
  char line[256];
  EXPECT_NE(std::string_view::npos, errors[1].format(line).find("bogus"));
  char little[5];
  EXPECT_EQ(4u, errors[1].format(little).size());
  EXPECT_TRUE(errors[1].format({}).empty());
}

TEST(CppErrors, LeaveWhatCouldBeHad) {
  Context context;
  const auto result = context.decode<isComposing>(careless);
  ASSERT_FALSE(result);
  ASSERT_TRUE(result.partial());
  EXPECT_EQ("active", (*result.partial())->state());
  EXPECT_FALSE((*result.partial())->refresh());
}

TEST(CppErrors, AreThoseOfTheLastCall) {
  Context context;
  EXPECT_FALSE(context.decode<isComposing>(careless));
  EXPECT_FALSE(context.validate<isComposing>(careless));
  const auto result = context.decode<isComposing>(good);
  EXPECT_TRUE(result) << result.statusText();
  EXPECT_TRUE(result.errors().empty());
  EXPECT_TRUE(context.validate<isComposing>(good));
}

TEST(CppErrors, OfDocumentsThatGiveNothing) {
  Context context;
  const support::HeapBalance balance(context.get());
  EXPECT_FALSE(context.decode<isComposing>("<x"));
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.inputLimit = 8;
  Context narrow(options);
  auto tooLong = narrow.decode<isComposing>(good);
  EXPECT_EQ(STATUS_LIMIT_EXCEEDED, tooLong.status());
  EXPECT_EQ(nullptr, tooLong.partial());
  const auto noInput = context.decode<isComposing>({});
  EXPECT_FALSE(noInput);
  EXPECT_EQ(STATUS_ENUM_NOT_FOUND,
            context.decode<debugevent::depth>("<depth xmlns='urn:ietf:params:xml:ns:debuginfo'>deep</depth>").status());
}

TEST(CppErrors, OfAnEncoder) {
  Context context;
  auto record = context.create<isComposing>();
  ASSERT_TRUE(record->set_state(context, "idle"));
  record->set_refresh(0);
  const auto result = context.encode(record);
  EXPECT_EQ(STATUS_CONSTRAINT_VIOLATION, result.status());
  ASSERT_FALSE(result.errors().empty());
  EXPECT_EQ(0u, (*result.errors().begin()).line());
  record->set_refresh(1);
  EXPECT_TRUE(context.encode(record));
}

} // namespace
