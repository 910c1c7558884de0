#include "randomText.h"

#include <array>

namespace support {

// splitmix64: small, and defined to the bit.
uint64_t Random::next() {
  uint64_t z = state += 0x9E3779B97F4A7C15u;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

uint32_t Random::below(uint32_t bound) { return static_cast<uint32_t>(next() % bound); }

std::string randomText(Random &random, uint32_t maxCharacters) {
  constexpr std::array pieces = {"a",
                                 "Z",
                                 "0",
                                 "<",
                                 ">",
                                 "&",
                                 "\"",
                                 "'",
                                 "\r",
                                 "\n",
                                 "\r\n",
                                 "\t",
                                 " ",
                                 "  ",
                                 "]]>",
                                 "]]",
                                 "]>",
                                 "]",
                                 "]]]]>",
                                 "<![CDATA[",
                                 "&amp;",
                                 "&#13;",
                                 "<b/>",
                                 "-->",
                                 "<?",
                                 "%",
                                 "\x7F",
                                 "\xC2\x85",
                                 "\xC3\xA9",
                                 "\xDF\xBF",
                                 "\xE0\xA0\x80",
                                 "\xE2\x80\xA8",
                                 "\xED\x9F\xBF",
                                 "\xEE\x80\x80",
                                 "\xEF\xBB\xBF",
                                 "\xEF\xBF\xBD",
                                 "\xF0\x90\x80\x80",
                                 "\xF0\x9F\x98\x80",
                                 "\xF4\x8F\xBF\xBD"};
  std::string text;
  for (uint32_t left = random.below(maxCharacters + 1); left != 0; --left)
    text += pieces[random.below(pieces.size())];
  return text;
}

namespace {

std::string escapedText(Random &random) {
  constexpr std::array pieces = {"x", "&lt;", "&amp;", " ", "5", "\xC3\xA9", "'", "\xF0\x9F\x98\x80"};
  std::string text;
  for (uint32_t left = random.below(6); left != 0; --left)
    text += pieces[random.below(pieces.size())];
  return text;
}

std::string foreignElement(Random &random, uint32_t depth, bool top) {
  constexpr std::array names = {"v:mood", "v:place", "v:state", "v:refresh"};
  const std::string name = names[random.below(names.size())];
  std::string element = "<" + name;
  if (top) element += " xmlns:v=\"urn:vendor\"";
  if (random.chance(30)) element += " k=\"" + escapedText(random) + "\"";
  if (random.chance(20)) element += " v:k=\"" + escapedText(random) + "\"";
  std::string content;
  for (uint32_t left = random.below(4); left != 0; --left)
    content += depth < 4 && random.chance(40) ? foreignElement(random, depth + 1, false) : escapedText(random);
  return content.empty() ? element + "/>" : element + ">" + content + "</" + name + ">";
}

} // namespace

std::string randomForeignElement(Random &random) { return foreignElement(random, 0, true); }

std::string randomlyDamaged(Random &random, std::string text) {
  for (uint32_t left = 1 + random.below(3); left != 0; --left) {
    const size_t at = random.below(static_cast<uint32_t>(text.size()));
    switch (random.below(3)) {
    case 0: text[at] = static_cast<char>(random.below(256)); break;
    case 1: text.erase(at, 1 + random.below(5)); break;
    default:
      text.insert(at, text.substr(random.below(static_cast<uint32_t>(text.size())), 1 + random.below(20)));
      break;
    }
  }
  return text;
}

} // namespace support
