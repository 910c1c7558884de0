// The context that an execution works on, and what it holds.
#pragma once

#include "Schema.h"
#include "input.h"
#include "rtx.h"

#include <memory>
#include <string>

namespace fuzz {

// A context as the input wants it. A plain one is kept from execution to execution, so that what one leaves behind
// meets the next.
class World {
public:
  explicit World(const Input &input);
  World();
  ~World();
  World(const World &) = delete;
  World &operator=(const World &) = delete;

  RuntimeContext *operator->() const { return ctx; }
  operator RuntimeContext *() const { return ctx; } // null if the failing allocation was one of its creation

  // From now on allocations succeed.
  void heal() { failing = 0; }

  // The context reads a good document as if nothing had been. Call it when nothing of the heap is in use.
  void requireUsable();

private:
  static void *allocate(void *self, size_t size);

  RuntimeContext *ctx = nullptr;
  bool kept = false;
  bool small = false; // too small for any document, perhaps
  uint32_t allocations = 0;
  uint32_t failing = 0;
  bool onwards = false;
};

// The value of a document: a record, a text, bytes or a code. Zeroed at first; gives back all that it holds.
class Value {
public:
  Value(RuntimeContext *context, const ims::DocumentSchema &schema);
  ~Value();
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  void *data() const { return storage.get(); }
  std::string printed() const; // by the printers of records, or the text; a null text as an empty one

private:
  RuntimeContext *ctx;
  const ims::DocumentSchema &document;
  std::unique_ptr<std::max_align_t[]> storage;
};

// Sets the body as input and reads it into the value, in pieces of text if the input wants that; the status.
int decode(RuntimeContext *ctx, const Input &input, Value &value);
int validate(RuntimeContext *ctx, const Input &input);

// A failure that the context may tell has a record with its place.
void requireRecord(RuntimeContext *ctx, const Input &input, int status);

// Statuses, parameters and places of all records kept.
std::string errors(RuntimeContext *ctx);

// What a parser that is not ours says of a text.
enum class Xml {
  broken,
  wellFormed, // but for its namespaces
  namespaced
};
Xml judge(std::string_view text);

} // namespace fuzz
