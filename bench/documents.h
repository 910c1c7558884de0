// The documents that are measured, and the functions of the codec that go with each.
#pragma once

#include "rtxContext.h"

#include <string>
#include <string_view>
#include <vector>

namespace ims {
struct TypeSchema;
}

namespace bench {

struct Document {
  std::string_view name;
  std::string body;
  unsigned elements; // that a reader has to see
  const ims::TypeSchema *type;
  size_t recordSize;
  int (*decode)(RuntimeContext *ctx, void *record);
  int (*validate)(RuntimeContext *ctx);
  int (*encode)(RuntimeContext *ctx, const void *record);
  int (*release)(RuntimeContext *ctx, void *record);
};

const std::vector<Document> &allDocuments();

// Dialog state of any size: with all that a dialog can have but a session description, and with little.
std::string fullDialogs(unsigned dialogs);
std::string smallDialogs(unsigned dialogs);

} // namespace bench
