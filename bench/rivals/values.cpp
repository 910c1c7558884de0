#include "rival.h"

#include <charconv>

namespace bench {

namespace {

Text trimmed(Text text) {
  constexpr Text space = " \t\r\n";
  size_t first = text.find_first_not_of(space);
  if (first == Text::npos) return {};
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

uint8_t digit(char character) {
  uint8_t value = 0;
  auto [end, error] = std::from_chars(&character, &character + 1, value, 16);
  if (error != std::errc() || end == &character) refuse("no hexadecimal digit");
  return value;
}

} // namespace

template <class Number> Number numberFrom(Text text) {
  text = trimmed(text);
  Number value = {};
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) refuse("no number");
  return value;
}
template uint32_t numberFrom<uint32_t>(Text);
template uint16_t numberFrom<uint16_t>(Text);
template double numberFrom<double>(Text);

bool boolFrom(Text text) {
  text = trimmed(text);
  if (text == "true" || text == "1") return true;
  if (text == "false" || text == "0") return false;
  refuse("no boolean");
}

Text bytesFrom(Text digits, Arena &storage) {
  digits = trimmed(digits);
  if (digits.size() % 2 != 0) refuse("half a byte");
  auto *bytes = static_cast<char *>(storage.take(digits.size() / 2));
  for (size_t i = 0; i < digits.size() / 2; ++i)
    bytes[i] = static_cast<char>(digit(digits[2 * i]) << 4 | digit(digits[2 * i + 1]));
  return {bytes, digits.size() / 2};
}

} // namespace bench
