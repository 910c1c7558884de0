// The runtime's conversions against the datatypes of the parser's own XML Schema library.
#include "check.h"
#include "input.h"
#include "rtx.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <libxml/schemasInternals.h>
#include <libxml/xmlschemastypes.h>
#include <string>

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

// The judge takes no sign before an unsigned number, though its datatype has one.
std::string withoutSign(const std::string &text) {
  const bool sign = text.size() > 1 && (text[0] == '+' || text[0] == '-') && text[1] >= '0' && text[1] <= '9';
  if (!sign || (text[0] == '-' && text.find_first_not_of("-0") != text.npos)) return text;
  return text.substr(1);
}

size_t digitsOf(const std::string &text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }));
}

// What our conversion may say otherwise than the judge, and why.
enum class Verdict {
  same,     // both must agree
  stricter, // we may refuse what the judge takes
  laxer     // we may take what the judge refuses
};

void compare(bool ours, bool theirs, Verdict verdict, const char *type, const std::string &text) {
  if (ours == theirs) return;
  if (ours && verdict == Verdict::laxer) return;
  if (theirs && verdict == Verdict::stricter) return;
  require(false,
          ours ? "a conversion takes only what its datatype has" : "a conversion takes all that its datatype has",
          type + (": " + text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static RuntimeContext *const ctx = rtxContextCreate(nullptr);
  if (size == 0 || size > 200 || std::memchr(data, 0, size) != nullptr) return 0;
  const uint8_t kind = data[0];
  const std::string whole(reinterpret_cast<const char *>(data) + 1, size - 1);
  const std::string text = trimmed(whole);
  rtxInitContextBuffer(ctx, whole.data(), whole.size());
  switch (kind % 6) {
  case 0: {
    uint32_t value = 0;
    const bool good = rtXmlDecUInt(ctx, &value) == 0;
    compare(good, isOf(XML_SCHEMAS_UINT, withoutSign(text)), Verdict::same, "unsignedInt", text);
    if (good) require(value == std::strtoul(text.c_str(), nullptr, 10), "the number is the text's", text);
    break;
  }
  case 1: {
    uint16_t value = 0;
    const bool good = rtXmlDecUInt16(ctx, &value) == 0;
    compare(good, isOf(XML_SCHEMAS_USHORT, withoutSign(text)), Verdict::same, "unsignedShort", text);
    if (good) require(value == std::strtoul(text.c_str(), nullptr, 10), "the number is the text's", text);
    break;
  }
  case 2: {
    bool value = false;
    const bool good = rtXmlDecBool(ctx, &value) == 0;
    compare(good, isOf(XML_SCHEMAS_BOOLEAN, text), Verdict::same, "boolean", text);
    if (good) require(value == (text == "true" || text == "1"), "the boolean is the text's", text);
    break;
  }
  case 3: {
    double value = 0;
    const bool good = rtXmlDecDecimal(ctx, &value) == 0;
    // The judge has room for 24 digits, and not always for the last.
    compare(good, isOf(XML_SCHEMAS_DECIMAL, text), digitsOf(text) >= 24 ? Verdict::laxer : Verdict::same, "decimal",
            text);
    if (good) require(value == std::strtod(text.c_str(), nullptr), "the number is the nearest to the text", text);
    break;
  }
  case 4: {
    RtxDateTime value = {};
    const bool good = rtXmlDecDateTime(ctx, &value) == 0;
    // Our years have 32 bits.
    compare(good, isOf(XML_SCHEMAS_DATETIME, text), text.find('-', 1) >= 10 ? Verdict::stricter : Verdict::same,
            "dateTime", text);
    break;
  }
  case 5: {
    RtxHexBinary value = {};
    const bool good = rtXmlDecDynHexStr(ctx, &value) == 0;
    compare(good, isOf(XML_SCHEMAS_HEXBINARY, text), Verdict::same, "hexBinary", text);
    if (good) {
      require(value.length * 2 == text.size(), "two digits are a byte", text);
      for (uint32_t i = 0; i < value.length; ++i)
        require(value.bytes[i] == std::strtoul(text.substr(2 * i, 2).c_str(), nullptr, 16), "the bytes are the text's",
                text);
      rtxMemHeapFreePtr(ctx, value.bytes);
    }
    break;
  }
  }
  rtxInitContextBuffer(ctx, nullptr, 0);
  return 0;
}
