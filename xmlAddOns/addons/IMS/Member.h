// Access to the members of a record that a table describes.
#pragma once

#include "Schema.h"

namespace ims {

template <class Member> Member &memberAt(void *record, const Field &field) {
  return *reinterpret_cast<Member *>(static_cast<char *>(record) + field.offset);
}
template <class Member> const Member &memberAt(const void *record, const Field &field) {
  return *reinterpret_cast<const Member *>(static_cast<const char *>(record) + field.offset);
}

// Every kind of list is the runtime's list behind a C type of its own.
inline RtxList &listAt(void *record, const Field &field) { return memberAt<RtxList>(record, field); }
inline const RtxList &listAt(const void *record, const Field &field) { return memberAt<RtxList>(record, field); }

inline uint32_t &presenceOf(void *record) { return *static_cast<uint32_t *>(record); }
inline uint32_t presenceOf(const void *record) { return *static_cast<const uint32_t *>(record); }

// Whether an optional field is present; a field without a presence bit always is.
inline bool isPresent(const Field &field, const void *record) {
  return field.bit == 0 || has(field, required) || (presenceOf(record) & field.bit) != 0;
}

// The selector of a choice, its first member.
inline uint16_t &selectorOf(void *choice) { return *static_cast<uint16_t *>(choice); }
inline uint16_t selectorOf(const void *choice) { return *static_cast<const uint16_t *>(choice); }

// The alternative that a choice holds, or null.
inline const Field *alternativeOf(const TypeSchema &type, const void *choice) {
  uint16_t selector = selectorOf(choice);
  return selector >= 1 && selector <= type.fieldCount ? &type.fields[selector - 1] : nullptr;
}

struct FieldRange {
  const Field *first;
  const Field *last;
  const Field *begin() const { return first; }
  const Field *end() const { return last; }
};
// The fields that stand for what an element contains; they come first.
inline FieldRange contentOf(const TypeSchema &type) { return {type.fields, type.fields + type.contentCount}; }
// Its attributes follow them.
inline FieldRange attributesOf(const TypeSchema &type) {
  const Field *first = type.fields + type.contentCount;
  return {first, first + type.attributeCount};
}
inline FieldRange fieldsOf(const TypeSchema &type) { return {type.fields, type.fields + type.fieldCount}; }

} // namespace ims
