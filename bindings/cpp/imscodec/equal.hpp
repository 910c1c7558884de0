// Comparison of whole records.
//
// There is no operator for it: a view is like a pointer, and two of them could be asked whether they see the same
// record as well as whether they see the same in it.
#pragma once

#include "imscodec/core.hpp"

namespace imscodec {

namespace detail {

class Comparing {
public:
  template <class Shape, class Raw> bool member(const char *, const Raw &a, const Raw &b) const {
    return same<Shape>(a, b);
  }

  template <class Shape, class Raw>
  bool optional(const char *, std::uint32_t bit, std::uint32_t presentInA, std::uint32_t presentInB, const Raw &a,
                const Raw &b) const {
    if (((presentInA ^ presentInB) & bit) != 0) return false;
    return (presentInA & bit) == 0 || same<Shape>(a, b);
  }

  bool selector(std::uint16_t a, std::uint16_t b) const { return a == b; }
  template <class Shape, class Raw> bool alternative(const char *, const Raw &a, const Raw &b) const {
    return same<Shape>(a, b);
  }

private:
  template <class Shape, class Raw> bool same(const Raw &a, const Raw &b) const {
    if constexpr (RecordView<Shape>) {
      return Shape::visitMembers(*this, a, b);
    } else if constexpr (std::is_floating_point_v<Raw>) {
      return a == b || (a != a && b != b); // what is no number is as good as itself
    } else if constexpr (std::is_arithmetic_v<Raw>) {
      return std::memcmp(&a, &b, sizeof a) == 0; // also if a document with errors has not set a boolean
    } else {
      return sameValue<Shape>(a, b);
    }
  }

  template <class> bool sameValue(const RtxXmlString &a, const RtxXmlString &b) const { return textOf(a) == textOf(b); }
  template <class> bool sameValue(const RtxHexBinary &a, const RtxHexBinary &b) const {
    const std::size_t length = a.bytes ? a.length : 0;
    if (length != (b.bytes ? b.length : 0)) return false;
    return length == 0 || std::memcmp(a.bytes, b.bytes, length) == 0;
  }
  template <class> bool sameValue(const RtxNamePair &a, const RtxNamePair &b) const {
    return textOf(a.name) == textOf(b.name) && textOf(a.value) == textOf(b.value);
  }
  template <class> bool sameValue(const RtxNsDecl &a, const RtxNsDecl &b) const {
    return textOf(a.prefix) == textOf(b.prefix) && textOf(a.uri) == textOf(b.uri);
  }

  template <class Shape> bool sameValue(const RtxList &a, const RtxList &b) const {
    using Each = std::ranges::range_value_t<Shape>;
    using Raw = typename Item<Each>::Raw;
    const RtxListNode *one = a.head;
    const RtxListNode *other = b.head;
    for (; one && other; one = one->next, other = other->next) {
      if (!same<Each>(*static_cast<const Raw *>(one->data), *static_cast<const Raw *>(other->data))) return false;
    }
    return !one && !other;
  }
  template <class Shape> bool sameValue(const RtxAnyList &a, const RtxAnyList &b) const {
    return sameValue<Shape>(a.items, b.items);
  }
  template <class Shape> bool sameValue(const RtxAttrList &a, const RtxAttrList &b) const {
    return sameValue<Shape>(a.items, b.items);
  }
  template <class Shape> bool sameValue(const RtxNsDeclList &a, const RtxNsDeclList &b) const {
    return sameValue<Shape>(a.items, b.items);
  }
};

} // namespace detail

// Whether two records, which may be of different contexts, say the same: the same members are present and have the same
// values, and lists have the same items in the same order. Texts count by their bytes: neither whether they are written
// as a CDATA section, nor whether an empty one is set, since both are read and written alike. Members that are absent,
// and alternatives that are not chosen, do not count.
template <class A, class B>
requires std::same_as<ViewOf<A>, ViewOf<B>>
[[nodiscard]] bool equal(const A &a, const B &b) {
  const auto &one = viewOf(a).raw();
  const auto &other = viewOf(b).raw();
  return ViewOf<A>::visitMembers(detail::Comparing(), one, other);
}

} // namespace imscodec
