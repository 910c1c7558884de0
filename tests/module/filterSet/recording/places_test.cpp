// The source that an error of initialising names: reached through a runtime whose contexts become unusable on demand.
#include "../types.h"
#include "recordingRuntime.h"

namespace filters {
namespace {

template <class T> class Initialising : public testing::Test {};
TYPED_TEST_SUITE(Initialising, AllTypes);

TYPED_TEST(Initialising, PassesOnAnUnusableContextUnderTheNameOfItsSource) {
  recording::reset();
  RuntimeContext *ctx = recording::newContext();
  recording::fail("rtxCheckContext", 1, STATUS_BAD_CONTEXT);
  TypeParam record;
  EXPECT_EQ(Functions<TypeParam>::init(ctx, &record), STATUS_BAD_CONTEXT);
  ASSERT_EQ(recording::errorCalls().size(), 1u);
  const std::string &call = recording::errorCalls().front();
  EXPECT_EQ(call.substr(0, call.rfind(':')), "set -105@xmlAddOns/addons/IMS/FilterSet/QxXmlFilterSet");
  EXPECT_EQ(Functions<TypeParam>::init(ctx, &record), 0);
  EXPECT_EQ(recording::errorCalls().size(), 1u);
}

} // namespace
} // namespace filters
