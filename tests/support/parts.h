// What a record comes to where it is printed or written, by its presence bits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// What stands for a member. Bit 0: always.
struct Part {
  uint32_t bit;
  std::string text;
};
using Parts = std::vector<Part>;

// The parts of a record with these presence bits.
std::string present(const Parts &parts, uint32_t m);
uint32_t allBits(const Parts &parts);

// Where the type has such bits.
template <typename T> void setPresence(T &record, uint32_t m) {
  if constexpr (requires { record.m; }) record.m = m;
}

std::string replaced(std::string text, std::string_view what, std::string_view with);

} // namespace support
