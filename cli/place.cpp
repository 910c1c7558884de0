#include "place.h"

#include <algorithm>

namespace cli {

namespace {

constexpr std::size_t step = 4096;

std::size_t countBreaks(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace

std::size_t PlaceMap::Stretch::inFile(std::size_t offset) const {
  const std::size_t distance = offset - at;
  return fileAt + (packed ? distance / 3 * 4 + distance % 3 : distance);
}

void PlaceMap::add(std::size_t at, std::size_t fileAt, bool packed) {
  if (!stretches.empty() && stretches.back().packed == packed && stretches.back().inFile(at) == fileAt) return;
  stretches.push_back({at, fileAt, packed});
}

std::size_t PlaceMap::inFile(std::size_t at) const {
  const auto behind = std::upper_bound(stretches.begin(), stretches.end(), at,
                                       [](std::size_t offset, const Stretch &s) { return offset < s.at; });
  return behind == stretches.begin() ? at : std::prev(behind)->inFile(at);
}

LineIndex::LineIndex(std::string_view all) : text(all) {
  std::size_t count = 0;
  for (std::size_t at = 0; at <= text.size(); at += step) {
    breaks.push_back(count);
    count += countBreaks(text.substr(at, step));
  }
}

LineAndColumn LineIndex::at(std::size_t offset) const {
  offset = std::min(offset, text.size());
  const std::size_t known = offset / step;
  const std::size_t line = breaks[known] + countBreaks(text.substr(known * step, offset - known * step));
  const std::size_t lastBreak = offset == 0 ? std::string_view::npos : text.rfind('\n', offset - 1);
  const std::size_t column = lastBreak == std::string_view::npos ? offset : offset - lastBreak - 1;
  return {static_cast<std::uint32_t>(line + 1), static_cast<std::uint32_t>(column + 1)};
}

} // namespace cli
