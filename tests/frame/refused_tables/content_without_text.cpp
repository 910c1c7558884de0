// text content and its member do not agree
#include "base.h"

struct Bare {
  RtxXmlString value;
};
constexpr TypeOptions bareOptions = {.name = "Bare", .module = &module, .number = 2, .content = Content::nothing};
constexpr Field bareRows[] = {CONTENT(Bare, value)};
constexpr auto bareFields = placeFields<Bare>(bareRows, bareOptions);
constexpr TypeSchema bare = makeType<Bare>(bareFields, bareOptions);
