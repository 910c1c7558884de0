// Comparison of whole records.
#include "context.h"
#include "records.h"
#include "tables.h"

#include <limits>
#include <string>

using namespace imscodec;

namespace {

TEST(CppEqual, SeesEveryChange) {
  std::set<ims::Kind> kinds;
  records::forEachDocument([&kinds]<class T>(const char *root, const char *) {
    const ims::TypeSchema &type = tables::typeOf(root);
    for (unsigned variant = 0; variant < 2; ++variant) {
      Context context;
      auto record = context.create<T>();
      auto same = context.create<T>();
      ASSERT_TRUE(tables::fill(context.get(), type, &record.raw(), variant));
      ASSERT_TRUE(tables::fill(context.get(), type, &same.raw(), variant));
      size_t changes = 0;
      kinds.merge(tables::changeEach(type, &record.raw(), [&](const std::string &place) {
        ++changes;
        EXPECT_FALSE(equal(record, same)) << place;
        EXPECT_FALSE(equal(same, record)) << place;
      }));
      EXPECT_GT(changes, 4u);
      EXPECT_TRUE(equal(record, same));
      EXPECT_TRUE(equal(same, record));
    }
  });
  EXPECT_EQ(kinds.size(), static_cast<size_t>(ims::Kind::namespaceList) + 1);
}

TEST(CppEqual, SeesEveryChangeOfADocument) {
  records::forEachDocument([]<class T>(const char *root, const char *body) {
    Context first;
    Context second;
    auto record = first.decode<T>(body);
    auto same = second.decode<T>(body);
    ASSERT_TRUE(record && same);
    tables::changeEach(tables::typeOf(root), &(*record).raw(),
                       [&](const std::string &place) { EXPECT_FALSE(equal(*record, *same)) << place; });
    EXPECT_TRUE(equal(*record, *same));
  });
}

TEST(CppEqual, TakesViewsAndRecords) {
  Context context;
  auto a = context.create<iscomposing::isComposing>();
  auto b = context.create<iscomposing::isComposing>();
  EXPECT_TRUE(equal(a, b));
  EXPECT_TRUE(equal(a.view(), b));
  EXPECT_TRUE(equal(a, b.view()));
  EXPECT_TRUE(equal(*a, *b));
  ASSERT_TRUE(b->set_state(context, "idle"));
  EXPECT_FALSE(equal(a, b));
  EXPECT_FALSE(equal(*a, *b));
}

TEST(CppEqual, DoesNotLookAtWhatIsAbsent) {
  Context context;
  auto a = context.create<debugevent::start_trigger>();
  auto b = context.create<debugevent::start_trigger>();
  ASSERT_TRUE(tables::fill(context.get(), tables::typeOf("start-trigger"), &a.raw()));
  EXPECT_FALSE(equal(a, b));
  const uint32_t all = std::exchange(a.raw().m, 0);
  EXPECT_TRUE(equal(a, b));
  a.raw().m = 0x80000000; // no member's
  EXPECT_TRUE(equal(a, b));
  a.raw().m = all;
}

TEST(CppEqual, DoesNotLookAtWhatIsNotChosen) {
  Context context;
  auto a = context.create<imcn::ims_3gpp>();
  auto b = context.create<imcn::ims_3gpp>();
  ASSERT_TRUE(a->choice1().choose_service_info(context, "left behind"));
  for (const uint16_t selector : {uint16_t{0}, uint16_t{9}}) {
    a.raw()._choice1.t = selector;
    b.raw()._choice1.t = selector;
    EXPECT_TRUE(equal(a, b));
  }
  b.raw()._choice1.t = 8;
  EXPECT_FALSE(equal(a, b));
  a.raw()._choice1.t = tIMS3GPP_1_service_info;
  b.raw()._choice1.t = 0;
}

TEST(CppEqual, TakesTextsThatAreNotSetAsEmpty) {
  Context context;
  auto a = context.create<dialoginfo::dialog>();
  auto b = context.create<dialoginfo::dialog>();
  ASSERT_TRUE(a->set_id(context, "") && a->state().set_value(context, ""));
  ASSERT_TRUE(a->make_route_set(context).add_hop(context, ""));
  EXPECT_EQ(0, rtxAppendText(context.get(), &b->make_route_set(context).raw().tns_hop, nullptr, 0));
  ASSERT_TRUE(a->state().add_nsDecls(context, "", "urn:x") && b->state().add_nsDecls(context, std::nullopt, "urn:x"));
  EXPECT_TRUE(equal(a, b));
  EXPECT_TRUE(equal(b, a));
}

TEST(CppEqual, DoesNotCountCdataSections) {
  Context context;
  auto a = context.create<iscomposing::isComposing>();
  auto b = context.create<iscomposing::isComposing>();
  ASSERT_TRUE(a->set_state(context, "idle") && b->set_state(context, "idle"));
  a.raw().tns_state.cdata = true;
  EXPECT_TRUE(equal(a, b));
}

TEST(CppEqual, ComparesNumbersByValue) {
  Context context;
  auto a = context.create<imcn::ims_3gpp>();
  auto b = context.create<imcn::ims_3gpp>();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    double one, other;
    bool same;
  } cases[] = {{0.0, -0.0, true}, {nan, nan, true}, {nan, 1, false}, {1, nan, false}, {1, 1.0000001, false}};
  for (const auto &each : cases) {
    a->set_version(each.one);
    b->set_version(each.other);
    EXPECT_EQ(each.same, equal(a, b)) << each.one << " and " << each.other;
  }
}

TEST(CppEqual, TakesBytesWithoutStorageAsNone) {
  Context context;
  auto a = context.create<debugevent::start_trigger>();
  auto b = context.create<debugevent::start_trigger>();
  ASSERT_TRUE(a->set_debug_id(context, {}) && b->set_debug_id(context, {}));
  rtxMemHeapFreePtr(context.get(), b.raw().tns_debug_id.bytes);
  b.raw().tns_debug_id = {4, nullptr};
  EXPECT_TRUE(equal(a, b));
  EXPECT_TRUE(equal(b, a));
  auto copied = copy(context, b);
  ASSERT_TRUE(copied);
  EXPECT_TRUE(copied->debug_id() && copied->debug_id()->empty());
}

} // namespace
