#include "paint.h"

#include <cstdlib>
#include <unistd.h>

namespace cli {

namespace {

bool colorful(ColorWish wish, std::FILE *stream) {
  if (wish != ColorWish::automatic) return wish == ColorWish::always;
  const char *refusal = std::getenv("NO_COLOR");
  return (!refusal || !*refusal) && isatty(fileno(stream));
}

std::string painted(bool wanted, const char *rendition, const std::string &text) {
  return wanted ? "\033[" + std::string(rendition) + "m" + text + "\033[0m" : text;
}

} // namespace

Paint::Paint(ColorWish wish, std::FILE *stream) : wanted(colorful(wish, stream)) {}

std::string Paint::place(const std::string &text) const { return painted(wanted, "1", text); }
std::string Paint::error(const std::string &text) const { return painted(wanted, "1;31", text); }
std::string Paint::success(const std::string &text) const { return painted(wanted, "32", text); }

} // namespace cli
