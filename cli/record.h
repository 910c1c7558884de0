// The value of one document, in storage of its own.
#pragma once

#include "Schema.h"

#include <cstddef>
#include <vector>

namespace cli {

// Filled from the context's input or by its owner. What it points at belongs to the context's heap and is given back
// with it, so it must go before the context is reset.
class Record {
public:
  Record(RuntimeContext *ctx, const ims::DocumentSchema &kind);
  ~Record();
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  // Each returns the codec's status; what was wrong stands on the context.
  int decode();
  int encode() const; // to the context's output

  // Prints in the library's own form, each line beginning with the root's name.
  void print() const;

  const void *value() const { return storage.data(); }
  void *value() { return storage.data(); }

private:
  RuntimeContext *context;
  const ims::DocumentSchema &document;
  std::vector<std::max_align_t> storage; // all zero: members that a document leaves out have no value of their own
};

} // namespace cli
