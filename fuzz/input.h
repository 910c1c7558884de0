// What the bytes of one execution say: a body, and how it is to be read.
#pragma once

#include "Schema.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

// Takes bytes off the front; 0 when there are none left.
class Bytes {
public:
  Bytes(const uint8_t *data, size_t size) : at(data), end(data + size) {}
  explicit Bytes(std::string_view text) : Bytes(reinterpret_cast<const uint8_t *>(text.data()), text.size()) {}

  bool empty() const { return at == end; }
  uint8_t byte() { return empty() ? uint8_t{0} : *at++; }
  uint32_t number() { return byte() | uint32_t{byte()} << 8; }
  uint32_t below(uint32_t bound) { return byte() % bound; }
  std::string_view take(size_t length);

private:
  const uint8_t *at;
  const uint8_t *end;
};

// An input is a body. Behind its last NUL byte, if it has one, stand the choices below in their order, a byte each and
// two for the allocation; what is missing is 0. So a file with a body is an input, and everything else is the fuzzer's.
struct Input {
  Input(const uint8_t *data, size_t size);

  std::string_view body;
  const ims::DocumentSchema *document; // chosen, or else by the name of the root
  bool inPlace = false;                // not copied by the context
  uint8_t pieceLength = 0;             // texts are handed to the handlers in pieces of this length; 0: as they come
  size_t heapLimit = 0;                // 0: the default
  uint32_t errorLimit = 100;
  uint32_t depthLimit = 0;        // 0: the default
  uint32_t failingAllocation = 0; // counted from 1; 0: none
  bool failingOnwards = false;    // and all behind it

  // Whether the context is as hosts mostly have it, so that a result is what the document deserves.
  bool isPlain() const { return heapLimit == 0 && errorLimit == 100 && depthLimit == 0 && failingAllocation == 0; }
};

} // namespace fuzz
