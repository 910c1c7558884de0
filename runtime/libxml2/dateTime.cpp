#include "lexical.h"

namespace rt {

namespace {

// Reads a text from its beginning. Each step returns false where the text has something else.
class Cursor {
public:
  explicit Cursor(const Trimmed &text) : at(text.begin), end(text.end) {}

  bool atEnd() const { return at == end; }
  bool atDigit() const { return at != end && *at >= '0' && *at <= '9'; }

  bool take(char byte) {
    if (at == end || *at != byte) return false;
    at++;
    return true;
  }

  bool takeDigit(unsigned &digit) {
    if (!atDigit()) return false;
    digit = static_cast<unsigned>(*at++ - '0');
    return true;
  }

  bool takeTwoDigits(unsigned greatest, unsigned &value) {
    unsigned tens;
    unsigned units;
    if (!takeDigit(tens) || !takeDigit(units)) return false;
    value = 10 * tens + units;
    return value <= greatest;
  }

private:
  const char *at;
  const char *end;
};

bool takeYear(Cursor &cursor, int32_t &year) {
  const bool negative = cursor.take('-');
  unsigned count = 0;
  unsigned first = 0;
  unsigned digit;
  int32_t value = 0;
  for (; cursor.takeDigit(digit); count++) {
    if (count == 0) first = digit;
    if (value > (INT32_MAX - static_cast<int32_t>(digit)) / 10) return false;
    value = 10 * value + static_cast<int32_t>(digit);
  }
  if (count < 4 || (count > 4 && first == 0) || value == 0) return false;
  year = negative ? -value : value;
  return true;
}

bool isLeapYear(int32_t year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

unsigned daysOfMonth(int32_t year, unsigned month) {
  if (month == 2) return isLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

bool takeDate(Cursor &cursor, RtxDateTime &value) {
  unsigned month;
  unsigned day;
  if (!takeYear(cursor, value.year)) return false;
  if (!cursor.take('-') || !cursor.takeTwoDigits(12, month) || month == 0) return false;
  if (!cursor.take('-') || !cursor.takeTwoDigits(daysOfMonth(value.year, month), day) || day == 0) return false;
  value.month = static_cast<uint8_t>(month);
  value.day = static_cast<uint8_t>(day);
  return true;
}

bool takeFraction(Cursor &cursor, uint32_t &nanoseconds, bool &isZero) {
  unsigned digit;
  if (!cursor.atDigit()) return false;
  uint32_t unit = 100'000'000;
  while (cursor.takeDigit(digit)) {
    if (digit != 0) isZero = false;
    nanoseconds += digit * unit;
    unit /= 10;
  }
  return true;
}

bool takeZone(Cursor &cursor, RtxDateTime &value) {
  if (cursor.atEnd()) return true;
  value.hasZone = true;
  if (cursor.take('Z')) return true;
  const bool west = cursor.take('-');
  if (!west && !cursor.take('+')) return false;
  unsigned hours;
  unsigned minutes;
  if (!cursor.takeTwoDigits(14, hours) || !cursor.take(':') || !cursor.takeTwoDigits(59, minutes)) return false;
  if (hours == 14 && minutes != 0) return false;
  const int offset = static_cast<int>(60 * hours + minutes);
  value.zoneMinutes = static_cast<int16_t>(west ? -offset : offset);
  return true;
}

bool takeTimeAndZone(Cursor &cursor, RtxDateTime &value) {
  unsigned hour;
  unsigned minute;
  unsigned second;
  if (!cursor.takeTwoDigits(24, hour) || !cursor.take(':')) return false;
  if (!cursor.takeTwoDigits(59, minute) || !cursor.take(':')) return false;
  if (!cursor.takeTwoDigits(59, second)) return false;
  bool fractionIsZero = true;
  if (cursor.take('.') && !takeFraction(cursor, value.nanoseconds, fractionIsZero)) return false;
  if (hour == 24 && (minute != 0 || second != 0 || !fractionIsZero)) return false;
  value.hour = static_cast<uint8_t>(hour);
  value.minute = static_cast<uint8_t>(minute);
  value.second = static_cast<uint8_t>(second);
  return takeZone(cursor, value) && cursor.atEnd();
}

} // namespace

bool parseDateTime(const char *text, size_t length, RtxDateTime &value) {
  Cursor cursor{Trimmed(text, length)};
  RtxDateTime parsed = {};
  if (!takeDate(cursor, parsed) || !cursor.take('T') || !takeTimeAndZone(cursor, parsed)) return false;
  value = parsed;
  return true;
}

bool parseTime(const char *text, size_t length, RtxDateTime &value) {
  Cursor cursor{Trimmed(text, length)};
  RtxDateTime parsed = {};
  if (!takeTimeAndZone(cursor, parsed)) return false;
  value = parsed;
  return true;
}

} // namespace rt
