#include "contextCheck.h"

#include "rtx.h"

#include <gtest/gtest.h>

static int statusOfCheck = 0; // other than 0: what the check gives

// The linker's option --wrap sends the codec's calls here; without it the real function is missing.
extern "C" [[gnu::weak]] int __real_rtxCheckContext(RuntimeContext *ctx);
extern "C" int __wrap_rtxCheckContext(RuntimeContext *ctx);

int __wrap_rtxCheckContext(RuntimeContext *ctx) {
  return statusOfCheck != 0 ? statusOfCheck : __real_rtxCheckContext(ctx);
}

namespace support {

FailingCheck::FailingCheck(int status) {
  EXPECT_TRUE(__real_rtxCheckContext != nullptr) << "linked without --wrap=rtxCheckContext";
  statusOfCheck = status;
}

FailingCheck::~FailingCheck() { statusOfCheck = 0; }

} // namespace support
