#include "Engines.h"
#include "rtxPrint.h"
#include "rtxText.h"

#include <string.h>

namespace ims {

const char *enumText(const EnumSchema &type, uint32_t code) {
  auto narrow = static_cast<uint16_t>(code);
  return narrow < type.count ? type.rows[type.rows[narrow].rowOfCode].text : "_UNKNOWN_";
}

int enumCode(const EnumSchema &type, const char *text, size_t length, uint16_t *code) {
  int row = rtxLookupEnum(text, text ? length : 0, type.rows, type.count);
  if (row < 0) return row;
  if (code) *code = type.rows[row].code;
  return STATUS_OK;
}

int enumCodeOfText(const EnumSchema &type, const char *text, uint16_t *code) {
  return text ? enumCode(type, text, strlen(text), code) : int{STATUS_ENUM_NOT_FOUND};
}

int printEnum(const char *name, const EnumSchema &type, uint32_t code) {
  return rtxPrintCharStr(name, enumText(type, code));
}

} // namespace ims
