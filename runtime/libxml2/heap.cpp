#include "heap.h"

#include "internals.h"
#include "usable.h"

#include <bit>
#include <stdlib.h>
#include <string.h>

namespace rt {

namespace {

constexpr size_t firstPageSize = 4096;
constexpr size_t largestPageSize = 65536;
constexpr size_t reserveSlack = 2 * largestPageSize;

void *allocateByDefault(void *, size_t size) { return malloc(size); }

void releaseByDefault(void *, void *block) { free(block); }

} // namespace

// ---- System ---------------------------------------------------------------------------------------------------

SystemAllocator::SystemAllocator(const RuntimeOptions &options)
    : allocateBlock(options.allocate != nullptr ? options.allocate : allocateByDefault),
      releaseBlock(options.release != nullptr ? options.release : releaseByDefault), user(options.allocatorUser) {}

void *SystemAllocator::allocate(size_t size) {
  ++calls;
  return allocateBlock(user, size);
}

void SystemAllocator::release(void *block) {
  if (block == nullptr) return;
  ++calls;
  releaseBlock(user, block);
}

// ---- Size classes ---------------------------------------------------------------------------------------------

constexpr size_t Heap::classOf(size_t stride) {
  if (stride <= finestStride) return (stride - 1) / alignment;
  const unsigned doubling = static_cast<unsigned>(std::bit_width(stride - 1)) - 1;
  const size_t step = (stride - 1) >> (doubling - 3) & 7;
  return finestClasses + (doubling - static_cast<unsigned>(std::bit_width(finestStride - 1))) * 8 + step;
}

constexpr size_t Heap::strideOf(size_t sizeClass) {
  if (sizeClass < finestClasses) return (sizeClass + 1) * alignment;
  const size_t coarse = sizeClass - finestClasses;
  const size_t base = finestStride << (coarse / 8);
  return base + base / 8 * (coarse % 8 + 1);
}

// ---- Life -----------------------------------------------------------------------------------------------------

Heap::Heap(const SystemAllocator &allocator, size_t blockLimit) : limit(blockLimit), system(allocator) {
  static_assert(classOf(finestStride) == finestClasses - 1 && classOf(finestStride + 1) == finestClasses);
  static_assert(classOf(largestStride) == smallClasses - 1 && strideOf(smallClasses - 1) == largestStride);
  static_assert(classOf(largestKept) == keptClasses - 1 && strideOf(keptClasses - 1) == largestKept);
  static_assert(largestStride < size_t{1} << classShift && keptClasses < largeHeader >> classShift);
  static_assert(sizeof(Page) % alignment == 0 && sizeof(Page) + alignment + largestStride <= firstPageSize);
}

void Heap::reset() {
  rewind();
  while (LargeBlock *block = liveLarge) {
    liveLarge = block->next;
    retireLarge(block);
  }
  blocks = 0;
  used = 0;
  peakUsed = 0;
}

void Heap::destroy() {
  reset();
  releaseSpare();
  if (firstPage != nullptr) unreserve(firstPage, firstPage->size);
  firstPage = nullptr;
  currentPage = nullptr;
  cursor = nullptr;
  room = 0;
}

RtxHeapStats Heap::stats() {
  notePeak();
  return {blocks, used, peakUsed, reserved, system.callsMade()};
}

// ---- Storage from the system ----------------------------------------------------------------------------------

void *Heap::reserve(size_t size) {
  const size_t most = limit <= (SIZE_MAX - reserveSlack) / 2 ? 2 * limit + reserveSlack : SIZE_MAX;
  if (size > most - reserved) releaseSpare();
  if (size > most - reserved) return nullptr;
  void *piece = system.allocate(size);
  if (piece != nullptr) reserved += size;
  return piece;
}

void Heap::unreserve(void *piece, size_t size) {
  unpoison(piece, size);
  reserved -= size;
  system.release(piece);
}

// Gives back what no live block lies in: freed large blocks, and the pages that are not in use yet.
void Heap::releaseSpare() {
  for (LargeBlock **waiting = freeLarge; freeLargeCount != 0; waiting++) {
    while (LargeBlock *block = *waiting) {
      *waiting = block->next;
      freeLargeCount--;
      unreserve(block, block->whole);
    }
  }
  if (currentPage == nullptr) return;
  while (Page *page = currentPage->next) {
    currentPage->next = page->next;
    unreserve(page, page->size);
  }
}

// ---- Pages ----------------------------------------------------------------------------------------------------

// The pages stand in the order in which they were taken, and are used again in that order.
bool Heap::nextPage() {
  Page *next = currentPage != nullptr ? currentPage->next : firstPage;
  if (next == nullptr) {
    size_t size = firstPageSize;
    if (currentPage != nullptr) size = currentPage->size < largestPageSize ? 2 * currentPage->size : largestPageSize;
    next = static_cast<Page *>(reserve(size));
    if (next == nullptr) return false;
    next->next = nullptr;
    next->size = size;
    if (currentPage != nullptr)
      currentPage->next = next;
    else
      firstPage = next;
  }
  openPage(next);
  return true;
}

void Heap::openPage(Page *page) {
  currentPage = page;
  cursor = reinterpret_cast<char *>(page + 1) + alignment - headerSize; // so that payloads are aligned
  room = page->size - sizeof(Page) - (alignment - headerSize);
  poison(page + 1, page->size - sizeof(Page));
}

// Begins again with the first page.
void Heap::rewind() {
  memset(freeSmall, 0, sizeof freeSmall);
#if RT_ADDRESS_SANITIZER
  memset(quarantine, 0, sizeof quarantine);
  for (Page *page = firstPage; page != nullptr; page = page->next)
    poison(page + 1, page->size - sizeof(Page));
#endif
  if (firstPage != nullptr) openPage(firstPage);
}

// ---- Blocks ---------------------------------------------------------------------------------------------------

void *Heap::allocateInFull(size_t size) {
  if (size > limit - used) return nullptr;
  if (size > largestStride - headerSize) return allocateLarge(size);
  const size_t payload = size > sizeof(FreeBlock) ? size : sizeof(FreeBlock);
  const size_t sizeClass = classOf(payload + headerSize);
  const size_t stride = strideOf(sizeClass);
  if (void *block = take(size, sizeClass, stride)) return block;
  return nextPage() ? take(size, sizeClass, stride) : nullptr;
}

void *Heap::allocateLarge(size_t size) {
  if (size > PTRDIFF_MAX - largeOffset) return nullptr;
  size_t sizeClass = keptClasses;
  size_t whole = size + largeOffset;
  LargeBlock *block = nullptr;
  if (whole <= largestKept) {
    sizeClass = classOf(whole);
    whole = strideOf(sizeClass);
    LargeBlock *&waiting = freeLarge[sizeClass - smallClasses];
    block = waiting;
    if (block != nullptr) {
      waiting = block->next;
      freeLargeCount--;
    }
  }
  if (block == nullptr) {
    block = static_cast<LargeBlock *>(reserve(whole));
    if (block == nullptr) return nullptr;
    poison(block + 1, whole - sizeof(LargeBlock));
  }
  block->size = size;
  block->whole = whole;
  block->prev = nullptr;
  block->next = liveLarge;
  if (liveLarge != nullptr) liveLarge->prev = block;
  liveLarge = block;
  char *payload = reinterpret_cast<char *>(block) + largeOffset;
  unpoison(payload, size);
  writeHidden(reinterpret_cast<uint32_t *>(payload) - 1, largeHeader);
  return countAlive(payload, size);
}

void Heap::release(void *block) {
  if (block == nullptr) return;
  const uint32_t header = readHidden(static_cast<uint32_t *>(block) - 1);
  if (header == largeHeader) return releaseLarge(block);
  const size_t size = header & ((uint32_t{1} << classShift) - 1);
  size_t sizeClass = header >> classShift;
  notePeak();
  used -= size;
  --blocks;
  poison(block, size);
  // Nothing is alive: the free lists are no longer worth their keep, unless it is one page only.
  if (blocks == 0 && currentPage != firstPage) return rewind();
#if RT_ADDRESS_SANITIZER
  void *oldest = quarantine[quarantineNext];
  quarantine[quarantineNext] = block;
  quarantineNext = (quarantineNext + 1) % (sizeof quarantine / sizeof *quarantine);
  if (oldest == nullptr) return;
  block = oldest;
  sizeClass = readHidden(static_cast<uint32_t *>(block) - 1) >> classShift;
#endif
  auto *free = static_cast<FreeBlock *>(block);
  writeHidden(&free->next, freeSmall[sizeClass]);
  freeSmall[sizeClass] = free;
}

void Heap::releaseLarge(void *payload) {
  auto *block = reinterpret_cast<LargeBlock *>(static_cast<char *>(payload) - largeOffset);
  notePeak();
  used -= block->size;
  --blocks;
  if (block->next != nullptr) block->next->prev = block->prev;
  if (block->prev != nullptr)
    block->prev->next = block->next;
  else
    liveLarge = block->next;
  retireLarge(block);
}

// Puts a large block that is no longer alive aside.
void Heap::retireLarge(LargeBlock *block) {
  if (block->whole > largestKept) return unreserve(block, block->whole);
  poison(reinterpret_cast<char *>(block) + largeOffset, block->size);
  LargeBlock *&waiting = freeLarge[classOf(block->whole) - smallClasses];
  block->next = waiting;
  waiting = block;
  freeLargeCount++;
}

} // namespace rt

// ---- Operations -----------------------------------------------------------------------------------------------

void *rtxMemHeapAlloc(RuntimeContext *ctx, size_t size) {
  if (!rt::usable(ctx)) return nullptr;
  return ctx->internals->heap.allocate(size);
}

void rtxMemHeapFreePtr(RuntimeContext *ctx, const void *block) {
  if (!rt::usable(ctx)) return;
  ctx->internals->heap.release(const_cast<void *>(block));
}

void rtxHeapStats(RuntimeContext *ctx, RtxHeapStats *stats) {
  if (stats == nullptr) return;
  *stats = rt::usable(ctx) ? ctx->internals->heap.stats() : RtxHeapStats{};
}
