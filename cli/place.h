// Where the bytes of a document stand in the file that it was taken from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace cli {

class PlaceMap {
public:
  // From the offset at on, the document's bytes stand in the file from fileAt on; packed: three bytes for four
  // characters. Offsets are added in ascending order.
  void add(std::size_t at, std::size_t fileAt, bool packed = false);

  std::size_t inFile(std::size_t at) const;

private:
  struct Stretch {
    std::size_t at;
    std::size_t fileAt;
    bool packed;

    std::size_t inFile(std::size_t offset) const;
  };
  std::vector<Stretch> stretches;
};

struct LineAndColumn {
  std::uint32_t line;   // from 1
  std::uint32_t column; // from 1, in bytes
};

// Finds lines in a text, which must stay, without looking at all of it each time.
class LineIndex {
public:
  explicit LineIndex(std::string_view text);

  LineAndColumn at(std::size_t offset) const;

private:
  std::string_view text;
  std::vector<std::size_t> breaks; // before each multiple of the step
};

} // namespace cli
