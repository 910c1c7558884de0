// Documents for the tool in place of the library's own.
#include "Awkward.h"
#include "Catalogue.h"

namespace ims {

DocumentRange allDocuments() {
  const auto documents = awkward::awkwardDocuments();
  return {documents.data(), documents.data() + documents.size()};
}

} // namespace ims
