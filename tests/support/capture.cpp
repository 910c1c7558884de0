#include "capture.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace support {

namespace {

[[noreturn]] void giveUp(const char *step) {
  std::perror(step);
  std::abort();
}

} // namespace

std::string captureStdout(const std::function<void()> &print) {
  std::fflush(stdout);
  FILE *file = std::tmpfile();
  const int saved = dup(STDOUT_FILENO);
  if (file == nullptr || saved < 0 || dup2(fileno(file), STDOUT_FILENO) < 0) giveUp("capturing standard output");
  print();
  std::fflush(stdout);
  if (dup2(saved, STDOUT_FILENO) < 0) giveUp("restoring standard output");
  close(saved);

  std::string text;
  char piece[4096];
  std::rewind(file);
  while (const size_t length = std::fread(piece, 1, sizeof piece, file))
    text.append(piece, length);
  std::fclose(file);
  return text;
}

} // namespace support
