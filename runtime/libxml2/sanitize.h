// What AddressSanitizer is told about storage that we hand out in pieces. Without it all of this is nothing.
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define RT_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define RT_ADDRESS_SANITIZER 1
#endif
#endif
#ifndef RT_ADDRESS_SANITIZER
#define RT_ADDRESS_SANITIZER 0
#endif

#if RT_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#define RT_UNCHECKED __attribute__((no_sanitize_address, noinline))
#else
#define RT_UNCHECKED
#endif

namespace rt {

inline void poison([[maybe_unused]] const void *bytes, [[maybe_unused]] size_t size) {
#if RT_ADDRESS_SANITIZER
  __asan_poison_memory_region(bytes, size);
#endif
}

inline void unpoison([[maybe_unused]] const void *bytes, [[maybe_unused]] size_t size) {
#if RT_ADDRESS_SANITIZER
  __asan_unpoison_memory_region(bytes, size);
#endif
}

// Reach what lies in poisoned storage: our own notes between the pieces.
template <class T> RT_UNCHECKED inline T readHidden(T *from) { return *from; }

template <class T> RT_UNCHECKED inline void writeHidden(T *to, T value) { *to = value; }

} // namespace rt
