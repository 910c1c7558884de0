// A piece of text that is not NUL-terminated.
#pragma once

#include <stddef.h>
#include <string.h>

namespace rt {

struct Text {
  const char *bytes = "";
  size_t length = 0;

  bool empty() const { return length == 0; }
  bool is(Text other) const { return length == other.length && memcmp(bytes, other.bytes, length) == 0; }
  template <size_t size> bool is(const char (&literal)[size]) const {
    return length == size - 1 && memcmp(bytes, literal, size - 1) == 0;
  }
  template <size_t size> bool begins(const char (&literal)[size]) const {
    return length >= size - 1 && memcmp(bytes, literal, size - 1) == 0;
  }
};

} // namespace rt
