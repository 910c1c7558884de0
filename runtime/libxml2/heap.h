// The heap of a context: many small blocks that mostly live as long as a message.
//
// Small blocks are cut off pages one behind the other; a freed one waits in the list of its size class. A large
// block is a piece of its own. What is free is kept for the next message, unless it is very large or the bound on what
// may be kept is reached: a context that has seen its largest message asks the system for nothing any more.
//
// A block is a header of four bytes and the payload, which is aligned to eight. Under AddressSanitizer all that is
// no payload of a live block is poisoned.
#pragma once

#include "rtxContext.h"
#include "rtxMemory.h"
#include "sanitize.h"

namespace rt {

// The host's storage callbacks, or malloc and free.
class SystemAllocator {
public:
  explicit SystemAllocator(const RuntimeOptions &options);

  void *allocate(size_t size);
  void release(void *block); // null: nothing
  uint64_t callsMade() const { return calls; }

private:
  void *(*allocateBlock)(void *user, size_t size);
  void (*releaseBlock)(void *user, void *block);
  void *user;
  uint64_t calls = 0;
};

class Heap {
public:
  // The blocks alive may have asked for limit bytes at most. What is taken from the system for them, free lists and
  // rounding included, stays below twice the limit and a few pages.
  Heap(const SystemAllocator &allocator, size_t limit);
  Heap(const Heap &) = delete;
  Heap &operator=(const Heap &) = delete;

  void *allocate(size_t size);
  void *allocateAtOnce(size_t size); // a small block that needs no new page; else null, though there may be storage
  void release(void *block);         // null: nothing
  void reset();                      // frees every block, keeps the storage
  void destroy();                    // gives the storage back

  // Storage that is no block: kept buffers, which a reset leaves alone and the limit does not count.
  void *systemAllocate(size_t size) { return system.allocate(size); }
  void systemRelease(void *block) { system.release(block); }
  const SystemAllocator &systemAllocator() const { return system; }

  size_t available() const { return limit - used; } // what the limit still allows blocks to ask for
  RtxHeapStats stats();

private:
  struct Page {
    Page *next;
    size_t size;
  };
  struct FreeBlock { // lies in the payload
    FreeBlock *next;
  };
  struct LargeBlock { // lies before the header
    LargeBlock *next;
    LargeBlock *prev; // live blocks only
    size_t size;      // asked for
    size_t whole;     // of the piece
  };

  // Size classes: steps of 8 bytes up to 512, then eight steps a doubling.
  static constexpr size_t headerSize = sizeof(uint32_t);
  static constexpr size_t alignment = 8;
  static constexpr size_t finestStride = 512;
  static constexpr size_t largestStride = 2048;
  static constexpr size_t largestKept = size_t{1} << 26; // larger blocks are given back when freed
  static constexpr size_t finestClasses = finestStride / alignment;
  static constexpr size_t smallClasses = finestClasses + 2 * 8; // up to largestStride
  static constexpr size_t keptClasses = finestClasses + 17 * 8; // up to largestKept
  static constexpr size_t largeOffset = (sizeof(LargeBlock) + headerSize + alignment - 1) & ~(alignment - 1);

  // A header holds the size asked for and, above it, the size class.
  static constexpr unsigned classShift = 16;
  static constexpr uint32_t largeHeader = uint32_t{0xFFFF} << classShift;

  static constexpr size_t classOf(size_t stride);
  static constexpr size_t strideOf(size_t sizeClass);

  void *take(size_t size, size_t sizeClass, size_t stride);
  [[gnu::noinline]] void *allocateInFull(size_t size);
  void *allocateLarge(size_t size);
  [[gnu::noinline]] void releaseLarge(void *block);
  void retireLarge(LargeBlock *block);
  void releaseSpare();

  bool nextPage();
  void openPage(Page *page);
  [[gnu::cold, gnu::noinline]] void rewind();
  void *reserve(size_t size);
  void unreserve(void *piece, size_t size);

  void *countAlive(void *block, size_t size) {
    ++blocks;
    used += size;
    return block;
  }
  // Before used goes down, and before anyone looks at the peak.
  void notePeak() {
    if (used > peakUsed) peakUsed = used;
  }

  char *cursor = nullptr; // where the next block's header goes
  size_t room = 0;        // behind the cursor, in the page
  size_t used = 0;
  size_t limit;
  size_t blocks = 0;
  size_t peakUsed = 0;
  FreeBlock *freeSmall[smallClasses] = {};

  Page *firstPage = nullptr;
  Page *currentPage = nullptr;
  LargeBlock *liveLarge = nullptr;
  LargeBlock *freeLarge[keptClasses - smallClasses] = {};
  size_t freeLargeCount = 0;
  size_t reserved = 0;
  SystemAllocator system;
#if RT_ADDRESS_SANITIZER
  void *quarantine[64] = {}; // freed small blocks that are not used again yet
  size_t quarantineNext = 0;
#endif
};

// Takes a block of a small class, or null if the current page has no room for it.
inline void *Heap::take(size_t size, size_t sizeClass, size_t stride) {
  char *block;
  if (FreeBlock *free = freeSmall[sizeClass]) {
    freeSmall[sizeClass] = readHidden(&free->next);
    block = reinterpret_cast<char *>(free);
  } else {
    if (room < stride) [[unlikely]]
      return nullptr;
    block = cursor + headerSize;
    cursor += stride;
    room -= stride;
  }
  unpoison(block, size);
  writeHidden(reinterpret_cast<uint32_t *>(block) - 1, static_cast<uint32_t>(sizeClass << classShift | size));
  return countAlive(block, size);
}

inline void *Heap::allocateAtOnce(size_t size) {
  if (size > finestStride - headerSize || size > limit - used) [[unlikely]]
    return nullptr;
  const size_t payload = size > sizeof(FreeBlock) ? size : sizeof(FreeBlock);
  const size_t sizeClass = (payload + headerSize - 1) / alignment;
  return take(size, sizeClass, (sizeClass + 1) * alignment);
}

inline void *Heap::allocate(size_t size) {
  void *block = allocateAtOnce(size);
  return block != nullptr ? block : allocateInFull(size);
}

} // namespace rt
