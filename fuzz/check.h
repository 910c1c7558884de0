// What every fuzzer promises of each execution: a condition that does not hold ends the process.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzz {

inline void require(bool holds, const char *promise, std::string_view detail = {}) {
  if (holds) [[likely]]
    return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::fwrite(detail.data(), 1, detail.size(), stderr);
  std::fputc('\n', stderr);
  std::abort();
}

} // namespace fuzz
