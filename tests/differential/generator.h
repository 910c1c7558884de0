// Random bodies: valid ones, and the same with some damage.
#pragma once

#include "body.h"
#include "randomText.h"
#include "vocabulary.h"

namespace differential {

// A body that is valid by the schema and for the library.
Element validBody(support::Random &random, const Vocabulary &vocabulary, const Root &root);

// Changes one thing, which need not make the body invalid.
void damage(support::Random &random, const Vocabulary &vocabulary, Element &root);

} // namespace differential
