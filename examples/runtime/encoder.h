// What the encoder remembers between two primitives: the start tag that is open.
#pragma once

#include <stddef.h>

namespace tiny {

struct OpenTag {
  bool open;
  bool rootToCome;     // a document has begun, its root has not
  bool isRoot;         // the tag is that of a document's root
  bool declaresItself; // it declares the namespace of its own name
  bool hasUri;         // that namespace is stated
  bool uriSlot;        // and kept here
  size_t nameAt;       // its name in the output
  size_t nameEnd;
  size_t prefixLength;
};

} // namespace tiny
