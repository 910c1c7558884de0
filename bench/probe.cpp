// Runs one workload a number of times, for a tool that counts instructions around it. Prints the bytes of one run.
#include "workloads.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int argc, char **argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s WORKLOAD TIMES\n", argv[0]);
    return 2;
  }
  try {
    for (const bench::NamedWorkload &workload : bench::allWorkloads()) {
      if (workload.name != argv[1]) continue;
      auto work = workload.make();
      work->run(); // takes the storage that the following runs use again
      unsigned long long before = work->systemCalls();
      for (long i = std::strtol(argv[2], nullptr, 10); i > 0; --i)
        work->run();
      std::printf("%zu %llu\n", work->bytes(), work->systemCalls() - before);
      return 0;
    }
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
    return 1;
  }
  std::fprintf(stderr, "no such workload: %s\n", argv[1]);
  return 2;
}
