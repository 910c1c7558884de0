// The runtime's functions that need storage and fail as the fault plan says, in executables linked with
// imscodec_wrap_scarce_runtime.
#pragma once

#include <set>
#include <string_view>

namespace support {

// The names of those that have failed so far.
const std::set<std::string_view> &refusedFunctions();

} // namespace support
