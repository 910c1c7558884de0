#include "lineReader.h"

#include "source.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace cli {

// False at the end of the stream.
bool LineReader::fill() {
  flushOutput();
  ssize_t count = -1;
  do
    count = read(STDIN_FILENO, buffer, sizeof(buffer));
  while (count < 0 && errno == EINTR);
  if (count < 0) throw FileError("<stdin>", errno);
  begin = 0;
  end = static_cast<std::size_t>(count);
  return count > 0;
}

LineReader::Result LineReader::next(std::string &line) {
  line.clear();
  bool tooLong = false;
  bool started = false;
  while (begin < end || fill()) {
    started = true;
    const char *const lineBreak = std::find(buffer + begin, buffer + end, '\n');
    const auto length = static_cast<std::size_t>(lineBreak - (buffer + begin));
    tooLong = tooLong || line.size() + length > limit;
    if (tooLong) {
      line.clear();
    } else {
      line.append(buffer + begin, length);
    }
    begin += length;
    if (begin == end) continue;
    ++begin;
    return tooLong ? Result::tooLong : Result::line;
  }
  if (!started) return Result::end;
  return tooLong ? Result::tooLong : Result::line;
}

} // namespace cli
