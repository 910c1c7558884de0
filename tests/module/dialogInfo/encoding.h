// What the tests of writing dialog state share: what complete records come to, and what writing left behind.
#pragma once

#include "dialogs.h"
#include "documentReading.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace dialogs {

using support::errorsWithoutPlaces;
using support::occurrences;

inline const std::string ours = namespaceUri;
inline const std::string oursAsTns = " xmlns:tns=\"" + ours + "\"";

// ---- What complete records come to ----------------------------------------------------------------------------

// How a type is written: its attributes and its children with their presence bits. "~" stands for the prefix of
// children and its colon.
struct Shape {
  Parts attributes;
  std::string declarations;
  Parts contents;
  bool tagStaysOpen = true; // types without attributes close their start tag at once

  std::string attributesOf(uint32_t m) const { return present(attributes, m); }
  std::string contentsOf(uint32_t m) const { return present(contents, m); }
  uint32_t bits() const { return allBits(attributes) | allBits(contents); }

  // An element with all that the shape has, or with these bits.
  std::string element(const std::string &name, uint32_t m = ~0u) const {
    const std::string start = "<" + name + attributesOf(m) + declarations;
    const std::string content = contentsOf(m);
    if (tagStaysOpen && content.empty()) return start + "/>";
    return start + ">" + content + "</" + name + ">";
  }
};

template <typename T> const Shape &shapeOf();
template <> const Shape &shapeOf<tns__state>();
template <> const Shape &shapeOf<tns__dialog_replaces>();
template <> const Shape &shapeOf<tns_nameaddr>();
template <> const Shape &shapeOf<tns__dialog_route_set>();
template <> const Shape &shapeOf<tns_participant_target_param>();
template <> const Shape &shapeOf<tns_participant_target>();
template <> const Shape &shapeOf<tns_sessd>();
template <> const Shape &shapeOf<tns_participant>();
template <> const Shape &shapeOf<tns__dialog>();
template <> const Shape &shapeOf<tns__dialog_info>();

// The document of a complete record.
template <typename T> std::string completeDocument(uint32_t m = ~0u) {
  const Shape &shape = shapeOf<T>();
  const std::string name = "tns:"s + Document<T>::root;
  // The root's declarations stand first: those of the record that holds the namespace's as well.
  return replaced("<" + name + shape.declarations + oursAsTns + shape.attributesOf(m) + ">" + shape.contentsOf(m), "~",
                  "tns:") +
         "</" + name + ">";
}

// ---- Writing --------------------------------------------------------------------------------------------------

template <typename T> std::string encodedElement(RuntimeContext *ctx, T *record, const char *name = "e") {
  return support::encoded(ctx, [=](RuntimeContext *c) { return Functions<T>::encode(c, record, name, nullptr); });
}

// What was written of an encoding with this status; it need not end as one of the library's functions ends.
template <typename Encode> std::string encodedInPart(RuntimeContext *ctx, int status, Encode encode) {
  rtxErrClear(ctx);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encode(ctx), status);
  return support::outputText(ctx);
}

// The lines of the only record's trail, having checked that they are all of the encoders' source.
std::vector<int> trail(RuntimeContext *ctx);

} // namespace dialogs
