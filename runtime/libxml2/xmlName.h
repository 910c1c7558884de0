// Which characters make a name.
#pragma once

#include <stddef.h>

namespace rt {

// Bytes of the character at the beginning of a text that is not empty, if it may stand at the start of a name without
// colons, or anywhere in one; else 0.
size_t nameStart(const char *text, size_t length);
size_t nameCharacter(const char *text, size_t length);

// True for a name without a colon, and for "name" or "prefix:name".
bool isNcName(const char *name, size_t length);
bool isQualifiedName(const char *name, size_t length);

} // namespace rt
