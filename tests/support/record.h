// Records of any type: the functions that the library has for it, and a record on a context.
#pragma once

#include "capture.h"
#include "rtx.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace support {

// What storage holds that nobody wrote.
inline constexpr unsigned char pattern = 0xA5;

// The functions of a record type. A module specialises it for each of its types, of the pieces below and of
//   static void release(RuntimeContext *ctx, T *record)
// which gives back all that a record holds, also what no function of the library does.
template <typename T> struct Functions;

#define RECORD_FUNCTIONS(T)                                                                                            \
  static constexpr const char *name = #T;                                                                              \
  static constexpr auto init = QxInit_##T;                                                                             \
  static constexpr auto print = QxPrint_##T;                                                                           \
  static constexpr auto encode = QxXmlET_##T;                                                                          \
  static constexpr auto startElement = QxXmlET_##T##_StartElement;                                                     \
  static constexpr auto contents = QxXmlET_##T##_Contents;                                                             \
  static constexpr auto endElement = QxXmlET_##T##_EndElement;

// FREE: the function of the library that gives back what a record holds, or nullptr where there is none. REST: what
// gives back the rest.
#define RELEASE_FUNCTIONS(T, REST, FREE)                                                                               \
  static constexpr int (*memFree)(RuntimeContext *, T *) = FREE;                                                       \
  static void release(RuntimeContext *ctx, T *record) {                                                                \
    REST(ctx, *record);                                                                                                \
    if (memFree != nullptr) memFree(ctx, record);                                                                      \
  }

// The handlers of a type, for filling a record and for checking only, under one interface.
#define HANDLER_FUNCTIONS(T)                                                                                           \
  struct Filling {                                                                                                     \
    using Handler = SaxTypeHandler;                                                                                    \
    static int init(RuntimeContext *ctx, Handler *handler, T *record, int32_t level) {                                 \
      return QxSAX_##T##_init(ctx, handler, record, level);                                                            \
    }                                                                                                                  \
    static constexpr auto start = QxSAX_##T##_startElement;                                                            \
    static constexpr auto characters = QxSAX_##T##_characters;                                                         \
    static constexpr auto end = QxSAX_##T##_endElement;                                                                \
  };                                                                                                                   \
  struct Checking {                                                                                                    \
    using Handler = VsaxTypeHandler;                                                                                   \
    static int init(RuntimeContext *ctx, Handler *handler, T *, int32_t level) {                                       \
      return QxVSAX_##T##_init(ctx, handler, level);                                                                   \
    }                                                                                                                  \
    static constexpr auto start = QxVSAX_##T##_startElement;                                                           \
    static constexpr auto characters = QxVSAX_##T##_characters;                                                        \
    static constexpr auto end = QxVSAX_##T##_endElement;                                                               \
  };

// Calls test<T>() for each of the types.
template <typename... Types, typename Test> void forEachType(const Test &test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Functions<T>::name);
    test.template operator()<T>();
  };
  (run.template operator()<Types>(), ...);
}

// What the record's print function writes.
template <typename T> std::string printed(const char *name, const T &record) {
  return captureStdout([&] { EXPECT_EQ(Functions<T>::print(name, &record), 0); });
}
template <typename T> std::string printed(const char *name, const T *record) { return printed(name, *record); }

// Storage for a record that has the pattern in it, the bytes of such storage, and whether they are the pattern still.
template <typename T> T patterned() {
  T record;
  std::memset(static_cast<void *>(&record), pattern, sizeof record);
  return record;
}
template <typename T> std::string bytesOf(const T &record) {
  return {reinterpret_cast<const char *>(&record), sizeof record};
}
template <typename T> bool untouched(const T &record) {
  return bytesOf(record) == std::string(sizeof record, static_cast<char>(pattern));
}

// A record in storage that had a pattern in it, so that a member that nobody wrote shows. Released at its end if it is
// owned.
template <typename T> class Record {
public:
  explicit Record(RuntimeContext *context) : Record(context, true) {}
  // Storage with the pattern alone, for a decoder; not owned.
  static Record uninitialised(RuntimeContext *context) { return Record(context, false); }
  ~Record() {
    if (owned) Functions<T>::release(ctx, &value);
  }
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  operator T *() { return &value; }
  T *operator->() { return &value; }
  T &operator*() { return value; }
  const T &get() const { return value; }

  bool owned;

protected:
  Record(RuntimeContext *context, bool initialise) : owned(initialise), ctx(context) {
    std::memset(static_cast<void *>(&value), pattern, sizeof value);
    if (initialise) {
      EXPECT_EQ(Functions<T>::init(ctx, &value), 0);
    }
  }

  RuntimeContext *ctx;
  T value;
};

} // namespace support
