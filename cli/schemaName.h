// What the members of records are called in documents.
#pragma once

#include "Schema.h"

#include <string_view>

namespace cli {

// The name of an element or an attribute; empty for what has none, such as the text of the element itself.
std::string_view schemaName(const ims::TypeSchema &type, const ims::Field &field);

} // namespace cli
