// Foreign elements by what they mean, however they are written.
#pragma once

#include <string>

namespace cli {

// The same text for elements that differ only in prefixes, the order of attributes, quoting, comments and processing
// instructions. What is no element comes back as it is.
std::string meaningOf(const std::string &element);

} // namespace cli
