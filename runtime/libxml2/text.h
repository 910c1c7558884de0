// UTF-8 texts.
#pragma once

#include <stddef.h>

namespace rt {

// Bytes of the well-formed UTF-8 sequence at the beginning of a text that is not empty; 0 if there is none.
size_t utf8Sequence(const char *text, size_t length);

// True if the text is well-formed UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF.
bool validUtf8(const char *text, size_t length);

} // namespace rt
