// The context that an execution works on, and what it holds.
#pragma once

#include "Schema.h"
#include "input.h"
#include "rtx.h"

#include <memory>
#include <string>
#include <vector>

namespace fuzz {

// Counts what contexts take from the system, and refuses what an input wants refused.
struct Storage {
  size_t alive = 0; // blocks
  uint32_t asked = 0;
  uint32_t failing = 0; // number of the allocation that fails, from 1; 0: none
  bool onwards = false;

  static void *allocate(void *self, size_t size);
  static void release(void *self, void *block);
};

// A context as the input wants it. A plain one is kept from execution to execution, so that what one leaves behind
// meets the next.
class World {
public:
  explicit World(const Input &input);
  World(); // another plain one, which is kept as well
  ~World();
  World(const World &) = delete;
  World &operator=(const World &) = delete;

  RuntimeContext *operator->() const { return ctx; }
  operator RuntimeContext *() const { return ctx; } // null if the failing allocation was one of its creation

  // From now on allocations succeed, or fail as the input wants it.
  void heal() { storage.failing = 0; }

  // Nothing of the heap is in use, and it has kept to its limit.
  void requireNothingLeft();

  // The context reads a good document as if nothing had been.
  void requireUsable();

private:
  Storage storage;
  RuntimeContext *ctx = nullptr;
  bool kept = true;
  size_t heapLimit = 0; // 0: the default
};

// The value of a document: a record, a text, bytes or a code. Zeroed at first; gives back all that it holds.
class Value {
public:
  Value(RuntimeContext *context, const ims::DocumentSchema &schema);
  ~Value();
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  void *data() { return storage.data(); }
  const void *data() const { return storage.data(); }
  std::string printed() const; // by the printers of records, or the text; a null text as an empty one

private:
  RuntimeContext *ctx;
  const ims::DocumentSchema &document;
  std::vector<uint64_t> storage; // as records are aligned at most
};

// Sets the body as input and reads it into the value, in pieces of text if the input wants that; the status.
int decode(RuntimeContext *ctx, const Input &input, Value &value);
int validate(RuntimeContext *ctx, const Input &input);

// A failure is recorded, as many errors are recorded and kept as the input wants, and each has its place in the body.
void requireRecords(RuntimeContext *ctx, const Input &input, int status);

// A body that passes a limit is refused for that limit, and no other is.
void requireLimits(RuntimeContext *ctx, const Input &input, int status);

// Messages, statuses and places of all records kept.
std::string errors(RuntimeContext *ctx);

// What a parser that is not ours says of a text.
enum class Xml {
  broken,
  wellFormed, // but for its namespaces
  namespaced
};
Xml judge(std::string_view text);

// Well-formed, and its root is of the document's namespace.
bool hasRootOf(const ims::DocumentSchema &document, std::string_view text);

} // namespace fuzz
