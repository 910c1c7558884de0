// The heap of a context: a list of the blocks that are alive, and one of free blocks for each power of two.
#pragma once

#include "rtxMemory.h"
#include "storage.h"

namespace tiny {

struct Block {
  Block *next;
  Block *previous;
  size_t size; // as asked for
  size_t kind; // of 2 to the power of kind bytes
};

class Heap {
public:
  void *allocate(System &system, size_t size);
  void release(System &system, const void *block);
  void releaseAll(System &system); // keeps the storage
  void giveBack(System &system);   // all that is free
  RtxHeapStats stats() const { return {blocks, used, peak, reserved, 0}; }

  size_t limit; // of used

private:
  static constexpr size_t kinds = sizeof(size_t) * 8 - 2;

  void unlink(Block *block);

  Block *alive;
  Block *free[kinds];
  size_t blocks;
  size_t used;
  size_t peak;
  size_t reserved;
  size_t idle; // of reserved: in free blocks
};

} // namespace tiny
