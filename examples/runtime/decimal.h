// Decimal numbers as text, the same in every locale.
#pragma once

#include "rtxTypes.h"

#include <string_view>

namespace tiny {

// Room for any number: its digits and the zeros between them and the point.
constexpr size_t decimalSize = 400;

// Writes the shortest text that reads back as the same number, without exponent, and returns its length; 0 for what is
// no number.
size_t writeDecimal(double value, char (&out)[decimalSize]);

// Reads a decimal of XML Schema: 0, STATUS_INVALID_LEXICAL_FORM or STATUS_NO_MEMORY.
int readDecimal(RuntimeContext *ctx, std::string_view text, double &value);

} // namespace tiny
