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

// One member of a record, and one item of a member that is a list.
Json memberJson(const ims::Field &field, const void *record);
Json itemJson(const ims::Field &list, const void *item);

// The value of a document, a record or a simple one.
Json documentJson(const ims::DocumentSchema &document, const void *value);

// As text in one line. Bytes that are not UTF-8 are replaced, so that nothing can fail.
std::string jsonLine(const Json &value);

// Prints to the standard output, laid out for reading.
void printJson(const Json &value);

} // namespace cli
