// malloc and free as the linker's --wrap option sends them here.
#include "faultPlan.h"

#include <unordered_set>

extern "C" {
void *__real_malloc(size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void __wrap_free(void *block);
}

namespace {

// Never destroyed: libraries free blocks after the destructors of the test program have run.
std::unordered_set<void *> &blocks() {
  static auto *set = new std::unordered_set<void *>;
  return *set;
}

} // namespace

void *__wrap_malloc(size_t size) {
  if (support::faultPlan().refuseNext()) return nullptr;
  void *block = __real_malloc(size);
  if (block != nullptr) {
    blocks().insert(block);
    support::faultPlan().systemBlocks = blocks().size();
  }
  return block;
}

void __wrap_free(void *block) {
  if (blocks().erase(block) != 0) support::faultPlan().systemBlocks = blocks().size();
  __real_free(block);
}
