// What the C++ layer is made of: contexts, results, errors, lists, and views of records. What can be done with whole
// records has headers of its own.
//
// The layer adds names and types to the C interface and nothing else: a view is a pointer to a C record, a list is the
// C list, a text is where it lies. No call throws, none needs run-time type information, and what can fail says so by
// its result.
//
// A view is like a pointer in that its const does not reach the record. Views, texts and lists are valid as long as
// the record is, and records as long as their context's heap: they go before the context goes or is reset.
#pragma once

#include "rtx.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <new>
#include <optional>
#include <ranges>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace imscodec {

// ---- Errors -----------------------------------------------------------------------------------------------------

// One error that a context recorded. Valid until the context's next call.
class Error {
public:
  Error(RuntimeContext *context, std::uint32_t position)
      : ctx(context), index(position), record(rtxErrAt(context, position)) {}

  int status() const { return record->status; }           // of RtxStatus
  std::uint32_t line() const { return record->line; }     // from 1; 0: the error has no place in an input
  std::uint32_t column() const { return record->column; } // from 1, in bytes
  std::size_t offset() const { return record->offset; }   // from 0, in bytes

  // The names of the open elements as "/a/b"; empty outside an input.
  std::string_view elementPath() const { return record->elementPath; }

  // What rtxStatus.h lists behind the status, in that order.
  std::span<const RtxErrorParam> parameters() const { return {record->params, record->paramCount}; }

  // The error as one line for people, cut to what the buffer takes.
  std::string_view format(std::span<char> buffer) const {
    const std::size_t whole = rtxErrFormat(ctx, index, buffer.data(), buffer.size());
    return {buffer.data(), buffer.empty() ? 0 : (whole < buffer.size() ? whole : buffer.size() - 1)};
  }

private:
  RuntimeContext *ctx;
  std::uint32_t index;
  const RtxError *record;
};

// The errors of a context's last call, oldest first, as far as the context keeps them.
class Errors : public std::ranges::view_base {
public:
  class Iterator {
  public:
    using iterator_concept = std::forward_iterator_tag;
    using iterator_category = std::input_iterator_tag;
    using difference_type = std::ptrdiff_t;
    using value_type = Error;

    Iterator() = default;
    explicit Iterator(RuntimeContext *context) : ctx(context) {}

    Error operator*() const { return {ctx, index}; }
    Iterator &operator++() {
      ++index;
      return *this;
    }
    Iterator operator++(int) {
      const Iterator before = *this;
      ++index;
      return before;
    }
    friend bool operator==(const Iterator &a, const Iterator &b) { return a.index == b.index; }
    friend bool operator==(const Iterator &a, std::default_sentinel_t) { return !rtxErrAt(a.ctx, a.index); }

  private:
    RuntimeContext *ctx = nullptr;
    std::uint32_t index = 0;
  };

  Errors() = default;
  explicit Errors(RuntimeContext *context) : ctx(context) {}

  Iterator begin() const { return Iterator(ctx); }
  std::default_sentinel_t end() const { return {}; }
  bool empty() const { return begin() == end(); }

private:
  RuntimeContext *ctx = nullptr;
};

// Whether a call succeeded, and what went wrong if it did not.
class [[nodiscard]] Outcome {
public:
  Outcome(RuntimeContext *context, int result) : ctx(context), code(result) {}

  explicit operator bool() const { return code == STATUS_OK; }
  int status() const { return code; }                                 // 0, or one of RtxStatus
  std::string_view statusText() const { return rtxStatusText(code); } // for people
  Errors errors() const { return Errors(ctx); }                       // valid until the context's next call

protected:
  RuntimeContext *ctx;
  int code;
};

// A value, or errors. Only what converts to true has a value to be taken with * and ->.
template <class T> class [[nodiscard]] Result : public Outcome {
public:
  using Outcome::Outcome;
  Result(RuntimeContext *context, int result, T &&taken) : Outcome(context, result), value(std::move(taken)) {}

  bool has_value() const { return code == STATUS_OK; }
  T &operator*() & { return *value; }
  const T &operator*() const & { return *value; }
  T &&operator*() && { return *std::move(value); }

  // To what T points if it is a pointer by itself, else to its members.
  decltype(auto) operator->() { return arrow(*this); }
  decltype(auto) operator->() const { return arrow(*this); }

  // What could be had in spite of the errors; null if there is nothing.
  T *partial() { return value ? &*value : nullptr; }
  const T *partial() const { return value ? &*value : nullptr; }

private:
  friend class Context;

  template <class Self> static decltype(auto) arrow(Self &self) {
    if constexpr (requires(const T &held) { held.operator->(); }) {
      return (*self.value);
    } else {
      return &*self.value;
    }
  }

  std::optional<T> value;
};

// ---- Texts and lists --------------------------------------------------------------------------------------------

// A text; data() is null if it is not set.
inline std::string_view textOf(const char *text) { return text ? std::string_view(text) : std::string_view(); }
inline std::string_view textOf(const RtxXmlString &text) { return textOf(text.value); }

// An element of another vocabulary, as XML text that means the same on its own.
struct Foreign {
  std::string_view xml; // one whole element
};

// An attribute that the vocabulary does not name.
struct Attribute {
  std::string_view name;  // with its prefix, as it was written
  std::string_view value; // references resolved
};

// A namespace declaration.
struct NamespaceDeclaration {
  std::string_view prefix; // data() is null for the default namespace
  std::string_view uri;    // empty: no namespace
};

template <class T>
concept RecordView = requires {
  typename T::Raw;
};

// How what a record stores looks from C++; Raw is what an item of a list is beneath.
template <class T> struct Item;
template <RecordView T> struct Item<T> {
  using Raw = typename T::Raw;
  static T of(void *data) { return T(*static_cast<typename T::Raw *>(data)); }
};
template <class T>
requires std::is_arithmetic_v<T>
struct Item<T> {
  static T of(void *data) { return *static_cast<T *>(data); }
};
template <class T>
requires std::is_enum_v<T>
struct Item<T> {
  static T of(void *data) { return static_cast<T>(*static_cast<std::uint16_t *>(data)); }
};
template <> struct Item<std::string_view> {
  using Raw = RtxXmlString;
  static std::string_view of(void *data) { return textOf(*static_cast<RtxXmlString *>(data)); }
};
template <> struct Item<std::span<const std::uint8_t>> {
  static std::span<const std::uint8_t> of(void *data) {
    const auto *bytes = static_cast<const RtxHexBinary *>(data);
    return {bytes->bytes, bytes->length};
  }
};
template <> struct Item<Foreign> {
  using Raw = RtxXmlString;
  static Foreign of(void *data) { return {textOf(*static_cast<RtxXmlString *>(data))}; }
};
template <> struct Item<Attribute> {
  using Raw = RtxNamePair;
  static Attribute of(void *data) {
    const auto *pair = static_cast<const RtxNamePair *>(data);
    return {textOf(pair->name), textOf(pair->value)};
  }
};
template <> struct Item<NamespaceDeclaration> {
  using Raw = RtxNsDecl;
  static NamespaceDeclaration of(void *data) {
    const auto *declaration = static_cast<const RtxNsDecl *>(data);
    return {textOf(declaration->prefix), textOf(declaration->uri)};
  }
};

// A list of a record.
template <class T> class List : public std::ranges::view_base {
public:
  class Iterator {
  public:
    using iterator_concept = std::forward_iterator_tag;
    using iterator_category = std::input_iterator_tag;
    using difference_type = std::ptrdiff_t;
    using value_type = T;

    Iterator() = default;
    explicit Iterator(const RtxListNode *first) : node(first) {}

    T operator*() const { return Item<T>::of(node->data); }
    Iterator &operator++() {
      node = node->next;
      return *this;
    }
    Iterator operator++(int) {
      const Iterator before = *this;
      node = node->next;
      return before;
    }
    friend bool operator==(const Iterator &, const Iterator &) = default;

  private:
    const RtxListNode *node = nullptr;
  };

  List() = default;
  explicit List(const RtxList &list) : first(list.head), count(list.count) {}

  Iterator begin() const { return Iterator(first); }
  Iterator end() const { return Iterator(); }
  std::size_t size() const { return count; }
  bool empty() const { return count == 0; }
  T front() const { return *begin(); } // of a list that is not empty

private:
  const RtxListNode *first = nullptr;
  std::uint32_t count = 0;
};

template <class T> struct Item<List<T>> {
  static List<T> of(void *data) { return List<T>(*static_cast<RtxList *>(data)); }
};

// ---- Optional members -------------------------------------------------------------------------------------------

// Lends a value to an arrow.
template <class T> struct Arrow {
  T value;
  T *operator->() { return &value; }
};

// A member that may be absent: a pointer to where the record stores it, or null. It looks at the record when it is
// taken, so that nothing is copied before.
template <class T> class Optional {
public:
  Optional() = default;
  Optional(std::nullopt_t) {}
  explicit Optional(void *member) : stored(member) {}
  Optional(bool present, void *member) : stored(present ? member : nullptr) {}

  explicit operator bool() const { return stored != nullptr; }
  bool has_value() const { return stored != nullptr; }
  T operator*() const { return Item<T>::of(stored); }
  Arrow<T> operator->() const { return {**this}; }
  T value_or(T otherwise) const { return stored ? **this : otherwise; }
  operator std::optional<T>() const { return stored ? std::optional<T>(**this) : std::nullopt; }

  friend bool operator==(const Optional &member, std::nullopt_t) { return !member; }
  friend bool operator==(const Optional &member, const T &value) requires std::equality_comparable<T> {
    return member && *member == value;
  }

private:
  void *stored = nullptr;
};

// ---- Enumerations -----------------------------------------------------------------------------------------------

// A row of an enumeration.
template <class E> struct EnumText {
  E code;                // as records have it
  std::string_view text; // as documents spell it
};

// The texts of an enumeration, as the vocabulary spells them: EnumTexts<E>::rows.
template <class E> struct EnumTexts;

template <class E>
concept Enumeration = requires {
  EnumTexts<E>::rows;
};

// The text of a code; empty for a code that has none.
template <Enumeration E> constexpr std::string_view text(E code) {
  for (const EnumText<E> &row : EnumTexts<E>::rows)
    if (row.code == code) return row.text;
  return {};
}

// The code of a text, compared exactly.
template <Enumeration E> constexpr std::optional<E> fromText(std::string_view text) {
  for (const EnumText<E> &row : EnumTexts<E>::rows)
    if (row.text == text) return row.code;
  return std::nullopt;
}

// ---- Contexts and records ---------------------------------------------------------------------------------------

// The functions of a document, by the type that names it.
template <class T> struct Document;

template <RecordView T> class Record;

// A context that owns itself. It belongs to one thread at a time, and serves either the debug-info vocabulary or the
// others. False if there was no storage for it; calls on such a context fail with STATUS_BAD_CONTEXT.
class Context {
public:
  Context() : ctx(rtxContextCreate(nullptr)) {}
  explicit Context(const RuntimeOptions &options) : ctx(rtxContextCreate(&options)) {}
  explicit Context(RuntimeContext *owned) : ctx(owned) {} // takes it over
  Context(Context &&other) noexcept : ctx(std::exchange(other.ctx, nullptr)) {}
  Context &operator=(Context other) noexcept {
    std::swap(ctx, other.ctx);
    return *this;
  }
  ~Context() { rtxContextFree(ctx); }

  explicit operator bool() const { return ctx != nullptr; }
  RuntimeContext *get() const { return ctx; }                                     // for the C interface
  [[nodiscard]] RuntimeContext *release() { return std::exchange(ctx, nullptr); } // for the caller to free

  // Ready for the next message with the storage it has. Records go first, or are released.
  void reset() { rtxContextReset(ctx); }

  // An empty record, to be filled and encoded.
  template <RecordView T> Record<T> create() { return Record<T>(ctx, Record<T>::empty); }

  // Reads a document. Errors do not end the reading, so that a failed result may have something in partial().
  template <class T> Result<typename Document<T>::Value> decode(std::string_view bytes) {
    rtxErrClear(ctx);
    return read<T>(rtxSetInput(ctx, bytes.data(), bytes.size()));
  }

  // The same without a copy of the text, which ends with NUL and stays as it is during the call.
  template <class T> Result<typename Document<T>::Value> decodeInPlace(const char *text, std::size_t length) {
    rtxErrClear(ctx);
    return read<T>(rtxSetInputZ(ctx, text, length));
  }

  // Checks a document without building a record.
  template <class T> Outcome validate(std::string_view bytes) {
    rtxErrClear(ctx);
    int status = rtxSetInput(ctx, bytes.data(), bytes.size());
    if (status == STATUS_OK) status = Document<T>::validate(ctx);
    return {ctx, status};
  }

  // Writes a document. The text is the context's, and valid until it writes the next one.
  template <class T>
  requires requires { typename Document<T>::Argument; }
  Result<std::string_view> encode(const std::type_identity_t<typename Document<T>::Argument> &value) {
    rtxErrClear(ctx);
    int status = rtxSetOutputDynamic(ctx);
    if (status == STATUS_OK) status = Document<T>::encode(ctx, value);
    if (status != STATUS_OK) return {ctx, status};
    std::size_t length = 0;
    const char *text = rtxGetOutput(ctx, &length);
    return {ctx, status, std::string_view(text, length)};
  }
  template <RecordView T> Result<std::string_view> encode(const T &record) { return encode<T>(record); }
  template <RecordView T> Result<std::string_view> encode(const Record<T> &record) { return encode<T>(record.view()); }

private:
  template <class T> Result<typename Document<T>::Value> read(int status) {
    Result<typename Document<T>::Value> result(ctx, status);
    if (status == STATUS_OK) result.code = Document<T>::decode(ctx, result.value);
    return result;
  }

  RuntimeContext *ctx;
};

// A record of a document and all that it holds, given back to its context at its end.
template <RecordView T> class Record {
public:
  using Raw = typename T::Raw;

  struct Empty {};
  static constexpr Empty empty{};
  struct Unset {};
  static constexpr Unset unset{};

  Record(RuntimeContext *context, Empty) : ctx(context), record{} { T::initialise(ctx, &record); }
  Record(RuntimeContext *context, Unset) : ctx(context) {} // for a decoder, which sets it
  Record(Record &&other) noexcept : ctx(std::exchange(other.ctx, nullptr)), record(other.record) {}
  Record &operator=(Record other) noexcept {
    std::swap(ctx, other.ctx);
    std::swap(record, other.record);
    return *this;
  }
  ~Record() {
    if (ctx) T::dispose(ctx, &record);
  }

  T view() const { return T(record); }
  operator T() const { return view(); }
  T operator*() const { return view(); }
  Arrow<T> operator->() const { return {view()}; }
  Raw &raw() const { return record; }

  // Leaves what the record holds on the heap, which gives it back as a whole when the context is reset.
  void release() { ctx = nullptr; }

private:
  RuntimeContext *ctx;
  mutable Raw record;
};

// The view of what is a view or a record.
template <RecordView T> T viewOf(const T &view) { return view; }
template <RecordView T> T viewOf(const Record<T> &record) { return record.view(); }

// What viewOf gives for T.
template <class T> using ViewOf = decltype(viewOf(std::declval<const T &>()));

// A text or bytes that the heap of a context holds, given back at its end.
template <class T> class Owned {
public:
  explicit Owned(RuntimeContext *context) : ctx(context) {}
  Owned(Owned &&other) noexcept : ctx(std::exchange(other.ctx, nullptr)), held(other.held) {}
  Owned &operator=(Owned other) noexcept {
    std::swap(ctx, other.ctx);
    std::swap(held, other.held);
    return *this;
  }
  ~Owned() {
    if (!ctx) return;
    if constexpr (std::is_same_v<T, RtxXmlString>) {
      rtxMemHeapFreePtr(ctx, held.value);
    } else {
      rtxMemHeapFreePtr(ctx, held.bytes);
    }
  }

  using Value = std::conditional_t<std::is_same_v<T, RtxXmlString>, std::string_view, std::span<const std::uint8_t>>;

  T &raw() { return held; }
  Value operator*() const {
    if constexpr (std::is_same_v<T, RtxXmlString>) {
      return textOf(held);
    } else {
      return {held.bytes, held.length};
    }
  }
  operator Value() const { return **this; }

private:
  RuntimeContext *ctx;
  T held{};
};

// ---- What generated views are made of ---------------------------------------------------------------------------

namespace detail {

// A copy on the heap with a NUL behind it; null if there is no storage, or the text has a NUL that would end it.
inline const char *copied(RuntimeContext *ctx, std::string_view text) {
  if (!text.empty() && std::memchr(text.data(), 0, text.size())) return nullptr;
  auto *copy = static_cast<char *>(rtxMemHeapAlloc(ctx, text.size() + 1));
  if (!copy) return nullptr;
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

inline bool assign(RuntimeContext *ctx, RtxXmlString &member, std::string_view text, bool present) {
  const char *copy = copied(ctx, text);
  if (!copy) return false;
  if (present) rtxMemHeapFreePtr(ctx, member.value);
  member = {false, copy};
  return true;
}

inline bool assign(RuntimeContext *ctx, RtxHexBinary &member, std::span<const std::uint8_t> bytes, bool present) {
  if (!std::in_range<std::uint32_t>(bytes.size())) return false;
  auto *copy = static_cast<std::uint8_t *>(rtxMemHeapAlloc(ctx, bytes.size()));
  if (!copy) return false;
  if (!bytes.empty()) std::memcpy(copy, bytes.data(), bytes.size());
  if (present) rtxMemHeapFreePtr(ctx, member.bytes);
  member = {static_cast<std::uint32_t>(bytes.size()), copy};
  return true;
}

inline void clear(RuntimeContext *ctx, RtxXmlString &member) {
  rtxMemHeapFreePtr(ctx, member.value);
  member = {};
}

inline void clear(RuntimeContext *ctx, RtxHexBinary &member) {
  rtxMemHeapFreePtr(ctx, member.bytes);
  member = {};
}

// Appends a zeroed item; null, with the list as it was, if there is no storage.
template <class Raw> Raw *append(RuntimeContext *ctx, RtxList &list) {
  void *block = rtxMemHeapAlloc(ctx, sizeof(Raw));
  if (!block) return nullptr;
  Raw *item = new (block) Raw{};
  if (rtxDListAppend(ctx, &list, item)) return item;
  rtxMemHeapFreePtr(ctx, block);
  return nullptr;
}

template <class T> Optional<T> appendRecord(RuntimeContext *ctx, RtxList &list) {
  auto *item = append<typename T::Raw>(ctx, list);
  if (item) T::initialise(ctx, item);
  return Optional<T>(item);
}

template <class T, class... Rest> T &first(T &one, Rest &...) { return one; }

template <class T> void sweepItems(RuntimeContext *ctx, const RtxList &list) {
  for (const RtxListNode *node = list.head; node; node = node->next)
    T::sweep(ctx, static_cast<typename T::Raw *>(node->data));
}

inline bool appendText(RuntimeContext *ctx, RtxList &list, std::string_view text) {
  const char *copy = copied(ctx, text);
  if (!copy) return false;
  if (auto *item = append<RtxXmlString>(ctx, list)) {
    item->value = copy;
    return true;
  }
  rtxMemHeapFreePtr(ctx, copy);
  return false;
}

// Appends an item of two texts; the first may be left out.
template <class Raw>
bool appendPair(RuntimeContext *ctx, RtxList &list, std::optional<std::string_view> first, std::string_view second) {
  const char *firstCopy = first ? copied(ctx, *first) : nullptr;
  const char *secondCopy = copied(ctx, second);
  if ((firstCopy || !first) && secondCopy) {
    if (auto *item = append<Raw>(ctx, list)) {
      *item = {firstCopy, secondCopy};
      return true;
    }
  }
  rtxMemHeapFreePtr(ctx, firstCopy);
  rtxMemHeapFreePtr(ctx, secondCopy);
  return false;
}

} // namespace detail

// A record by the names of its vocabulary. Beside functions for its members a view T has some for the type:
// T::initialise makes a record empty, T::dispose gives back all that it holds, and T::visitMembers shows a visitor the
// members of one record, or those of several side by side, as long as it returns true. For that a visitor has
//   member<Shape>(name, members...)
//   optional<Shape>(name, bit, presence words..., members...)
//   selector(selectors...)                of a choice, before what it selects
//   alternative<Shape>(name, members...)  what the first selector names
// where Shape is what the member's own function returns. The name of a list whose items have none of it is empty.
template <class RawType> class View {
public:
  using Raw = RawType;

  explicit View(Raw &seen) : record(&seen) {}
  Raw &raw() const { return *record; }

protected:
  bool has(std::uint32_t bit) const { return (record->m & bit) != 0; }
  void mark(std::uint32_t bit) { record->m |= bit; }
  void unmark(std::uint32_t bit) { record->m &= ~bit; }

  // Sets an optional member that has storage of its own. False, and nothing is changed, if there is none for it.
  template <class Member, class Value>
  bool setOptional(Context &context, std::uint32_t bit, Member &member, Value value) {
    if (!detail::assign(context.get(), member, value, has(bit))) return false;
    mark(bit);
    return true;
  }
  // Gives back what such a member has.
  template <class Member> void clearOptional(Context &context, std::uint32_t bit, Member &member) {
    if (has(bit)) detail::clear(context.get(), member);
    unmark(bit);
  }

  // An optional record, made as an empty one if it is absent.
  template <RecordView T> T makeOptional(Context &context, std::uint32_t bit, typename T::Raw &member) {
    if (!has(bit)) T::initialise(context.get(), &member);
    mark(bit);
    return T(member);
  }
  // Gives back all that such a record holds.
  template <RecordView T> void disposeOptional(Context &context, std::uint32_t bit, typename T::Raw &member) {
    if (has(bit)) T::dispose(context.get(), &member);
    unmark(bit);
  }

private:
  Raw *record;
};

// ---- What generated documents are made of -----------------------------------------------------------------------

namespace detail {

template <class T, auto decoder, auto encoder, auto validator> struct RecordDocument {
  using Value = Record<T>;
  using Argument = T;
  static int decode(RuntimeContext *ctx, std::optional<Value> &value) {
    value.emplace(ctx, Value::unset);
    const int status = decoder(ctx, &value->raw());
    if (status == STATUS_READER_FAILED) { // the record was not touched
      value->release();
      value.reset();
    }
    return status;
  }
  static int encode(RuntimeContext *ctx, const T &record) { return encoder(ctx, &record.raw()); }
  static int validate(RuntimeContext *ctx) { return validator(ctx); }
};

template <auto decoder, auto encoder, auto validator> struct TextDocument {
  using Value = Owned<RtxXmlString>;
  using Argument = std::string_view;
  static int decode(RuntimeContext *ctx, std::optional<Value> &value) {
    value.emplace(ctx);
    return decoder(ctx, &value->raw());
  }
  static int encode(RuntimeContext *ctx, std::string_view text) {
    const RtxXmlString copy = {false, copied(ctx, text)};
    if (!copy.value) return text.find('\0') == text.npos ? STATUS_NO_MEMORY : STATUS_INVALID_UTF8;
    const int status = encoder(ctx, &copy);
    rtxMemHeapFreePtr(ctx, copy.value);
    return status;
  }
  static int validate(RuntimeContext *ctx) { return validator(ctx); }
};

template <auto decoder, auto encoder, auto validator> struct BytesDocument {
  using Value = Owned<RtxHexBinary>;
  using Argument = std::span<const std::uint8_t>;
  static int decode(RuntimeContext *ctx, std::optional<Value> &value) {
    value.emplace(ctx);
    return decoder(ctx, &value->raw());
  }
  static int encode(RuntimeContext *ctx, std::span<const std::uint8_t> bytes) {
    if (!std::in_range<std::uint32_t>(bytes.size())) return STATUS_LIMIT_EXCEEDED;
    const RtxHexBinary given = {static_cast<std::uint32_t>(bytes.size()), bytes.data()};
    return encoder(ctx, &given);
  }
  static int validate(RuntimeContext *ctx) { return validator(ctx); }
};

template <class E, auto decoder, auto encoder, auto validator> struct EnumDocument {
  using Value = E;
  using Argument = E;
  static int decode(RuntimeContext *ctx, std::optional<Value> &value) {
    std::uint16_t code = 0;
    const int status = decoder(ctx, &code);
    if (status == STATUS_OK) value = static_cast<E>(code);
    return status;
  }
  static int encode(RuntimeContext *ctx, E code) { return encoder(ctx, static_cast<std::uint32_t>(code)); }
  static int validate(RuntimeContext *ctx) { return validator(ctx); }
};

} // namespace detail

} // namespace imscodec

template <class T> inline constexpr bool std::ranges::enable_borrowed_range<imscodec::List<T>> = true;
template <> inline constexpr bool std::ranges::enable_borrowed_range<imscodec::Errors> = true;
