// What the parser leaves unsaid about names: their parts, and whether they agree with Namespaces in XML.
#pragma once

#include "textSlice.h"

#include <stdint.h>

namespace rt {

class Heap;
class NamespaceStack;

// The last two are no names of elements.
enum class NameKind : uint8_t {
  plain,              // no colon
  defaultDeclaration, // "xmlns"
  prefixed,           // one colon with a name on both sides
  prefixDeclaration,  // "xmlns:" and a prefix
  malformed           // any other use of colons
};

struct NameParts {
  const char *name = nullptr;
  const char *local = nullptr; // in name, behind the colon
  uint32_t localLength = 0;
  NameKind kind = NameKind::plain;

  Text localName() const { return {local, localLength}; }
  Text prefix() const { return {name, local == name ? 0 : static_cast<size_t>(local - name) - 1}; }
};

NameParts splitName(const char *name);

// What is wrong with declaring a prefix (empty: the default namespace) of a namespace that XML has reserved, or null.
const char *reservedName(Text prefix, Text uri);

// The parts of names that were seen lately. A name is known by its address: the parser keeps one copy of each, which
// lives as long as its dictionary, so forget all when that goes. The copies lie side by side, so that the names of a
// document take different slots.
class NameCache {
public:
  // How often a name was not there. Each name that a document has is missing at least once.
  uint32_t misses = 0;

  const NameParts &partsOf(const char *name) {
    const Slot &slot = slotOf(name);
    return slot.parts.name == name ? slot.parts : split(name);
  }

  void forget() {
    for (Slot &slot : slots)
      slot.parts = {};
  }

private:
  static constexpr uintptr_t slotCount = 256;
  struct alignas(4 * sizeof(void *)) Slot { // a power of two
    NameParts parts;
  };

  Slot &slotOf(const char *name) { return slots[reinterpret_cast<uintptr_t>(name) / 4 % slotCount]; }
  [[gnu::cold, gnu::noinline]] const NameParts &split(const char *name) {
    misses++;
    return slotOf(name).parts = splitName(name);
  }

  Slot slots[slotCount];
};

// No start tag may have more attributes: the parser compares each with all others.
inline constexpr uint32_t mostAttributes = 128;

// Of names in one document that only their namespaces tell apart. What needs more is no message but an attack.
inline constexpr size_t comparisonLimit = size_t{1} << 20;

// Binds what the attributes of a start tag declare, and checks the names of all of them. comparisons: how many are
// left.
struct AttributeCheck {
  int status = 0;               // or STATUS_PARSE_FAILED, STATUS_LIMIT_EXCEEDED, STATUS_NO_MEMORY
  uint32_t index = 0;           // of the attribute that is wrong
  const char *reason = nullptr; // or the limit
  size_t limit = 0;
};
AttributeCheck bindDeclarations(Heap &heap, NamespaceStack &namespaces, NameCache &names, const char *const *attributes,
                                uint32_t attributeLimit, size_t &comparisons);

} // namespace rt
