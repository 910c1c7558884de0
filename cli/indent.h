// A document laid out for reading.
#pragma once

#include <string>

namespace cli {

// Puts each element on a line of its own where nothing but elements stands around it: no character of any element's
// text changes. A document that is not well-formed comes back as it is.
std::string indent(const std::string &document);

} // namespace cli
