// Documents in other encodings, for quoting: places in them are given in their UTF-8 form.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace cli {

// The UTF-8 form of a document that is encoded as its first bytes say, without a byte order mark; as far as it can be
// converted. Nothing if the encoding is not known.
std::optional<std::string> toUtf8(std::string_view document);

// Where places in the UTF-8 form of a document stand in the document itself; without those that cannot be told.
std::map<std::size_t, std::size_t> fromUtf8(std::string_view document, const std::set<std::size_t> &offsets);

} // namespace cli
