// Contexts that watch what they are given and what they give back.
#pragma once

#include "rtx.h"

#include <functional>
#include <string>
#include <unordered_set>

namespace support {

using Configure = std::function<void(RuntimeOptions &)>;

// A context on an allocator that counts and follows the fault plan. Complains at its end about a block that was not
// given back. Null inside if the plan refused its creation.
class Context {
public:
  explicit Context(const Configure &configure = {});
  ~Context();
  Context(const Context &) = delete;
  Context &operator=(const Context &) = delete;

  operator RuntimeContext *() const { return ctx; }
  RuntimeContext *operator->() const { return ctx; }

  uint64_t allocatorCalls() const { return calls; }
  size_t blocksFromAllocator() const { return blocks.size(); }

private:
  static void *allocate(void *self, size_t size);
  static void release(void *self, void *block);

  std::unordered_set<void *> blocks;
  uint64_t calls = 0;
  RuntimeContext *ctx = nullptr;
};

RtxHeapStats heapStats(RuntimeContext *ctx);

// Complains at its end if the context's heap does not hold as many blocks as at the start.
class HeapBalance {
public:
  explicit HeapBalance(RuntimeContext *context, std::string subject = {});
  ~HeapBalance();
  HeapBalance(const HeapBalance &) = delete;
  HeapBalance &operator=(const HeapBalance &) = delete;

private:
  RuntimeContext *ctx;
  std::string what;
  size_t before;
};

} // namespace support
