// The bytes of a document before the parser sees them: their encoding, and what would keep the parser busy too long.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace rt {

class Heap;

// How a document is encoded.
struct Encoding {
  const char *name = nullptr; // null: UTF-8, which the parser reads as it is. Not NUL-terminated if declared.
  size_t nameLength = 0;
  size_t skip = 0;       // bytes to be left out: a byte order mark, or a declaration that says nothing
  bool declared = false; // name stands in the document
};

// By the byte order mark, else by the pattern of "<?xml", else by the XML declaration. Whatever is wrong with that is
// left to the parser, which refuses it.
Encoding encodingOf(const char *bytes, size_t length);

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

Transcoding transcode(Heap &heap, const Encoding &encoding, const char *bytes, size_t length, size_t limit,
                      InputText &text);

// The name of the limit-th attribute (counted from 0) of the first start tag with more than limit attributes, null if
// there is none. Tags of less than two kilobytes are not looked at. text is in UTF-8.
const char *findCrowdedTag(const char *text, size_t length, uint32_t limit);

} // namespace rt
