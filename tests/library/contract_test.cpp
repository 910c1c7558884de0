// The codec and the runtime are built apart: a context from a runtime of another contract is refused before it is read.
#include "IsComposing/QxXmlIsComposing.h"
#include "context.h"
#include "drivers.h"
#include "errors.h"
#include "rtxError.h"

#include <gtest/gtest.h>
#include <string.h>

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
  tns__isComposing record, before;
  memset(&record, 0x5A, sizeof record);
  memcpy(&before, &record, sizeof record);
  EXPECT_EQ(QxInit_tns__isComposing(ctx, &record), STATUS_BAD_CONTEXT);
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, &record), STATUS_BAD_CONTEXT);
  EXPECT_EQ(memcmp(&before, &record, sizeof record), 0);

  char line[256];
  rtxErrMessage(ctx, 0, line, sizeof line);
  EXPECT_STREQ(line, "unusable context: of contract 2 instead of 1");
  EXPECT_EQ(rtxErrCount(ctx), 2u) << support::errors(ctx);
}

} // namespace
