#include "lexical.h"

#include <charconv>
#include <string.h>

namespace rt {

namespace {

bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

} // namespace

Trimmed::Trimmed(const char *text, size_t length) : begin(text), end(text + length) {
  while (begin != end && isXmlSpace(*begin))
    begin++;
  while (begin != end && isXmlSpace(end[-1]))
    end--;
}

bool parseUnsigned(const char *text, size_t length, uint32_t limit, uint32_t &value) {
  const Trimmed digits(text, length);
  const char *p = digits.begin;
  bool negative = false;
  if (p != digits.end && (*p == '+' || *p == '-')) negative = *p++ == '-';
  if (p == digits.end) return false;
  uint32_t number = 0;
  for (; p != digits.end; p++) {
    if (!isDigit(*p)) return false;
    const uint32_t digit = static_cast<uint32_t>(*p - '0');
    if (number > limit / 10 || digit > limit - number * 10) return false;
    number = number * 10 + digit;
  }
  if (negative && number != 0) return false;
  value = number;
  return true;
}

bool parseBoolean(const char *text, size_t length, bool &value) {
  const Trimmed word(text, length);
  const size_t size = static_cast<size_t>(word.end - word.begin);
  const bool isTrue = (size == 4 && memcmp(word.begin, "true", 4) == 0) || (size == 1 && *word.begin == '1');
  const bool isFalse = (size == 5 && memcmp(word.begin, "false", 5) == 0) || (size == 1 && *word.begin == '0');
  if (!isTrue && !isFalse) return false;
  value = isTrue;
  return true;
}

bool parseDecimal(const char *text, size_t length, double &value) {
  const Trimmed number(text, length);
  const char *p = number.begin;
  if (p != number.end && *p == '+') p++;
  const char *start = p; // the conversion knows "-", but not "+"
  if (start == number.begin && p != number.end && *p == '-') p++;
  bool digitSeen = false;
  bool pointSeen = false;
  bool wholePartIsZero = true;
  for (; p != number.end; p++) {
    if (*p == '.' && !pointSeen) {
      pointSeen = true;
    } else if (isDigit(*p)) {
      digitSeen = true;
      if (!pointSeen && *p != '0') wholePartIsZero = false;
    } else {
      return false;
    }
  }
  if (!digitSeen) return false;
  double converted = 0;
  const std::from_chars_result result = std::from_chars(start, number.end, converted, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    if (!wholePartIsZero) return false;
    converted = 0;
  }
  value = converted == 0 ? 0 : converted; // no negative zero
  return true;
}

size_t collapseSpace(char *text, size_t length) {
  size_t used = 0;
  while (used<length &&static_cast<unsigned char>(text[used])> ' ')
    used++; // most texts have no white space
  bool pendingBlank = false;
  for (size_t i = used; i < length; i++) {
    if (isXmlSpace(text[i])) {
      pendingBlank = used != 0;
      continue;
    }
    if (pendingBlank) {
      if (text[used] != ' ') text[used] = ' ';
      used++;
      pendingBlank = false;
    }
    if (used != i) text[used] = text[i];
    used++;
  }
  return used;
}

} // namespace rt
