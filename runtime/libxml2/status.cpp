#include "status.h"

#include "rtxStatus.h"

namespace rt {

namespace {

constexpr StatusWording wordings[] = {
    {STATUS_OK, "success", "", 0},
    {STATUS_BUFFER_OVERFLOW, "output buffer is full", "", 0},
    {STATUS_ROOT_MISMATCH, "wrong element name", ": expected <$1>, found <$2>", 2},
    {STATUS_ENUM_NOT_FOUND, "not a value of the enumeration", ": \"$1\"", 1},
    {STATUS_INVALID_CHOICE, "selector names no alternative", ": $1", 1},
    {STATUS_NO_MEMORY, "out of memory", "", 0},
    {STATUS_CONSTRAINT_VIOLATION, "value breaks a constraint of the schema", ": $1 = $2", 2},
    {STATUS_READER_FAILED, "no document to read", "", 0},
    {STATUS_UNKNOWN_ATTRIBUTE, "unknown attribute", " \"$2\"[ in $1]", 2},
    {STATUS_UNEXPECTED_ELEMENT, "unexpected element", " <$1>", 1},
    {STATUS_INVALID_CONTENT, "invalid content", " \"$1\"[ of <$3>][ in $2]", 3},
    {STATUS_INVALID_ATTRIBUTE, "invalid value of attribute", " \"$2\"[ in $1]", 2},
    {STATUS_NOT_SUPPORTED, "validation is not offered for this document", "", 0},
    {STATUS_INVALID_LEXICAL_FORM, "text does not have the form of its datatype", "", 0},
    {STATUS_INVALID_UTF8, "text that is not UTF-8 or that XML cannot carry", "", 0},
    {STATUS_MISSING_ATTRIBUTE, "missing attribute", " \"$2\"[ in $1]", 2},
    {STATUS_PARSE_FAILED, "document is not well-formed", ": $1", 1},
    {STATUS_BAD_CONTEXT, "unusable context", ": of contract $1 instead of $2", 2},
    {STATUS_WRITE_FAILED, "nothing can be written here", "", 0},
    {STATUS_LIMIT_EXCEEDED, "limit exceeded", ": $1 = $2", 2},
};

} // namespace

const StatusWording *wordingOf(int status) {
  for (const StatusWording &wording : wordings) {
    if (wording.status == status) return &wording;
  }
  return nullptr;
}

} // namespace rt

const char *rtxStatusText(int status) {
  const rt::StatusWording *wording = rt::wordingOf(status);
  return wording != nullptr ? wording->text : "unknown status";
}
