// Random values for property tests, the same on every platform for the same seed.
#pragma once

#include <cstdint>
#include <string>

namespace support {

class Random {
public:
  explicit Random(uint64_t seed) : state(seed) {}
  uint64_t next();
  uint32_t below(uint32_t bound); // 0 to bound - 1
  bool chance(uint32_t percent) { return below(100) < percent; }

private:
  uint64_t state;
};

// Up to maxCharacters of what XML can carry: markup, quotes, all white space, "]]>", characters of every length.
std::string randomText(Random &random, uint32_t maxCharacters);

// An element in a namespace of its own, spelled as a capture spells it: double quotes, empty elements as "<x/>", each
// declaration where it is used.
std::string randomForeignElement(Random &random);

// The text with one to three pieces of it changed, removed or doubled.
std::string randomlyDamaged(Random &random, std::string text);

} // namespace support
