// The tables as text, complete down to the offsets, so that no change of theirs goes unseen.
#pragma once

#include "Schema.h"

#include <string>
#include <vector>

namespace frame {

// The documents in their order, then the types and enumerations that they lead to.
std::string dumpTables(const std::vector<const ims::DocumentSchema *> &documents);

} // namespace frame
