// Every document of the library with a body, and its functions as the library exports them, whatever its value is.
#pragma once

#include "rtxTypes.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace faults {

struct Sample {
  const char *name;
  std::string_view body;
  size_t valueSize; // of a record, of an RtxXmlString or RtxHexBinary, or of a code
  int (*decode)(RuntimeContext *ctx, void *value);
  int (*validate)(RuntimeContext *ctx);
  int (*encode)(RuntimeContext *ctx, const void *value);
  void (*print)(const void *value);
  // Gives back all that a value holds, also what the library's own release function leaves to the context.
  void (*discard)(RuntimeContext *ctx, void *value);
};

std::span<const Sample> allSamples();
// The two families. A context takes the namespaces of its first encoding, and then writes documents of that family
// only.
std::span<const Sample> imsSamples();
std::span<const Sample> debugSamples();

// The value of a document. Zeroed at first; gives back all that it holds.
class Value {
public:
  Value(RuntimeContext *context, const Sample &document);
  ~Value();
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  operator void *() const { return storage.get(); }
  bool isUntouched() const; // all zero, as at first

private:
  size_t words() const { return sample.valueSize / sizeof(uint64_t) + 1; }

  RuntimeContext *ctx;
  const Sample &sample;
  std::unique_ptr<uint64_t[]> storage; // no member of a record needs more alignment
};

} // namespace faults
