// What the encoder remembers between two primitives: the start tag that is open.
#pragma once

#include "rtXmlEncode.h"

namespace rt {

class Heap;

struct OpenTag {
  bool isRoot = false;         // of the document that rtXmlEncStartDocument began
  bool declaresItself = false; // the namespace of its own name
  bool hasUnknown = false;     // attributes were written past the primitives
  size_t start = 0;            // position of its "<" in the output
  size_t nameEnd = 0;          // position behind its name
  size_t attributesEnd = 0;    // position behind what the primitives have written
  uint32_t prefixLength = 0;   // its prefix begins behind the "<"
  uint64_t attributes = 0;     // one bit for each name that may be in it, see AttributeName::bit
  const char *uri = nullptr;   // namespace of its name; null: not stated
};

struct EncodeState {
  bool tagOpen = false;     // a start tag waits for attributes or its ">"
  bool rootPending = false; // a document has begun, its root has not
  OpenTag tag;

  // Keeps the URI of the open tag unless that is a text of the URI table.
  char *uriCopy = nullptr;
  size_t uriCapacity = 0;

  // Forgets an unfinished document. To be called whenever the output is set or dropped.
  void reset() {
    tagOpen = false;
    rootPending = false;
  }
  void destroy(Heap &heap); // releases what is kept
};

} // namespace rt
