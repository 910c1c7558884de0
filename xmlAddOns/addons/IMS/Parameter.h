// Parameters of errors about values, shared by encoders and handlers.
#pragma once

#include "Schema.h"

namespace ims {

// Adds "Type.member" as a text parameter of the next error.
void addMemberParameter(RuntimeContext *ctx, const TypeSchema &type, const char *member);

// Whether the schema's range leaves a number out.
constexpr bool isOutOfRange(const Field &field, uint32_t value) {
  return (field.minimum != 0 && value < field.minimum) || (field.maximum != 0 && value > field.maximum);
}

} // namespace ims
