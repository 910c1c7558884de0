// What every fuzzer promises of each execution: a condition that does not hold ends the process.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

[[noreturn, gnu::cold]] inline void broken(const char *promise, const std::string &detail) {
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::fwrite(detail.data(), 1, detail.size(), stderr);
  std::fputc('\n', stderr);
  std::abort();
}

// detail: called for what else to tell of a broken promise.
template <class Detail> void require(bool holds, const char *promise, Detail detail) {
  if (!holds) [[unlikely]]
    broken(promise, std::string(detail()));
}

inline void require(bool holds, const char *promise) {
  if (!holds) [[unlikely]]
    broken(promise, {});
}

} // namespace fuzz
