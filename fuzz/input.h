// What the bytes of one execution say: a body, and how it is to be read.
#pragma once

#include "Schema.h"
#include "rtxContext.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

// Takes bytes off the front; 0 when there are none left.
class Bytes {
public:
  explicit Bytes(std::string_view text) : at(reinterpret_cast<const uint8_t *>(text.data())), end(at + text.size()) {}

  uint8_t byte() { return at == end ? uint8_t{0} : *at++; }
  uint32_t number() {
    const uint32_t low = byte();
    return low | uint32_t{byte()} << 8;
  }
  uint32_t below(uint32_t bound) { return byte() % bound; }
  std::string_view take(size_t length);

private:
  const uint8_t *at;
  const uint8_t *end;
};

// An input is a body, or what a record is to be made of. Behind its first two bytes 0xFF, which stand in no encoding
// of a body, it has the choices below in their order; what is missing is 0. So a file with a body is an input, and
// everything else is the fuzzer's.
struct Input {
  Input(const uint8_t *data, size_t size);
  explicit Input(std::string_view text);

  std::string_view body;
  const ims::DocumentSchema *document; // chosen, or else by the name of the root
  bool inPlace;                        // not copied by the context
  bool freshContext;                   // not one that has read other bodies before
  bool namespacesPreset;               // roots declare none when they are written
  uint8_t pieceLength;                 // texts are handed to the handlers in pieces of this length; 0: as they come
  uint16_t failingAllocation;          // counted from 1; 0: none
  bool failingOnwards;                 // and all behind it
  uint16_t room;                       // bytes that a document may have when it is written; 0: any
  RuntimeOptions options;              // with the limits chosen
  bool limited = false;                // some are

  // Whether the context is as hosts mostly have it, so that a result is what the body deserves.
  bool isPlain() const { return !limited && failingAllocation == 0; }
  // The same body, as hosts mostly read it.
  Input plainly() const { return Input(body, *document); }
  bool isPlainly() const { return isPlain() && !inPlace && !freshContext && pieceLength == 0; }

private:
  Input(std::string_view text, const ims::DocumentSchema &schema);
  void choose(Bytes choices);
  template <class Limit> void choose(Limit &limit, Limit least, Limit step, Bytes &choices);
};

} // namespace fuzz
