// What it costs at scale: bodies a second on one thread and on several, each with a context of its own, and the time of
// a byte from a body of 300 bytes to one of 100 MB, next to that of the parser alone, with what the heap held. Writes
// comma-separated values: count is the threads or the bytes of the body, value the bodies a second or the nanoseconds a
// byte.
// usage: bench-scale [GREATEST_BYTES [THREADS]]
#include "workloads.h"

#include "resultSize.h"
#include "rtx.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <time.h>

namespace {

using Clock = std::chrono::steady_clock;
using bench::Document;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

void require(bool condition, const char *what) {
  if (!condition) throw std::runtime_error(what);
}

// A context for bodies of any size, whose heap has a limit of its own.
class Decoder {
public:
  Decoder(const Document &decoded, size_t limit)
      : document(decoded), heapLimit(limit), record(decoded.recordSize / sizeof(max_align_t) + 1) {
    RuntimeOptions options;
    rtxOptionsInit(&options);
    options.inputLimit = SIZE_MAX;
    options.heapLimit = heapLimit;
    context = rtxContextCreate(&options);
    require(context != nullptr, "no context");
  }
  Decoder(const Decoder &) = delete;
  Decoder &operator=(const Decoder &) = delete;
  ~Decoder() { rtxContextFree(context); }

  void run() {
    rtxContextReset(context);
    require(rtxSetInputZ(context, document.body.data(), document.body.size()) == 0, "the input was refused");
    require(document.decode(context, record.data()) == 0, "decoding failed");
  }

  // Throws if the heap keeps more from the system than its limit allows.
  RtxHeapStats heap() const {
    RtxHeapStats stats = {};
    rtxHeapStats(context, &stats);
    require(stats.reserved / 2 <= heapLimit + size_t(64) * 1024, "the heap keeps more than it may");
    return stats;
  }
  size_t result() const { return bench::resultSize(*document.type, record.data()); }

private:
  const Document &document;
  size_t heapLimit;
  std::vector<max_align_t> record;
  RuntimeContext *context;
};

size_t resultOf(const Document &document) {
  Decoder decoder(document, SIZE_MAX);
  decoder.run();
  return decoder.result();
}

// ---- Threads --------------------------------------------------------------------------------------------------

constexpr size_t defaultHeapLimit = size_t(32) * 1024 * 1024;

double bodiesASecond(const Document &document, unsigned threads) {
  constexpr double duration = 1;
  std::atomic<unsigned> ready = 0;
  std::atomic<bool> started = false;
  std::atomic<bool> stopped = false;
  std::atomic<unsigned long long> bodies = 0;
  std::vector<std::thread> running;
  for (unsigned i = 0; i < threads; ++i)
    running.emplace_back([&] {
      Decoder decoder(document, defaultHeapLimit);
      decoder.run();
      unsigned long long own = 0;
      for (++ready; !started;)
        std::this_thread::yield();
      for (; !stopped; ++own)
        decoder.run();
      bodies += own;
    });
  while (ready < threads)
    std::this_thread::yield();
  Clock::time_point start = Clock::now();
  started = true;
  std::this_thread::sleep_for(std::chrono::duration<double>(duration));
  stopped = true;
  for (std::thread &thread : running)
    thread.join();
  return static_cast<double>(bodies) / secondsSince(start);
}

void measureThreads(unsigned most) {
  constexpr unsigned rounds = 5;
  for (const Document &document : bench::allDocuments())
    for (unsigned round = 0; round < rounds; ++round)
      for (unsigned threads = 1; threads <= most; ++threads)
        std::printf("threads,%s,%u,%.1f,,,,\n", document.name.data(), threads, bodiesASecond(document, threads));
}

// ---- Sizes ----------------------------------------------------------------------------------------------------

double processorTime() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Nanoseconds a byte, the best of its rounds.
class Stopwatch {
public:
  Stopwatch(size_t bytes, std::function<void()> timed)
      : work(std::move(timed)), runs(std::max<size_t>(1, 20000000 / bytes)),
        bytesARound(static_cast<double>(bytes) * static_cast<double>(runs)) {
    work();
  }

  void round() {
    double start = processorTime();
    for (size_t i = 0; i < runs; ++i)
      work();
    best = std::min(best, (processorTime() - start) * 1e9 / bytesARound);
  }
  double nanoseconds() const { return best; }

private:
  std::function<void()> work;
  size_t runs;
  double bytesARound;
  double best = HUGE_VAL;
};

struct Shape {
  const char *name;
  std::string (*body)(unsigned dialogs);
  unsigned elements; // of one dialog
};

constexpr Shape shapes[] = {{"small", bench::smallDialogs, 3}, {"full", bench::fullDialogs, 17}};

void measureSizes(size_t greatest) {
  for (const Shape &shape : shapes) {
    size_t around = shape.body(0).size();
    size_t each = shape.body(1).size() - around;
    for (size_t wanted = 300; wanted <= greatest; wanted *= 10) {
      // 300 bytes, 1 kB, 10 kB and so on
      if (wanted == 3000) wanted = 1000;
      auto dialogs = static_cast<unsigned>(wanted <= around + each ? 1 : (wanted - around) / each);
      if (dialogs == 1 && wanted < each) continue;
      Document document = bench::allDocuments()[3];
      document.body = shape.body(dialogs);
      document.elements = 1 + dialogs * shape.elements;
      // The records, nodes and texts of the result, and 15 % more, have to be enough.
      Decoder decoder(document, resultOf(document) / 100 * 115 + 4096);
      auto parser = bench::makeFloor(document);
      Stopwatch decoding(document.body.size(), [&] { decoder.run(); });
      Stopwatch parsing(document.body.size(), [&] { parser->run(); });
      // Rounds of small bodies are short: more of them outlast what disturbs the machine for a second.
      const unsigned rounds = wanted < 10000000 ? 40 : 5;
      for (unsigned round = 0; round < rounds; ++round) {
        decoding.round();
        parsing.round();
      }
      RtxHeapStats heap = decoder.heap();
      std::printf("size,%s,%zu,%.4f,%.4f,%zu,%zu,%zu\n", shape.name, document.body.size(), decoding.nanoseconds(),
                  parsing.nanoseconds(), heap.peakUsed + document.recordSize, decoder.result(), heap.reserved);
      std::fflush(stdout);
    }
  }
}

} // namespace

int main(int argc, char **argv) {
  size_t greatest = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100000000;
  auto threads = static_cast<unsigned>(argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 2);
  try {
    std::puts("kind,of,count,value,floor,peak,result,reserved");
    measureThreads(threads);
    measureSizes(greatest);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
