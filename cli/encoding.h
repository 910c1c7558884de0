// Records as the documents that the codec writes.
#pragma once

#include "record.h"
#include "session.h"

#include <optional>
#include <string>

namespace cli {

// Encodes a record of the session's context. Nothing if that fails: what was written until then is no document. The
// context then has the errors of this alone.
std::optional<std::string> encode(const Session &session, const ims::DocumentSchema &kind, const Record &record);

} // namespace cli
