// Which elements of a body the library takes for foreign ones, by the rules of its lookup.
#pragma once

#include "vocabulary.h"

#include <libxml/tree.h>
#include <string>

namespace differential {

std::string text(const xmlChar *chars); // empty for null
std::string uriOf(const xmlNs *ns);     // empty for none

// Whether the library's lookup takes this element for a foreign one; nothing inside such an element counts. For an
// element of a body that the library accepts, and that is not itself inside a foreign one.
bool isForeign(const Vocabulary &vocabulary, const xmlNode &element);

bool isInsideForeign(const Vocabulary &vocabulary, const xmlNode &element);

} // namespace differential
