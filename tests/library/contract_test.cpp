// The codec and the runtime are built apart: a context from a runtime of another contract is refused before it is read.
#include "IsComposing/QxXmlIsComposing.h"
#include "context.h"
#include "drivers.h"
#include "errors.h"
#include "rtxError.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

using library::Driver;
using library::Outcome;
using support::Context;

namespace {

TEST(Contract, IsStampedOnEveryContext) {
  Context ctx;
  EXPECT_EQ(ctx->contract, RTX_CONTRACT_VERSION);
  rtxContextReset(ctx);
  EXPECT_EQ(ctx->contract, RTX_CONTRACT_VERSION);
}

TEST(Contract, OfAnotherVersionIsRefusedByEveryDocument) {
  for (const std::span<const Driver> drivers : {library::imsDrivers(), library::debugDrivers()}) {
    for (const Driver &driver : drivers) {
      SCOPED_TRACE(driver.name);
      Context ctx;
      ctx->contract = RTX_CONTRACT_VERSION + 1;
      const Outcome outcome = driver.run(ctx);
      EXPECT_EQ(outcome.decoded, STATUS_BAD_CONTEXT);
      EXPECT_TRUE(outcome.validated == STATUS_BAD_CONTEXT || outcome.validated == STATUS_NOT_SUPPORTED);
      EXPECT_EQ(outcome.encoded, STATUS_BAD_CONTEXT);
      EXPECT_EQ(outcome.output, "");
    }
  }
}

TEST(Contract, OfAnotherVersionIsToldWithBothVersionsAndLeavesTheRecordAlone) {
  Context ctx;
  ctx->contract = RTX_CONTRACT_VERSION + 1;
  alignas(tns__isComposing) unsigned char storage[sizeof(tns__isComposing)];
  std::fill(std::begin(storage), std::end(storage), 0x5A);
  auto *record = reinterpret_cast<tns__isComposing *>(storage);
  EXPECT_EQ(QxInit_tns__isComposing(ctx, record), STATUS_BAD_CONTEXT);
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), STATUS_BAD_CONTEXT);
  EXPECT_EQ(std::count(std::begin(storage), std::end(storage), 0x5A), std::ssize(storage));

  char line[256];
  rtxErrMessage(ctx, 0, line, sizeof line);
  EXPECT_STREQ(line, "unusable context: of contract 2 instead of 1");
  EXPECT_EQ(rtxErrCount(ctx), 2u) << support::errors(ctx);
}

} // namespace
