// The bytes of a document before the parser sees them: their encoding, and what would keep the parser busy too long.
#pragma once

#include "textSlice.h"

#include <stdint.h>

namespace rt {

class Heap;

// How a document is encoded.
struct Encoding {
  Text name;                           // empty: UTF-8, which the parser reads as it is
  size_t skip = 0;                     // bytes to be left out: a byte order mark, or a declaration that says nothing
  bool declared = false;               // name stands in the document
  const char *const *labels = nullptr; // what a declaration may call it; null: none or asked already
};

// By the byte order mark, else by the pattern of "<?xml", else by the XML declaration. Whatever is wrong with that is
// left to the parser, which refuses it.
Encoding encodingOf(Text document);

// The name that the declaration of a document gives to its encoding, if that was told by other means and is another
// one; else empty. text is the document in UTF-8.
Text contradictingLabel(const Encoding &encoding, Text text);

// A text in UTF-8 with a NUL behind it. The storage is kept for the next document.
struct InputText {
  char *bytes = nullptr;
  size_t length = 0;
  size_t capacity = 0;

  // Room for bytesNeeded bytes, or for count more, and the NUL; what is there is kept. False: no storage.
  bool reserve(Heap &heap, size_t bytesNeeded);
  bool room(Heap &heap, size_t count);
  void destroy(Heap &heap);
};

enum class Transcoding {
  done,
  unknownEncoding,
  malformed, // the text holds what comes before
  tooLong,   // more than limit bytes
  noMemory
};

Transcoding transcode(Heap &heap, const Encoding &encoding, Text document, size_t limit, InputText &text);

// Tags of fewer bytes are not looked at.
inline constexpr size_t leastTagLimit = 2048;

// What is wrong with the first start tag that has more than attributeLimit attributes or more than tagLimit bytes, or
// than leastTagLimit if that is more: the name of the first attribute too many, or the tag itself. text is in UTF-8.
struct LongTag {
  const char *surplus = nullptr;
  const char *tooLong = nullptr;
};
LongTag findLongTag(Text text, uint32_t attributeLimit, size_t tagLimit);

} // namespace rt
