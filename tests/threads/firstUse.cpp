// The first use that a process makes of the libraries, by many threads at the same moment. Each round is a process of
// its own, in which nothing of codec, runtime or parser has run before; from round to round the threads begin with
// other documents. Each thread works on contexts of its own.
// usage: first-use PROCESSES THREADS
#include "IsComposing/QxXmlIsComposing.h"
#include "drivers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <pthread.h>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// What a thread came to with each document of a family, in the family's order; empty if it got no context.
using Outcomes = std::vector<library::Outcome>;

// A context claimed by one family does not write the other's documents.
std::span<const library::Driver> familyOf(unsigned thread) {
  return thread % 2 == 0 ? library::imsDrivers() : library::debugDrivers();
}

Outcomes runAll(std::span<const library::Driver> drivers, unsigned first) {
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  if (ctx == nullptr) return {};
  Outcomes outcomes(drivers.size());
  for (size_t i = 0; i < drivers.size(); ++i) {
    const size_t at = (first + i) % drivers.size();
    outcomes[at] = drivers[at].run(ctx);
  }
  rtxContextFree(ctx);
  return outcomes;
}

// The parser has more to make ready when a document names a catalogue.
bool readsCatalogue() {
  constexpr std::string_view body = "<?oasis-xml-catalog catalog='c'?>"
                                    "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'><state>idle</state>"
                                    "</isComposing>";
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  if (ctx == nullptr) return false;
  int status = rtxSetInput(ctx, body.data(), body.size());
  if (status == 0) status = QxXmlV_tns_isComposing(ctx);
  rtxContextFree(ctx);
  return status == 0;
}

bool areGood(const Outcomes &outcomes) {
  return !outcomes.empty() && std::ranges::all_of(outcomes, [](const library::Outcome &outcome) {
    return outcome.decoded == 0 && outcome.encoded == 0 && !outcome.output.empty();
  });
}

// One round, in a process that has not used the libraries. A barrier of the C library's, which race detectors know.
bool raceForFirstUse(unsigned round, unsigned count) {
  pthread_barrier_t start;
  if (pthread_barrier_init(&start, nullptr, count) != 0) return false;
  std::vector<Outcomes> outcomes(count);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < count; ++i)
    threads.emplace_back([&, i] {
      pthread_barrier_wait(&start);
      if (readsCatalogue()) outcomes[i] = runAll(familyOf(i), round + i);
    });
  for (std::thread &thread : threads)
    thread.join();
  pthread_barrier_destroy(&start);
  for (unsigned i = 0; i < count; ++i) {
    const Outcomes alone = runAll(familyOf(i), 0);
    if (areGood(alone) && outcomes[i] == alone) continue;
    std::printf("round %u: thread %u came to something else than it does alone\n", round, i);
    return false;
  }
  return true;
}

} // namespace

int main(int argc, char **argv) {
  const unsigned rounds = argc == 3 ? static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10)) : 0;
  const unsigned count = argc == 3 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : 0;
  if (rounds == 0 || count == 0) {
    std::fprintf(stderr, "usage: %s PROCESSES THREADS\n", argv[0]);
    return 2;
  }
  unsigned failed = 0;
  for (unsigned round = 0; round < rounds; ++round) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) std::exit(raceForFirstUse(round, count) ? 0 : 1);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) ++failed;
  }
  std::printf("%u processes of %u threads, %u failed\n", rounds, count, failed);
  return failed == 0 ? 0 : 1;
}
