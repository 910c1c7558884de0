// One context carries document after document: what came before shows in none of them.
#include "QxXmlIMS.h"
#include "context.h"
#include "drivers.h"
#include "errors.h"
#include "randomText.h"
#include "rtxError.h"
#include "xmlJudge.h"

#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

using library::Driver;
using library::Outcome;
using support::Context;

namespace {

struct Family {
  const char *name;
  std::span<const Driver> drivers;
};

const Family families[] = {{"Ims", library::imsDrivers()}, {"Debug", library::debugDrivers()}};

std::map<std::string, Outcome> freshOutcomes(std::span<const Driver> drivers) {
  std::map<std::string, Outcome> outcomes;
  for (const Driver &driver : drivers) {
    Context ctx;
    outcomes[driver.name] = driver.run(ctx);
  }
  return outcomes;
}

class OneContext : public testing::TestWithParam<Family> {
protected:
  std::span<const Driver> drivers = GetParam().drivers;
  const std::map<std::string, Outcome> fresh = freshOutcomes(drivers);
};

INSTANTIATE_TEST_SUITE_P(Family, OneContext, testing::ValuesIn(families),
                         [](const auto &tested) { return tested.param.name; });

TEST_P(OneContext, ReadsAndWritesEachDocument) {
  for (const auto &[name, outcome] : fresh) {
    SCOPED_TRACE(name);
    EXPECT_EQ(outcome.decoded, 0);
    EXPECT_TRUE(outcome.validated == 0 || outcome.validated == STATUS_NOT_SUPPORTED);
    EXPECT_EQ(outcome.encoded, 0);
    EXPECT_TRUE(support::parseNamespacedXml(outcome.output)) << outcome.output;
  }
}

TEST_P(OneContext, CarriesAnyDocumentAfterAnyOther) {
  for (const Driver &first : drivers) {
    for (const Driver &second : drivers) {
      SCOPED_TRACE(std::string(first.name) + ", " + second.name);
      Context ctx;
      EXPECT_EQ(first.run(ctx), fresh.at(first.name));
      EXPECT_EQ(second.run(ctx), fresh.at(second.name));
      EXPECT_EQ(first.run(ctx), fresh.at(first.name));
      EXPECT_EQ(rtxErrCount(ctx), 0u) << support::errors(ctx);
    }
  }
}

TEST_P(OneContext, CarriesAllDocumentsInRandomOrders) {
  Context ctx;
  std::vector<size_t> order(drivers.size());
  std::iota(order.begin(), order.end(), 0);
  for (uint64_t seed = 0; seed < 300; ++seed) {
    support::Random random(seed);
    for (size_t i = order.size(); i > 1; --i)
      std::swap(order[i - 1], order[random.below(static_cast<uint32_t>(i))]);
    for (size_t at : order) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " " + drivers[at].name);
      ASSERT_EQ(drivers[at].run(ctx), fresh.at(drivers[at].name));
    }
  }
}

// The registry that came first owns the context. Children of the other family's documents are then written under
// whatever is bound to the first entry of that registry's table, so only reading is promised to be the same.
TEST(TwoFamilies, StaySafeOnOneContextWhoeverCameFirst) {
  for (bool debugFirst : {false, true}) {
    const std::span<const Driver> owners = debugFirst ? library::debugDrivers() : library::imsDrivers();
    const std::span<const Driver> guests = debugFirst ? library::imsDrivers() : library::debugDrivers();
    const std::map<std::string, Outcome> freshOwners = freshOutcomes(owners);
    const std::map<std::string, Outcome> freshGuests = freshOutcomes(guests);
    for (const Driver &owner : owners) {
      for (const Driver &guest : guests) {
        SCOPED_TRACE(std::string(owner.name) + ", " + guest.name);
        Context ctx;
        ASSERT_NE(debugFirst ? QxGet_DebugEvent_NSURI(ctx) : QxGet_IMS_NSURI(ctx), nullptr);
        EXPECT_EQ(owner.run(ctx), freshOwners.at(owner.name));
        const Outcome outcome = guest.run(ctx);
        EXPECT_EQ(outcome.decoded, freshGuests.at(guest.name).decoded);
        EXPECT_EQ(outcome.validated, freshGuests.at(guest.name).validated);
        EXPECT_EQ(outcome.encoded, 0);
        EXPECT_TRUE(support::parseNamespacedXml(outcome.output)) << outcome.output;
        EXPECT_EQ(owner.run(ctx), freshOwners.at(owner.name));
      }
    }
  }
}

} // namespace
