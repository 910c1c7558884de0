// The runtime's conversions against an independent library's datatypes of XML Schema, and its texts against the C
// library's decoder and the parser's table of characters. Both must agree on every text. These are all the differences,
// each of them the judge's; what is said of it is what the comparison allows for:
//
// - unsignedInt, unsignedShort: the judge takes no sign. The datatypes are derived from integer, which has one, so that
//   "+5" and "-0" are theirs. It is asked about the text without its sign; "-5" is no value.
// - decimal: the judge has room for 24 digits, leading zeros not counted, and not always for the last. The datatype has
//   no such bound; we take any number of digits.
// - dateTime: the judge's years have 64 bits and ours 32. A year beyond them is refused.
// - dateTime, time: the judge's seconds are a double, so that 59.9999999999999999 are 60, which it refuses. It is asked
//   with nine digits at most behind 59 seconds.
// - All of these and boolean and hexBinary: white space at the ends does not count. The judge skips it only on demand
//   and is asked about the text without it.
// - UTF-8: the judge decodes beyond U+10FFFF, where UTF-8 ends.
#include "check.h"
#include "input.h"
#include "rtx.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iconv.h>
#include <libxml/parserInternals.h>
#include <libxml/schemasInternals.h>
#include <libxml/xmlschemastypes.h>
#include <string>
#include <vector>

using namespace fuzz;

namespace {

bool isOf(xmlSchemaValType kind, const std::string &text) {
  static const bool ready = (xmlSchemaInitTypes(), true);
  xmlSchemaValPtr value = nullptr;
  const int status = xmlSchemaValPredefTypeNodeNoNorm(ready ? xmlSchemaGetBuiltInType(kind) : nullptr,
                                                      reinterpret_cast<const xmlChar *>(text.c_str()), &value, nullptr);
  xmlSchemaFreeValue(value);
  return status == 0;
}

std::string trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r\n");
  if (first == text.npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1));
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isUnsigned(xmlSchemaValType kind, const std::string &text) {
  const bool sign = text.size() > 1 && (text[0] == '+' || text[0] == '-') && isDigit(text[1]);
  if (!sign) return isOf(kind, text);
  const bool negative = text[0] == '-' && text.find_first_not_of("-0") != text.npos;
  return !negative && isOf(kind, text.substr(1));
}

// Digits from the first one that is not a leading zero.
size_t significantDigits(const std::string &text) {
  const size_t first = text.find_first_not_of("+-0");
  if (first == text.npos) return 0;
  return static_cast<size_t>(std::count_if(text.begin() + static_cast<ptrdiff_t>(first), text.end(), isDigit));
}

bool isLongDecimal(const std::string &text) {
  const bool sign = !text.empty() && (text[0] == '+' || text[0] == '-');
  const bool onlyDigits = text.find_first_not_of("0123456789.", sign ? 1 : 0) == text.npos;
  return onlyDigits && std::count(text.begin(), text.end(), '.') <= 1 && significantDigits(text) >= 24;
}

bool isFarYear(const std::string &text) {
  const long long year = std::strtoll(text.c_str(), nullptr, 10);
  return year > INT32_MAX || year < -INT32_MAX;
}

// With nine digits of a fraction behind 59 seconds.
std::string withShortFraction(std::string text) {
  const size_t at = text.find(":59.");
  if (at == text.npos) return text;
  const size_t first = at + 4;
  const size_t behind = std::min(text.find_first_not_of("0123456789", first), text.size());
  if (behind > first + 9) text.erase(first + 9, behind - first - 9);
  return text;
}

void agree(bool ours, bool theirs, const char *type, const std::string &text) {
  const auto told = [&] { return type + (": " + text); };
  require(theirs || !ours, "a conversion takes only what its datatype has", told);
  require(ours || !theirs, "a conversion takes all that its datatype has", told);
}

// The parts of a date and time, or of a time alone, as the text has them.
std::string written(const RtxDateTime &value, bool withDate) {
  char text[64];
  std::string made;
  if (withDate) {
    const int years = value.year < 0 ? -value.year : value.year;
    std::snprintf(text, sizeof text, "%s%04d-%02u-%02uT", value.year < 0 ? "-" : "", years, value.month, value.day);
    made = text;
  }
  std::snprintf(text, sizeof text, "%02u:%02u:%02u", value.hour, value.minute, value.second);
  return made + text;
}

std::string fractionOf(const RtxDateTime &value) {
  char text[16];
  std::snprintf(text, sizeof text, "%09u", value.nanoseconds);
  return text;
}

std::string zoneOf(const RtxDateTime &value) {
  if (!value.hasZone) return {};
  char text[16];
  const unsigned minutes = static_cast<unsigned>(std::abs(value.zoneMinutes));
  std::snprintf(text, sizeof text, "%c%02u:%02u", value.zoneMinutes < 0 ? '-' : '+', minutes / 60, minutes % 60);
  return text;
}

void requireParts(const RtxDateTime &value, bool withDate, const std::string &text) {
  const auto told = [&] { return text; };
  const std::string whole = written(value, withDate);
  require(text.compare(0, whole.size(), whole) == 0, "a date and time is the text's", told);
  std::string rest = text.substr(whole.size());
  std::string digits;
  if (rest.starts_with('.')) {
    digits = rest.substr(1, rest.find_first_not_of("0123456789", 1) - 1);
    rest.erase(0, 1 + digits.size());
  }
  digits.resize(9, '0');
  require(fractionOf(value) == digits, "a fraction of a second is the text's", told);
  if (rest == "Z" || rest == "-00:00") rest = "+00:00";
  require(zoneOf(value) == rest, "a time zone is the text's", told);
}

// The same in pieces, which end where a text has an odd byte.
void requireSameInPieces(RuntimeContext *ctx, const std::string &text, bool good, const RtxHexBinary &value) {
  const auto told = [&] { return text; };
  RtXmlHexState state = {};
  RtxMemBuf bytes = {};
  bytes.context = ctx;
  bool taken = true;
  for (size_t at = 0; at < text.size() && taken;) {
    const size_t length = std::min<size_t>(text.size() - at, 1 + (static_cast<unsigned char>(text[at]) & 3));
    const std::vector<char> piece(text.begin() + static_cast<ptrdiff_t>(at),
                                  text.begin() + static_cast<ptrdiff_t>(at + length));
    taken = rtXmlDecHexBinary(ctx, piece.data(), piece.size(), &state, &bytes) == 0;
    at += length;
  }
  require((taken && state.pending == 0) == good, "how hexadecimal text is cut does not change whether it is taken",
          told);
  if (good)
    require(bytes.used - bytes.start == value.length &&
                (value.length == 0 || std::memcmp(bytes.data + bytes.start, value.bytes, value.length) == 0),
            "how hexadecimal text is cut does not change its bytes", told);
  rtxMemHeapFreePtr(ctx, bytes.data);
}

enum class Utf8 {
  broken,
  unfit, // for XML
  fit
};

// Decoded by the C library, each character looked up in the parser's table.
Utf8 judgeText(const std::string &text) {
  static const iconv_t decoder = iconv_open("UCS-4LE", "UTF-8");
  char characters[4 * 256];
  char *in = const_cast<char *>(text.data());
  char *out = characters;
  size_t inLeft = text.size();
  size_t outLeft = sizeof characters;
  iconv(decoder, nullptr, nullptr, nullptr, nullptr);
  if (iconv(decoder, &in, &inLeft, &out, &outLeft) != 0) return Utf8::broken;
  bool fit = true;
  for (const char *at = characters; at != out; at += 4) {
    const auto byte = [at](int i) { return static_cast<unsigned>(static_cast<unsigned char>(at[i])); };
    const unsigned character = byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
    if (character > 0x10FFFF) return Utf8::broken; // which the library decodes
    fit = fit && IS_CHAR(character);
  }
  return fit ? Utf8::fit : Utf8::unfit;
}

} // namespace

// The first byte chooses the conversion.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static RuntimeContext *const ctx = rtxContextCreate(nullptr);
  if (size == 0 || size > 200 || std::memchr(data, 0, size) != nullptr) return 0;
  const uint8_t kind = data[0];
  const std::string whole(reinterpret_cast<const char *>(data) + 1, size - 1);
  const std::string text = trimmed(whole);
  const auto told = [&] { return text; };
  const std::vector<char> exact(whole.begin(), whole.end()); // no NUL behind it
  rtxContextReset(ctx);
  rtxInitContextBuffer(ctx, exact.data(), exact.size());
  switch (kind % 8) {
  case 0: {
    uint32_t value = 0;
    const bool good = rtXmlDecUInt(ctx, &value) == 0;
    agree(good, isUnsigned(XML_SCHEMAS_UINT, text), "unsignedInt", text);
    if (good) require(value == std::strtoul(text.c_str(), nullptr, 10), "a number is the text's", told);
    break;
  }
  case 1: {
    uint16_t value = 0;
    const bool good = rtXmlDecUInt16(ctx, &value) == 0;
    agree(good, isUnsigned(XML_SCHEMAS_USHORT, text), "unsignedShort", text);
    if (good) require(value == std::strtoul(text.c_str(), nullptr, 10), "a short number is the text's", told);
    break;
  }
  case 2: {
    bool value = false;
    const bool good = rtXmlDecBool(ctx, &value) == 0;
    agree(good, isOf(XML_SCHEMAS_BOOLEAN, text), "boolean", text);
    if (good) require(value == (text == "true" || text == "1"), "a boolean is the text's", told);
    break;
  }
  case 3: {
    double value = 0;
    const bool good = rtXmlDecDecimal(ctx, &value) == 0;
    agree(good, isOf(XML_SCHEMAS_DECIMAL, text) || isLongDecimal(text), "decimal", text);
    if (good) require(value == std::strtod(text.c_str(), nullptr), "a decimal is the nearest to the text", told);
    break;
  }
  case 4: {
    RtxDateTime value = {};
    const bool good = rtXmlDecDateTime(ctx, &value) == 0;
    agree(good, isOf(XML_SCHEMAS_DATETIME, withShortFraction(text)) && !isFarYear(text), "dateTime", text);
    if (good) requireParts(value, true, text);
    break;
  }
  case 5: {
    RtxDateTime value = {};
    const bool good = rtXmlDecTime(ctx, &value) == 0;
    agree(good, isOf(XML_SCHEMAS_TIME, withShortFraction(text)), "time", text);
    if (good) requireParts(value, false, text);
    break;
  }
  case 6: {
    RtxHexBinary value = {};
    const bool good = rtXmlDecDynHexStr(ctx, &value) == 0;
    agree(good, isOf(XML_SCHEMAS_HEXBINARY, text), "hexBinary", text);
    if (good) {
      require(value.length * 2 == text.size(), "two digits are a byte", told);
      for (uint32_t i = 0; i < value.length; ++i)
        require(value.bytes[i] == std::strtoul(text.substr(2 * i, 2).c_str(), nullptr, 16), "bytes are the text's",
                told);
    }
    requireSameInPieces(ctx, whole, good, value);
    rtxMemHeapFreePtr(ctx, value.bytes);
    break;
  }
  case 7: {
    RtxXmlString value = {};
    const bool good = rtXmlDecXmlStr(ctx, &value) == 0;
    const Utf8 verdict = judgeText(whole);
    agree(good, verdict == Utf8::fit, "text", whole);
    agree(rtxValidateUTF8(ctx, whole.c_str()) == 0, verdict != Utf8::broken, "UTF-8", whole);
    if (good) require(whole == value.value, "a text is as it was", told);
    rtxMemHeapFreePtr(ctx, value.value);
    break;
  }
  }
  RtxHeapStats stats;
  rtxHeapStats(ctx, &stats);
  require(stats.blocks == 0, "nothing stays behind on the heap");
  return 0;
}
