// The system as an inner part sees it: storage that is counted, and refused on demand.
#pragma once

#include "rtxContext.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unordered_map>

namespace runtimeTest {

class SystemStorage {
public:
  SystemStorage() = default;
  SystemStorage(const SystemStorage &) = delete;
  SystemStorage &operator=(const SystemStorage &) = delete;
  ~SystemStorage() { EXPECT_EQ(blocks.size(), 0u) << "blocks left behind"; }

  size_t calls = 0;  // of both callbacks
  size_t asked = 0;  // allocations asked for
  size_t failAt = 0; // number of the allocation that is refused, from 1; 0: none
  bool failAllAfter = false;
  size_t refused = 0;
  size_t bytes = 0; // alive

  RuntimeOptions options() {
    RuntimeOptions chosen;
    rtxOptionsInit(&chosen);
    chosen.allocate = [](void *self, size_t size) { return static_cast<SystemStorage *>(self)->allocate(size); };
    chosen.release = [](void *self, void *block) { static_cast<SystemStorage *>(self)->release(block); };
    chosen.allocatorUser = this;
    return chosen;
  }

  void failFrom(size_t next, bool andAllAfter) {
    failAt = asked + next;
    failAllAfter = andAllAfter;
  }
  void heal() { failAt = 0; }

private:
  void *allocate(size_t size) {
    ++calls;
    ++asked;
    if (failAt != 0 && (asked == failAt || (failAllAfter && asked > failAt))) {
      ++refused;
      return nullptr;
    }
    void *block = std::malloc(size);
    if (block == nullptr) return nullptr;
    blocks[block] = size;
    bytes += size;
    return block;
  }
  void release(void *block) {
    ++calls;
    const auto found = blocks.find(block);
    ASSERT_NE(found, blocks.end()) << "a block was released that is not alive";
    bytes -= found->second;
    blocks.erase(found);
    std::free(block);
  }

  std::unordered_map<void *, size_t> blocks;
};

} // namespace runtimeTest
