// The lexical spaces of XML Schema's datatypes: conversions of a text that needs no NUL behind it. None depends on the
// locale or touches its result unless it returns true. White space at both ends is skipped.
#pragma once

#include "rtXmlDecode.h"

namespace rt {

constexpr bool isXmlSpace(char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }

// A text without the white space at its ends.
struct Trimmed {
  Trimmed(const char *text, size_t length);

  const char *begin;
  const char *end;
};

// Digits behind an optional sign; "-" only before zero. Greater numbers than limit are refused.
bool parseUnsigned(const char *text, size_t length, uint32_t limit, uint32_t &value);

bool parseBoolean(const char *text, size_t length, bool &value);

// The nearest double. A number beyond the range of double is refused, one too small to tell from zero is zero.
bool parseDecimal(const char *text, size_t length, double &value);

// Years need four digits at least, are never 0 and may be negative; only those that fit into 32 bits are taken. The
// end of a day stays hour 24. A leap year is found from the year as it is written, before the common era as well.
bool parseDateTime(const char *text, size_t length, RtxDateTime &value);
bool parseTime(const char *text, size_t length, RtxDateTime &value);

// Converts a piece of hexadecimal text into bytes, which has room for length / 2 + 1 of them. Takes the
// text up to its end or to the first byte that is wrong; true if that is the end. Written bytes are counted also then.
bool parseHexPiece(const char *text, size_t length, RtXmlHexState &state, uint8_t *bytes, size_t &written);

// Joins each run of white space into one blank, and none at the ends. Returns the new length. Bytes that are right
// already are not written.
size_t collapseSpace(char *text, size_t length);

} // namespace rt
