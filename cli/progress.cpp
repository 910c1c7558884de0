#include "progress.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace cli {

namespace {

constexpr std::size_t barWidth = 40;

} // namespace

Progress::Progress(std::size_t total, std::size_t least)
    : all(total), wanted(total >= least && isatty(STDERR_FILENO)) {}

void Progress::show(std::size_t done) {
  if (!wanted) return;
  const std::size_t filled = barWidth * done / all;
  const std::string bar = std::string(filled, '#') + std::string(barWidth - filled, '.');
  std::fflush(stdout);
  std::fprintf(stderr, "\r[%s] %zu/%zu", bar.c_str(), done, all);
  visible = true;
}

void Progress::hide() {
  if (!visible) return;
  std::fputs("\r\033[K", stderr);
  visible = false;
}

} // namespace cli
