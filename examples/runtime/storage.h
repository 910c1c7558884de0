// Where all storage comes from: the host's two callbacks, or malloc and free. Every request may be refused.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

namespace tiny {

struct System {
  void *(*allocate)(void *user, size_t size);
  void (*release)(void *user, void *block);
  void *user;
  uint64_t calls;

  void *take(size_t size) {
    ++calls;
    return allocate(user, size);
  }
  void give(void *block) {
    if (block) release(user, block);
  }
};

// A growing array of plain values. What is behind count up to capacity was used before, or is zero.
template <class T> struct Array {
  T *items;
  size_t count;
  size_t capacity;

  // Makes room for more items; false, and nothing is changed, if there is no storage.
  bool reserve(System &system, size_t more) {
    if (more <= capacity - count) return true;
    const size_t most = SIZE_MAX / 4 / sizeof(T);
    if (more > most || count > most - more) return false;
    const size_t wanted = count + more > 2 * capacity ? count + more + 8 : 2 * capacity;
    T *larger = static_cast<T *>(system.take(wanted * sizeof(T)));
    if (!larger) return false;
    if (capacity > 0) memcpy(larger, items, capacity * sizeof(T));
    memset(static_cast<void *>(larger + capacity), 0, (wanted - capacity) * sizeof(T));
    system.give(items);
    items = larger;
    capacity = wanted;
    return true;
  }

  bool append(System &system, const T *values, size_t length) {
    if (!reserve(system, length)) return false;
    if (length > 0) memcpy(items + count, values, length * sizeof(T));
    count += length;
    return true;
  }

  bool add(System &system, const T &value) { return append(system, &value, 1); }

  void destroy(System &system) {
    system.give(items);
    *this = {};
  }
};

} // namespace tiny
