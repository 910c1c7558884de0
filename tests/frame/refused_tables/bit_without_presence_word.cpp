// a presence bit without a presence word
#include "base.h"

struct Bare {
  RtxXmlString t_id;
};
constexpr const char *bareAttributes[] = {"id"};
constexpr TypeOptions bareOptions = {
    .name = "Bare", .module = &module, .number = 2, .content = Content::nothing, .attributes = bareAttributes};
constexpr Field bareRows[] = {ATTRIBUTE(Bare, t_id, .bit = 1)};
constexpr auto bareFields = placeFields<Bare>(bareRows, bareOptions);
constexpr TypeSchema bare = makeType<Bare>(bareFields, bareOptions);
