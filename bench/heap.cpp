// Counts what each workload takes from the system's allocator, libraries included: calls of one run once it has its
// storage, and the most bytes alive during such a run, beyond those alive before the workload was made.
#include "rivals.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <malloc.h>

extern "C" {
void *__libc_malloc(size_t);
void *__libc_calloc(size_t, size_t);
void *__libc_realloc(void *, size_t);
void *__libc_memalign(size_t, size_t);
void __libc_free(void *);
}

namespace {

struct Counter {
  unsigned long long calls = 0;
  size_t alive = 0;
  size_t peak = 0;

  void *taken(void *block) {
    ++calls;
    alive += malloc_usable_size(block);
    if (alive > peak) peak = alive;
    return block;
  }
  void given(void *block) { alive -= malloc_usable_size(block); }
};
Counter counter; // this program has one thread

} // namespace

// Every library of the process finds these before those of the C library.
extern "C" {
void *malloc(size_t size) { return counter.taken(__libc_malloc(size)); }
void *calloc(size_t count, size_t size) { return counter.taken(__libc_calloc(count, size)); }
void *realloc(void *block, size_t size) {
  counter.given(block);
  return counter.taken(__libc_realloc(block, size));
}
void *memalign(size_t alignment, size_t size) { return counter.taken(__libc_memalign(alignment, size)); }
void *aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }
int posix_memalign(void **block, size_t alignment, size_t size) {
  *block = memalign(alignment, size);
  return *block ? 0 : 12;
}
void free(void *block) {
  counter.given(block);
  __libc_free(block);
}
}

namespace {

void measure(const bench::Document &document, const bench::NamedWorkload &workload) {
  constexpr unsigned runs = 10;
  size_t before = counter.alive;
  auto work = workload.make(document);
  work->run();
  work->run();
  Counter start = counter;
  counter.peak = counter.alive;
  for (unsigned i = 0; i < runs; ++i)
    work->run();
  std::printf("%s,%s,%.1f,%zu\n", document.name.data(), workload.name.data(),
              static_cast<double>(counter.calls - start.calls) / runs, counter.peak - before);
}

} // namespace

int main() {
  static char buffer[4096];
  std::setvbuf(stdout, buffer, _IOFBF, sizeof(buffer)); // or its buffer would be counted
  try {
    const std::vector<bench::NamedWorkload> workloads = bench::everyWorkload();
    std::puts("document,workload,calls,peak");
    for (const bench::Document &document : bench::allDocuments())
      for (const bench::NamedWorkload &workload : workloads)
        if (workload.handles(document)) measure(document, workload);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
