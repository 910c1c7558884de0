// What hostile bodies cost, as CSV. Without arguments every shape in every size: the time of decoding and of validating
// on a warm context with default limits, and what storage the context then holds; with names of shapes only those.
// With --heap the bodies that fill the heap. With --names N so many bodies on one context, none of which has a name of
// another.
#include "hostileBodies.h"

#include <libxml/xmlmemory.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <time.h>

namespace {

using bench::HostileDocument;
using bench::HostileShape;

constexpr size_t smallest = size_t{64} << 10;
constexpr size_t largest = size_t{4} << 20;

// ---- Storage --------------------------------------------------------------------------------------------------

// What contexts and their parsers hold together, and the most that it was.
size_t held = 0;
size_t mostHeld = 0;

void *counted(void *block) {
  held += malloc_usable_size(block);
  if (held > mostHeld) mostHeld = held;
  return block;
}

void *allocate(size_t size) { return counted(std::malloc(size)); }

void release(void *block) {
  held -= malloc_usable_size(block);
  std::free(block);
}

void *resize(void *block, size_t size) {
  const size_t before = malloc_usable_size(block);
  void *resized = std::realloc(block, size);
  if (resized == nullptr) return nullptr;
  held -= before;
  return counted(resized);
}

char *duplicate(const char *text) { return static_cast<char *>(counted(strdup(text))); }

struct FreeContext {
  void operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }
};
using Context = std::unique_ptr<RuntimeContext, FreeContext>;

Context makeContext() {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.allocate = [](void *, size_t size) { return allocate(size); };
  options.release = [](void *, void *block) { release(block); };
  Context context(rtxContextCreate(&options));
  if (!context) throw std::runtime_error("no context");
  return context;
}

size_t peakOfHeap(RuntimeContext *ctx) {
  RtxHeapStats stats;
  rtxHeapStats(ctx, &stats);
  return stats.peakUsed;
}

// ---- Time -----------------------------------------------------------------------------------------------------

// Of this thread alone, so that others on the machine matter less.
double milliseconds() {
  timespec time;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Measured {
  double best = HUGE_VAL;
  int status = 0;
};

// Each message begins with a reset, and the records go with the next one.
int run(RuntimeContext *ctx, const std::string &body, int (*call)(RuntimeContext *)) {
  rtxContextReset(ctx);
  if (rtxSetInputZ(ctx, body.data(), body.size()) != 0) throw std::runtime_error("the input is refused");
  return call(ctx);
}

Measured measure(RuntimeContext *ctx, const std::string &body, int (*call)(RuntimeContext *)) {
  constexpr int leastRuns = 4, mostRuns = 200;
  constexpr double enough = 40;
  Measured measured;
  measured.status = run(ctx, body, call); // takes the storage that the following runs use again
  double spent = 0;
  for (int i = 0; i < leastRuns || (spent < enough && i < mostRuns); ++i) {
    const double begin = milliseconds();
    run(ctx, body, call);
    const double time = milliseconds() - begin;
    spent += time;
    if (time < measured.best) measured.best = time;
  }
  return measured;
}

// ---- What is measured -----------------------------------------------------------------------------------------

void measureShape(const HostileShape &shape) {
  for (size_t size = smallest; size <= largest; size *= 2) {
    const std::string body = shape.make(size);
    const size_t before = held;
    mostHeld = held;
    const Context ctx = makeContext();
    const Measured decoded = measure(ctx.get(), body, shape.document->decode);
    const size_t peak = peakOfHeap(ctx.get());
    const Measured validated = measure(ctx.get(), body, shape.document->validate);
    std::printf("%s,\"%s\",%zu,%zu,%.4f,%d,%.4f,%d,%zu,%zu\n", shape.name, shape.attack, size, body.size(),
                decoded.best, decoded.status, validated.best, validated.status, peak, mostHeld - before);
    std::fflush(stdout);
  }
}

// The place of the first error of the heap.
std::string placeOfNoMemory(RuntimeContext *ctx) {
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (error->status == STATUS_NO_MEMORY)
      return std::to_string(error->line) + ":" + std::to_string(error->column) + " " + error->elementPath;
  }
  return "none: the errors before it have taken all records";
}

void fillHeap(const bench::GreedySpelling &spelling) {
  const std::string body = bench::greedyBody(spelling);
  const size_t before = held;
  mostHeld = held;
  const Context ctx = makeContext();
  const Measured decoded = measure(ctx.get(), body, spelling.document->decode);
  std::printf("%s,%s,%u,%zu,%.3f,%d,%s,%zu,%zu\n", spelling.name, spelling.element.c_str(), spelling.count, body.size(),
              decoded.best, decoded.status, placeOfNoMemory(ctx.get()).c_str(), peakOfHeap(ctx.get()),
              mostHeld - before);
}

void readFreshNames(unsigned count) {
  const Context ctx = makeContext();
  const HostileDocument &document = *bench::hostileShapes().front().document;
  unsigned failures = 0;
  size_t heldEarly = 0;
  const double begin = milliseconds();
  for (unsigned i = 0; i < count; ++i) {
    const std::string body = bench::bodyWithFreshNames(i);
    if (run(ctx.get(), body, document.decode) != 0) ++failures;
    if (i == count / 10) heldEarly = mostHeld;
  }
  std::printf("bodies,failures,ms,held early,held\n%u,%u,%.1f,%zu,%zu\n", count, failures, milliseconds() - begin,
              heldEarly, mostHeld);
}

bool wanted(int argc, char **argv, const char *name) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], name) == 0) return true;
  }
  return argc == 1;
}

} // namespace

int main(int argc, char **argv) {
  try {
    if (xmlMemSetup(release, allocate, resize, duplicate) != 0) throw std::runtime_error("libxml2 keeps its allocator");
    if (argc == 3 && std::strcmp(argv[1], "--names") == 0) {
      readFreshNames(static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)));
      return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], "--heap") == 0) {
      std::printf("name,element,count,bytes,ms,status,place,heap peak,held\n");
      for (const bench::GreedySpelling &spelling : bench::greedySpellings())
        fillHeap(spelling);
      return 0;
    }
    std::printf("shape,attack,size,bytes,decode ms,decode status,validate ms,validate status,heap peak,held\n");
    for (const HostileShape &shape : bench::hostileShapes()) {
      if (wanted(argc, argv, shape.name)) measureShape(shape);
    }
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
