// Storage failures as a mode of any test.
#pragma once

#include "context.h"

#include <functional>
#include <string>

namespace support {

// What a body came to: its status and, as text, all that it produced.
struct Outcome {
  int status = 0;
  std::string result;
  bool recorded = true; // a failure of this body must leave a record

  bool operator==(const Outcome &) const = default;
};

using Body = std::function<Outcome(RuntimeContext *ctx)>;

struct FaultReport {
  uint64_t runs = 0;   // with a failure injected
  uint64_t failed = 0; // of these, how many the body noticed
};

// Runs body once without failures, then again and again, refusing the i-th allocation, and the i-th and all after it,
// for every i, the context's creation included. Each time: either the body fails, with a record, or its result is the
// same as without failure; and the context then works as if nothing had happened, and gives back all its storage.
// body starts and ends with nothing of its own on the heap, whatever happens to it.
FaultReport faults(const Body &body, const Configure &configure = {});

// The same with a heap that may hold only so many bytes, for every number of bytes below what the body needs.
FaultReport everyHeapLimit(const Body &body);

} // namespace support
