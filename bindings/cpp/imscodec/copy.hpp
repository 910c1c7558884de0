// Copies of whole records, also from one context to another.
#pragma once

#include "imscodec/core.hpp"

namespace imscodec {

namespace detail {

// Copies members into a record that is empty. Whatever it comes to, that can be disposed of like any other: what is
// going to hold something is marked and listed before it does.
class Copying {
public:
  explicit Copying(RuntimeContext *target) : ctx(target) {}

  template <class Shape, class Raw> bool member(const char *, const Raw &from, Raw &to) const {
    return copy<Shape>(from, to);
  }

  template <class Shape, class Raw>
  bool optional(const char *, std::uint32_t bit, const std::uint32_t &present, std::uint32_t &marked, const Raw &from,
                Raw &to) const {
    if ((present & bit) == 0) return true;
    marked |= bit;
    return copy<Shape>(from, to);
  }

  bool selector(const std::uint16_t &from, std::uint16_t &to) const {
    to = from;
    return true;
  }
  template <class Shape, class Raw> bool alternative(const char *, const Raw &from, Raw &to) const {
    if constexpr (RecordView<Shape>) Shape::initialise(ctx, &to);
    return copy<Shape>(from, to);
  }

private:
  template <class Shape, class Raw> bool copy(const Raw &from, Raw &to) const {
    if constexpr (RecordView<Shape>) {
      return Shape::visitMembers(*this, from, to);
    } else if constexpr (std::is_arithmetic_v<Raw>) {
      // Of a document with errors some are not set: they are not looked at either.
      std::memcpy(&to, &from, sizeof to);
      return true;
    } else {
      return copyValue<Shape>(from, to);
    }
  }

  bool copyText(const char *from, const char *&to) const {
    if (!from) return true;
    to = copied(ctx, from);
    return to != nullptr;
  }

  template <class> bool copyValue(const RtxXmlString &from, RtxXmlString &to) const {
    to.cdata = from.cdata;
    return copyText(from.value, to.value);
  }
  template <class> bool copyValue(const RtxHexBinary &from, RtxHexBinary &to) const {
    return from.length == 0 || !from.bytes || assign(ctx, to, {from.bytes, from.length}, false);
  }
  template <class> bool copyValue(const RtxNamePair &from, RtxNamePair &to) const {
    return copyText(from.name, to.name) && copyText(from.value, to.value);
  }
  template <class> bool copyValue(const RtxNsDecl &from, RtxNsDecl &to) const {
    return copyText(from.prefix, to.prefix) && copyText(from.uri, to.uri);
  }

  template <class Shape> bool copyValue(const RtxList &from, RtxList &to) const {
    using Each = std::ranges::range_value_t<Shape>;
    using Raw = typename Item<Each>::Raw;
    for (const RtxListNode *node = from.head; node; node = node->next) {
      auto *item = append<Raw>(ctx, to);
      if (!item) return false;
      if constexpr (RecordView<Each>) Each::initialise(ctx, item);
      if (!copy<Each>(*static_cast<const Raw *>(node->data), *item)) return false;
    }
    return true;
  }
  template <class Shape> bool copyValue(const RtxAnyList &from, RtxAnyList &to) const {
    return copyValue<Shape>(from.items, to.items);
  }
  template <class Shape> bool copyValue(const RtxAttrList &from, RtxAttrList &to) const {
    return copyValue<Shape>(from.items, to.items);
  }
  template <class Shape> bool copyValue(const RtxNsDeclList &from, RtxNsDeclList &to) const {
    return copyValue<Shape>(from.items, to.items);
  }

  RuntimeContext *ctx;
};

} // namespace detail

// A copy of a record with all that it holds, on the heap of context. The source may be of another context; that is not
// touched. Members that are absent, and alternatives that are not chosen, are left out. STATUS_NO_MEMORY if there is
// not storage for all of it; nothing of it is then kept.
template <class R> Result<Record<ViewOf<R>>> copy(Context &context, const R &source) {
  using T = ViewOf<R>;
  RuntimeContext *ctx = context.get();
  if (const int status = rtxCheckContext(ctx); status != STATUS_OK) return {ctx, status};
  rtxErrClear(ctx);
  Record<T> made(ctx, Record<T>::empty);
  const auto &from = viewOf(source).raw();
  if (T::visitMembers(detail::Copying(ctx), from, made.raw())) return {ctx, STATUS_OK, std::move(made)};
  return {ctx, rtxErrSetNewData(ctx, STATUS_NO_MEMORY, "imscodec/copy", 10)};
}

// Makes target, a record of context that has been initialised, a copy of source. What it held is given back; without
// storage for the copy it stays as it was. An item of a list or a member can be the target as well as a whole record.
template <class R> Outcome copyTo(Context &context, ViewOf<R> target, const R &source) {
  auto made = copy(context, source);
  if (made) std::swap((*made).raw(), target.raw());
  return made;
}

} // namespace imscodec
