// Dates and times of XML Schema.
#include "context.h"
#include "rtXmlDecode.h"

using namespace tiny;

namespace {

// Reads a text from its front. After the first thing that does not fit, all is false.
struct Cursor {
  std::string_view text;
  bool good = true;

  bool take(char expected) {
    if (text.empty() || text.front() != expected) return false;
    text.remove_prefix(1);
    return true;
  }
  void expect(char expected) { good = good && take(expected); }
  bool atDigit() const { return good && !text.empty() && isDigit(text.front()); }
  int digit() {
    if (!atDigit()) return good = false, 0;
    const int value = text.front() - '0';
    text.remove_prefix(1);
    return value;
  }
  int twoDigits(int least, int greatest) {
    const int tens = digit();
    const int value = 10 * tens + digit();
    good = good && value >= least && value <= greatest;
    return value;
  }
};

int32_t readYear(Cursor &cursor) {
  const bool negative = cursor.take('-');
  const bool leadingZero = !cursor.text.empty() && cursor.text.front() == '0';
  size_t count = 0;
  int64_t year = 0;
  for (; cursor.atDigit(); ++count) {
    year = 10 * year + cursor.digit();
    if (year > INT32_MAX) cursor.good = false;
  }
  if (count < 4 || (count > 4 && leadingZero) || year == 0) cursor.good = false;
  return static_cast<int32_t>(negative ? -year : year);
}

int daysOf(int32_t year, int month) {
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  if (month == 2) return leap ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

void readDate(Cursor &cursor, RtxDateTime &value) {
  value.year = readYear(cursor);
  cursor.expect('-');
  value.month = static_cast<uint8_t>(cursor.twoDigits(1, 12));
  cursor.expect('-');
  value.day = static_cast<uint8_t>(cursor.twoDigits(1, daysOf(value.year, value.month)));
}

// Whether all digits, those dropped too, are 0.
bool readFraction(Cursor &cursor, RtxDateTime &value) {
  bool zero = true;
  uint32_t unit = 100000000;
  do {
    const uint32_t digit = static_cast<uint32_t>(cursor.digit());
    zero = zero && digit == 0;
    value.nanoseconds += digit * unit;
    unit /= 10;
  } while (cursor.atDigit());
  return zero;
}

void readZone(Cursor &cursor, RtxDateTime &value) {
  if (cursor.text.empty()) return;
  value.hasZone = true;
  if (cursor.take('Z')) return;
  const bool west = cursor.take('-');
  if (!west) cursor.expect('+');
  const int hours = cursor.twoDigits(0, 14);
  cursor.expect(':');
  const int minutes = 60 * hours + cursor.twoDigits(0, hours == 14 ? 0 : 59);
  value.zoneMinutes = static_cast<int16_t>(west ? -minutes : minutes);
}

void readTime(Cursor &cursor, RtxDateTime &value) {
  value.hour = static_cast<uint8_t>(cursor.twoDigits(0, 24));
  cursor.expect(':');
  value.minute = static_cast<uint8_t>(cursor.twoDigits(0, 59));
  cursor.expect(':');
  value.second = static_cast<uint8_t>(cursor.twoDigits(0, 59));
  const bool whole = !cursor.take('.') || readFraction(cursor, value);
  if (value.hour == 24 && (value.minute != 0 || value.second != 0 || !whole)) cursor.good = false;
  readZone(cursor, value);
}

int convert(RuntimeContext *ctx, RtxDateTime *value, bool withDate) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  Cursor cursor{trimmed(bufferText(ctx))};
  RtxDateTime read = {};
  if (withDate) {
    readDate(cursor, read);
    cursor.expect('T');
  }
  readTime(cursor, read);
  if (!cursor.good || !cursor.text.empty()) return STATUS_INVALID_LEXICAL_FORM;
  *value = read;
  return 0;
}

} // namespace

int rtXmlDecDateTime(RuntimeContext *ctx, RtxDateTime *value) { return convert(ctx, value, true); }
int rtXmlDecTime(RuntimeContext *ctx, RtxDateTime *value) { return convert(ctx, value, false); }
