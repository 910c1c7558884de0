// Lines of a stream, one after the other.
#pragma once

#include <cstddef>
#include <string>

namespace cli {

class LineReader {
public:
  enum class Result {
    line,
    tooLong, // passed over
    end
  };

  // Of the standard input. Of a line of more than limit bytes nothing is kept.
  explicit LineReader(std::size_t lineLimit) : limit(lineLimit) {}

  // Takes the next line, without its line break. Whatever was written to the standard output goes out before this
  // waits for input. Throws FileError.
  Result next(std::string &line);

private:
  bool fill();

  std::size_t limit;
  char buffer[65536];
  std::size_t begin = 0; // of what is left in the buffer
  std::size_t end = 0;
};

} // namespace cli
