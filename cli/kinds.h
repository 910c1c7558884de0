// The kinds of documents that the codec knows. A kind goes by the local name of its root element.
#pragma once

#include "Schema.h"

#include <string>

namespace cli {

// The kind of this name, or null.
const ims::DocumentSchema *kindNamed(const std::string &name);

// The kind of the context's input, by its root element: one of the root's name and namespace, else one of its name,
// since the codec reads a root whatever its namespace is. Null if there is none; the reason is recorded on the context.
const ims::DocumentSchema *findKind(RuntimeContext *ctx);

// Prints the table of kinds.
void printKinds(bool json);

} // namespace cli
