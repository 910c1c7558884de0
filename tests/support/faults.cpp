#include "faults.h"

#include "errors.h"
#include "faultPlan.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>

namespace support {

static std::ostream &operator<<(std::ostream &stream, const Outcome &outcome) {
  return stream << outcome.status << " " << outcome.result;
}

namespace {

Outcome run(RuntimeContext *ctx, const Body &body) {
  HeapBalance balance(ctx);
  return body(ctx);
}

// outcome is what body came to on ctx under a failure, expected what it comes to without.
void judge(RuntimeContext *ctx, const Outcome &outcome, const Outcome &expected) {
  if (outcome.status == 0) {
    EXPECT_EQ(outcome, expected) << "succeeded with something missing";
  } else {
    EXPECT_LT(outcome.status, 0);
    EXPECT_TRUE(!outcome.recorded || rtxErrCount(ctx) > 0) << "failed with " << outcome.status << " without a record";
  }
}

void expectUsable(RuntimeContext *ctx, const Body &body, const Outcome &expected) {
  rtxErrClear(ctx);
  EXPECT_EQ(run(ctx, body), expected) << "after the errors were cleared: " << errors(ctx);
  rtxContextReset(ctx);
  EXPECT_EQ(run(ctx, body), expected) << "after a reset: " << errors(ctx);
}

Outcome withoutFailure(const Body &body, const Configure &configure) {
  Context ctx(configure);
  return run(ctx, body);
}

} // namespace

FaultReport faults(const Body &body, const Configure &configure) {
  const Outcome expected = withoutFailure(body, configure);
  FaultReport report;
  for (bool andAllAfter : {false, true}) {
    for (uint64_t i = 1;; ++i) {
      SCOPED_TRACE("allocation " + std::to_string(i) + (andAllAfter ? " and all after it fail" : " fails"));
      const size_t systemBlocks = faultPlan().systemBlocks;
      uint64_t refused = 0;
      {
        faultPlan().arm(i, andAllAfter);
        Context ctx(configure);
        std::optional<Outcome> outcome;
        if (ctx != nullptr) outcome = run(ctx, body);
        refused = faultPlan().refused();
        faultPlan().disarm();
        if (outcome) {
          judge(ctx, *outcome, expected);
          expectUsable(ctx, body, expected);
          if (refused != 0 && outcome->status != expected.status) ++report.failed;
        } else {
          EXPECT_NE(refused, 0u) << "no context without a failure";
          ++report.failed;
        }
      }
      EXPECT_EQ(faultPlan().systemBlocks, systemBlocks) << "system blocks left behind";
      if (refused == 0) break;
      ++report.runs;
      if (testing::Test::HasFailure()) return report;
    }
  }
  return report;
}

FaultReport everyHeapLimit(const Body &body) {
  size_t needed = 0;
  const Outcome expected = [&] {
    Context ctx;
    Outcome outcome = run(ctx, body);
    needed = heapStats(ctx).peakUsed;
    return outcome;
  }();
  FaultReport report;
  for (size_t limit = 1; limit <= needed; ++limit) {
    SCOPED_TRACE("heap of " + std::to_string(limit) + " bytes, " + std::to_string(needed) + " are needed");
    Context ctx([limit](RuntimeOptions &options) { options.heapLimit = limit; });
    if (ctx == nullptr) continue;
    const Outcome outcome = run(ctx, body);
    judge(ctx, outcome, expected);
    rtxErrClear(ctx);
    judge(ctx, run(ctx, body), expected);
    ++report.runs;
    if (outcome.status != expected.status) ++report.failed;
    if (testing::Test::HasFailure()) return report;
  }
  return report;
}

} // namespace support
