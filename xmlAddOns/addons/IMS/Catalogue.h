// All documents of the library, for tools and tests that walk its tables. The engines do not need it.
#pragma once

#include "Schema.h"

namespace ims {

struct DocumentRange {
  const DocumentSchema *const *first;
  const DocumentSchema *const *last;
  const DocumentSchema *const *begin() const { return first; }
  const DocumentSchema *const *end() const { return last; }
};

DocumentRange allDocuments();

} // namespace ims
