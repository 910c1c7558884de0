// Works for a number of seconds on a handful of contexts: decodes, prints, encodes and validates bodies of every
// document, sound and damaged, with resets and with allocations that fail in between: of the host's allocator, of the
// codec's malloc and of the parser. Ends with 1 as soon as something is not as it should be:
// - a sound body is read and written as ever, unless an allocation fails; then it may be a failure, with a record;
// - what a document's value held is given back to the heap, and after a reset a heap holds nothing;
// - a context that is freed gives back all that it took from its allocator;
// - at the end, when all contexts are freed, parser and codec hold as many blocks as before the first one was made;
// - the resident memory at the end is no more than flatWithin above that after the first minute, or after the first
//   quarter of a shorter run. What may come and go is names: a parser forgets them once they are many.
// usage: soak [SECONDS [SEED]]
#include "faultPlan.h"
#include "randomText.h"
#include "rtx.h"
#include "samples.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <libxml/parser.h>
#include <memory>
#include <new>
#include <string>
#include <unistd.h>
#include <vector>

using faults::Sample;
using faults::Value;
using support::faultPlan;
using support::Random;

#ifdef __SANITIZE_ADDRESS__
// Freed blocks that wait would be memory that grows.
extern "C" const char *__asan_default_options() { return "quarantine_size_mb=1"; }
#endif

namespace {

constexpr size_t flatWithin = size_t{2} << 20;

FILE *report = stdout; // standard output itself takes what is printed of the values

void require(bool holds, const char *promise, std::string_view detail = "") {
  if (holds) return;
  std::fprintf(report, "broken: %s\n", promise);
  std::fwrite(detail.data(), 1, detail.size(), report);
  std::fputc('\n', report);
  std::fflush(report);
  _exit(1);
}

struct Counts {
  unsigned long long decoded, notDecoded, validated, notValidated, encoded, notEncoded, refused, resets, renewed;
} counts;

// ---- Storage

long parserBlocks = 0;

// Not by malloc, which is watched for the codec: see imscodec_wrap_system_allocator.
void *parserAllocate(size_t size) {
  void *block = faultPlan().refuseNext() ? nullptr : std::calloc(1, size);
  if (block != nullptr) ++parserBlocks;
  return block;
}
void parserRelease(void *block) {
  if (block != nullptr) --parserBlocks;
  std::free(block);
}
void *parserResize(void *block, size_t size) {
  if (block == nullptr) return parserAllocate(size);
  return faultPlan().refuseNext() ? nullptr : std::realloc(block, size);
}
char *parserDuplicate(const char *text) {
  const size_t size = std::strlen(text) + 1;
  void *copy = parserAllocate(size);
  return copy == nullptr ? nullptr : static_cast<char *>(std::memcpy(copy, text, size));
}

// A context that counts the blocks that it holds.
class Context {
public:
  Context() {
    RuntimeOptions options;
    rtxOptionsInit(&options);
    options.allocate = allocate;
    options.release = release;
    options.allocatorUser = this;
    ctx = rtxContextCreate(&options);
    require(ctx != nullptr, "there is a context");
  }
  ~Context() {
    rtxContextFree(ctx);
    require(blocks == 0, "a context gives back all its storage");
  }
  Context(const Context &) = delete;
  Context &operator=(const Context &) = delete;
  operator RuntimeContext *() const { return ctx; }

private:
  static void *allocate(void *self, size_t size) {
    void *block = faultPlan().refuseNext() ? nullptr : ::operator new(size, std::nothrow);
    if (block != nullptr) ++static_cast<Context *>(self)->blocks;
    return block;
  }
  static void release(void *self, void *block) {
    if (block != nullptr) --static_cast<Context *>(self)->blocks;
    ::operator delete(block);
  }

  long blocks = 0;
  RuntimeContext *ctx = nullptr;
};

RtxHeapStats heapOf(RuntimeContext *ctx) {
  RtxHeapStats stats;
  rtxHeapStats(ctx, &stats);
  return stats;
}

size_t residentBytes() {
  FILE *file = std::fopen("/proc/self/statm", "r");
  unsigned long whole = 0, resident = 0;
  const bool read = file != nullptr && std::fscanf(file, "%lu %lu", &whole, &resident) == 2;
  if (file != nullptr) std::fclose(file);
  require(read, "the system tells what memory this process has");
  return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

// ---- Work

void damage(Random &random, std::string &body) {
  for (uint32_t left = 1 + random.below(4); left != 0 && !body.empty(); --left) {
    const uint32_t at = random.below(static_cast<uint32_t>(body.size()));
    const uint32_t length = random.below(20);
    switch (random.below(6)) {
    case 0: body[at] = static_cast<char>(random.next()); break;
    case 1: body.erase(at, length); break;
    case 2: body.insert(at, support::randomText(random, 5)); break;
    case 3: body.insert(at, body.substr(random.below(static_cast<uint32_t>(body.size())), length)); break;
    case 4: body.insert(at, support::randomForeignElement(random)); break;
    default: body.resize(at); break;
    }
  }
}

// What is needed to do the same work again and again on one context.
struct Work {
  Random &random;
  RuntimeContext *ctx;
  const Sample &sample;
  std::string_view body;

  bool setInput() const {
    const int status = random.chance(50) ? rtxSetInput(ctx, body.data(), body.size())
                                         : rtxSetInputZ(ctx, body.data(), body.size()); // a string's NUL is behind it
    return status == 0;
  }

  void requireRecord() const { require(rtxErrCount(ctx) != 0, "a failure leaves a record", body); }

  void validate() const {
    if (!setInput()) return;
    const int status = sample.validate(ctx);
    ++(status == 0 ? counts.validated : counts.notValidated);
    if (status != 0 && status != STATUS_NOT_SUPPORTED) requireRecord();
  }

  // A buffer of any size takes the text, or a beginning of it, and nothing is touched behind.
  void encodeIntoFixedBuffer(const Value &value) const {
    char buffer[1024];
    const uint32_t size = random.below(sizeof buffer);
    buffer[size] = '\x5A';
    rtxSetOutput(ctx, buffer, size);
    ++(sample.encode(ctx, value) == 0 ? counts.encoded : counts.notEncoded);
    require(buffer[size] == '\x5A', "nothing is written behind a buffer", body);
    rtxErrClear(ctx);
  }

  std::string encode(const Value &value) const {
    if (rtxSetOutputDynamic(ctx) != 0) return {};
    const int status = sample.encode(ctx, value);
    ++(status == 0 ? counts.encoded : counts.notEncoded);
    if (status != 0) return requireRecord(), std::string();
    size_t length = 0;
    const char *text = rtxGetOutput(ctx, &length);
    return {text, length};
  }

  // The body as it is written again; empty after a failure.
  std::string recode() const {
    if (!setInput()) return {};
    Value value(ctx, sample);
    const int status = sample.decode(ctx, value);
    ++(status == 0 ? counts.decoded : counts.notDecoded);
    if (random.chance(10)) sample.print(value);
    if (status != 0) return requireRecord(), std::string();
    if (random.chance(20)) encodeIntoFixedBuffer(value);
    return encode(value);
  }
};

void work(Random &random, RuntimeContext *ctx, const Sample &sample, const std::string &expected) {
  const bool sound = random.chance(40);
  const bool failing = random.chance(30);
  std::string body(sample.body);
  if (!sound) damage(random, body);
  const size_t blocks = heapOf(ctx).blocks;
  const Work mixed{random, ctx, sample, body};
  if (failing) faultPlan().arm(1 + random.below(60), random.chance(50));
  if (random.chance(40)) mixed.validate();
  rtxErrClear(ctx);
  const std::string result = mixed.recode();
  if (failing) counts.refused += faultPlan().refused();
  faultPlan().disarm();
  if (sound)
    require(result == expected || (failing && result.empty()), "a sound body is read and written as ever", body);
  require(heapOf(ctx).blocks == blocks, "nothing stays behind on the heap", body);
  rtxErrClear(ctx);
  if (random.chance(20)) {
    rtxContextReset(ctx);
    ++counts.resets;
    const RtxHeapStats heap = heapOf(ctx);
    require(heap.blocks == 0 && heap.used == 0 && heap.peakUsed == 0, "a heap that was reset holds nothing", body);
  }
  if (failing || !sound)
    require((Work{random, ctx, sample, sample.body}.recode() == expected), "a context goes on after a failure", body);
}

void printCounts(std::chrono::seconds passed) {
  std::fprintf(
      report,
      "%llds: %llu decoded, %llu not; %llu validated, %llu not; %llu encoded, %llu not; %llu allocations refused, "
      "%llu resets, %llu contexts renewed; %zu KiB resident\n",
      static_cast<long long>(passed.count()), counts.decoded, counts.notDecoded, counts.validated, counts.notValidated,
      counts.encoded, counts.notEncoded, counts.refused, counts.resets, counts.renewed, residentBytes() / 1024);
  std::fflush(report);
}

// The resident memory after the warm-up.
size_t soak(Random &random, std::chrono::seconds duration, const std::vector<std::string> &expected) {
  using Clock = std::chrono::steady_clock;
  using namespace std::chrono_literals;
  const std::span<const Sample> samples = faults::allSamples();
  constexpr size_t ofEachFamily = 3;
  std::vector<std::unique_ptr<Context>> contexts;
  for (size_t i = 0; i < 2 * ofEachFamily; ++i)
    contexts.push_back(std::make_unique<Context>());

  const Clock::time_point begin = Clock::now();
  const Clock::duration warmUp = duration > 4min ? Clock::duration(1min) : Clock::duration(duration) / 4;
  Clock::time_point nextLine = begin + 1min;
  size_t resident = 0;
  for (Clock::time_point now = begin; now < begin + duration; now = Clock::now()) {
    if (resident == 0 && now >= begin + warmUp) resident = residentBytes();
    if (now >= nextLine) {
      printCounts(std::chrono::duration_cast<std::chrono::seconds>(now - begin));
      nextLine += 1min;
    }
    for (int i = 0; i < 100; ++i) {
      const size_t at = random.below(static_cast<uint32_t>(samples.size()));
      const bool ims = at < faults::imsSamples().size();
      std::unique_ptr<Context> &context = contexts[(ims ? 0 : ofEachFamily) + random.below(ofEachFamily)];
      work(random, *context, samples[at], expected[at]);
      if (random.below(5000) == 0) {
        context = std::make_unique<Context>();
        ++counts.renewed;
      }
    }
  }
  return resident;
}

} // namespace

int main(int argc, char **argv) {
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 600;
  if (seconds <= 0 || argc > 3) {
    std::fprintf(stderr, "usage: %s [SECONDS [SEED]]\n", argv[0]);
    return 2;
  }
  Random random(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1);
  report = fdopen(dup(STDOUT_FILENO), "w");
  if (report == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) return 2;
  if (xmlMemSetup(parserRelease, parserAllocate, parserResize, parserDuplicate) != 0) return 2;

  std::vector<std::string> expected;
  for (const Sample &sample : faults::allSamples()) {
    const Context context;
    expected.push_back(Work{random, context, sample, sample.body}.recode());
    require(!expected.back().empty(), "every sample is read and written", sample.name);
  }
  xmlResetLastError(); // which is not of a parser but of this thread
  const long parserBlocksBefore = parserBlocks;
  const size_t codecBlocksBefore = faultPlan().systemBlocks;

  const size_t residentBefore = soak(random, std::chrono::seconds(seconds), expected);
  const size_t resident = residentBytes();
  printCounts(std::chrono::seconds(seconds));
  std::fprintf(report, "%zu KiB were resident after the warm-up\n", residentBefore / 1024);
  xmlResetLastError();
  require(parserBlocks == parserBlocksBefore, "the parser has given back all its storage");
  require(faultPlan().systemBlocks == codecBlocksBefore, "the codec has given back all its storage");
  require(residentBefore != 0 && resident < residentBefore + flatWithin, "the memory of the process is flat");
  return 0;
}
