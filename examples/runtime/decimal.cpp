#include "decimal.h"

#include "characters.h"
#include "rtxMemory.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>

namespace tiny {

namespace {

// The shortest digits of a positive number, and the power of ten of the first one. What the locale puts between them
// is left out.
struct Digits {
  char text[20];
  size_t count = 0;
  int exponent = 0;

  explicit Digits(double value) {
    char scientific[64];
    for (int behindPoint = 0; behindPoint <= 17; ++behindPoint) {
      snprintf(scientific, sizeof scientific, "%.*e", behindPoint, value);
      if (strtod(scientific, nullptr) == value) break;
    }
    const char *at = scientific;
    for (; *at != 'e'; ++at) {
      if (isDigit(*at)) text[count++] = *at;
    }
    exponent = static_cast<int>(strtol(at + 1, nullptr, 10));
    while (count > 1 && text[count - 1] == '0')
      --count;
  }
};

} // namespace

size_t writeDecimal(double value, char (&out)[decimalSize]) {
  if (!isfinite(value)) return 0;
  size_t length = 0;
  if (value < 0) out[length++] = '-';
  if (value == 0) return out[length] = '0', length + 1;
  const Digits digits(fabs(value));
  int place = digits.exponent < 0 ? 0 : digits.exponent; // the power of ten that is written next
  const int last = digits.exponent - static_cast<int>(digits.count) + 1;
  for (; place >= 0 || place >= last; --place) {
    if (place == -1) out[length++] = '.';
    const int index = digits.exponent - place;
    out[length++] = index < 0 || index >= static_cast<int>(digits.count) ? '0' : digits.text[index];
  }
  return length;
}

// The C library reads "12.5" as the locale has it, but "125e-1" the same everywhere.
int readDecimal(RuntimeContext *ctx, std::string_view text, double &value) {
  text = trimmed(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  char *digits = static_cast<char *>(rtxMemHeapAlloc(ctx, text.size() + 32));
  if (!digits) return STATUS_NO_MEMORY;
  size_t count = 0;
  size_t behindPoint = 0;
  bool pointSeen = false;
  bool valid = true;
  for (const char c : text) {
    valid = valid && (isDigit(c) || (c == '.' && !pointSeen));
    if (c == '.') pointSeen = true;
    if (!isDigit(c)) continue;
    digits[count++] = c;
    if (pointSeen) ++behindPoint;
  }
  double number = HUGE_VAL;
  if (valid && count > 0) {
    snprintf(digits + count, 32, "e-%zu", behindPoint);
    number = strtod(digits, nullptr);
  }
  rtxMemHeapFreePtr(ctx, digits);
  if (!isfinite(number)) return STATUS_INVALID_LEXICAL_FORM; // or more than any double
  value = negative && number != 0 ? -number : number;
  return 0;
}

} // namespace tiny
