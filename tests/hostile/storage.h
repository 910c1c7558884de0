// Contexts on an allocator that counts, and the parser on the same one.
#pragma once

#include "rtx.h"

#include <memory>
#include <string>

namespace hostile {

// Of the contexts of storage.h and the parser together.
struct Storage {
  size_t held = 0; // bytes
  size_t mostHeld = 0;
  uint64_t contextCalls = 0; // that allocate
  uint64_t parserCalls = 0;
};
extern Storage storage;

struct FreeContext {
  void operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }
};
using Context = std::unique_ptr<RuntimeContext, FreeContext>;

// With default limits.
Context makeContext();

// A message: reset, input, call.
int run(const Context &ctx, const std::string &body, int (*call)(RuntimeContext *ctx));

} // namespace hostile
