// Records as lines for people, "name.member = value", given to the host.
#pragma once

#include "imscodec/core.hpp"

#include <algorithm>
#include <charconv>

namespace imscodec {

namespace detail {

// A name that has grown by a part; what does not fit is cut.
class Name {
public:
  Name(std::string_view parent, std::string_view part) {
    add(parent);
    add(".");
    add(part);
  }
  Name(std::string_view parent, unsigned index) {
    char digits[16];
    add(parent);
    add("[");
    add({digits, std::to_chars(digits, digits + sizeof digits, index).ptr});
    add("]");
  }
  const char *get() const { return text; }

private:
  void add(std::string_view piece) {
    const std::size_t fitting = std::min(piece.size(), sizeof text - 1 - used);
    std::memcpy(text + used, piece.data(), fitting);
    used += fitting;
    text[used] = '\0';
  }

  char text[512];
  std::size_t used = 0;
};

template <class T> void printRecord(const char *name, const typename T::Raw &record);

// Prints members as the C interface does, and the selectors of choices, which that leaves to standard output, with
// them.
class Printing {
public:
  explicit Printing(const char *nameOfRecord) : name(nameOfRecord) {}

  template <class Shape, class Raw> bool member(const char *part, const Raw &value) const {
    if (*part) {
      print<Shape>(Name(name, part).get(), value);
    } else {
      print<Shape>(name, value);
    }
    return true;
  }
  template <class Shape, class Raw>
  bool optional(const char *part, std::uint32_t bit, std::uint32_t present, const Raw &value) const {
    return (present & bit) == 0 || member<Shape>(part, value);
  }
  bool selector(std::uint16_t chosen) const {
    rtxPrintUnsigned(Name(name, "t").get(), chosen);
    return true;
  }
  template <class Shape, class Raw> bool alternative(const char *part, const Raw &value) const {
    print<Shape>(Name(Name(name, "u").get(), part).get(), value);
    return true;
  }

private:
  template <class Shape, class Raw> static void print(const char *full, const Raw &value) {
    if constexpr (RecordView<Shape>) {
      printRecord<Shape>(full, value);
    } else {
      printValue<Shape>(full, value);
    }
  }

  // Of the kinds that records with choices have; other records are left to the C interface.
  template <class> static void printValue(const char *full, const RtxXmlString &text) {
    rtxPrintCharStr(full, text.value);
  }
  template <class> static void printValue(const char *full, double value) { rtxPrintReal(full, value); }
  template <class> static void printValue(const char *full, const RtxNamePair &pair) {
    rtxPrintNVP(full, pair.name, pair.value);
  }
  template <class Shape> static void printValue(const char *full, const RtxList &list) {
    using Each = std::ranges::range_value_t<Shape>;
    unsigned index = 0;
    for (const RtxListNode *node = list.head; node; node = node->next)
      print<Each>(Name(full, index++).get(), *static_cast<const typename Item<Each>::Raw *>(node->data));
  }
  template <class Shape> static void printValue(const char *full, const RtxAnyList &list) {
    printValue<Shape>(full, list.items);
  }
  template <class Shape> static void printValue(const char *full, const RtxAttrList &list) {
    printValue<Shape>(full, list.items);
  }

  const char *name;
};

template <class T> void printRecord(const char *name, const typename T::Raw &record) {
  if constexpr (requires { T::print(name, &record); }) {
    T::print(name, &record);
  } else {
    T::visitMembers(Printing(name), record);
  }
}

// Where the lines of the thread go while it lives.
class SinkOfThread {
public:
  explicit SinkOfThread(RtxPrintSink &sink) : earlier(rtxSetPrintSink(&sink)) {}
  ~SinkOfThread() { rtxSetPrintSink(earlier); }
  SinkOfThread(const SinkOfThread &) = delete;
  SinkOfThread &operator=(const SinkOfThread &) = delete;

private:
  RtxPrintSink *earlier;
};

} // namespace detail

// Calls put with each line of a record, each with its line break and gone when put returns; it must not throw. If it
// returns something, false refuses the line. True if no line was refused, nor lost for lack of storage, which only one
// of more than 512 bytes needs. Printing ends where it began: what the thread prints goes again where it went before.
template <class R, std::invocable<std::string_view> Put> bool print(const R &record, const char *name, Put put) {
  RtxPrintSink sink{};
  sink.user = &put;
  sink.put = [](void *user, const char *line, std::size_t length) noexcept -> int {
    const std::string_view text(line, length);
    Put &taker = *static_cast<Put *>(user);
    if constexpr (std::is_void_v<std::invoke_result_t<Put &, std::string_view>>) {
      taker(text);
      return 0;
    } else {
      return taker(text) ? 0 : 1;
    }
  };
  const detail::SinkOfThread thread(sink);
  detail::printRecord<ViewOf<R>>(name, viewOf(record).raw());
  return sink.refused == 0;
}

} // namespace imscodec
