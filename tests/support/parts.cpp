#include "parts.h"

namespace support {

std::string present(const Parts &parts, uint32_t m) {
  std::string all;
  for (const Part &part : parts)
    if (part.bit == 0 || (m & part.bit) != 0) all += part.text;
  return all;
}

uint32_t allBits(const Parts &parts) {
  uint32_t all = 0;
  for (const Part &part : parts)
    all |= part.bit;
  return all;
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
  return text;
}

} // namespace support
