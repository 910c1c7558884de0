// Records as JSON, by their tables.
#pragma once

#include "Schema.h"

#include <nlohmann/json.hpp>
#include <string>

namespace cli {

using Json = nlohmann::ordered_json;

// An object with the record's members. An absent optional member without a default is left out, a text that is not set
// is null, lists are arrays, a choice is {"t": selector, alternative: value}, bytes are hexadecimal digits.
Json recordJson(const ims::TypeSchema &type, const void *record);

// The value of a document, a record or a simple one.
Json documentJson(const ims::DocumentSchema &document, const void *value);

// Prints to the standard output. Bytes that are not UTF-8 are replaced, so that nothing can fail.
void printJson(const Json &value);

} // namespace cli
