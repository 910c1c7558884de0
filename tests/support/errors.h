// Errors of a context as text that a person can compare.
#pragma once

#include "rtx.h"

#include <string>
#include <vector>

namespace support {

// "-41(bogus)@QxXmlIsComposingSAX:110<QxXmlIsComposingDec:70": status, parameters, and the trail from where the error
// was found outwards. Of a path the last part is shown. Places in the runtime have no line: theirs are no promise.
std::string errorText(const RtxError &error);

// "2:7+40 /a/b": line, column, offset and open elements.
std::string placeText(const RtxError &error);

// The texts of all records kept.
std::vector<std::string> errorTexts(RuntimeContext *ctx);

// The same in one string, "; " between them.
std::string errors(RuntimeContext *ctx);

// The statuses of the records kept.
std::vector<int> statuses(RuntimeContext *ctx);

} // namespace support
