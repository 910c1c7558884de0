// What reading a document came to, as text that a person can compare.
#pragma once

#include "rtx.h"

#include <functional>
#include <string>
#include <string_view>

namespace support {

struct Reading {
  int status;
  std::string record; // as the module shows its records
  std::string errors; // as the module shows its errors
};

// Gives document to the context, lets read read it, and complains if that leaves something on the context's heap.
Reading readDocument(RuntimeContext *ctx, const std::string &document,
                     const std::function<Reading(RuntimeContext *ctx)> &read);

// The same on a context of its own.
Reading readDocument(const std::string &document, const std::function<Reading(RuntimeContext *ctx)> &read);

// As errors, of a place in a source that begins with stem its ending alone: "-41(bogus)@runtime/reader<SAX".
std::string errorsBySource(RuntimeContext *ctx, std::string_view stem);

// "-44(abc,tns__control,depth); -41(x)": the records of a context without the places that they name.
enum class ParserReason {
  shown,
  omitted // of a parse failure: its text is the parser's
};
std::string errorsWithoutPlaces(RuntimeContext *ctx, ParserReason reason = ParserReason::shown);

// Errors by source of a decoder as its validator records them.
std::string byValidator(std::string errors);

// The status that a call returns that records these errors.
int firstStatus(const std::string &errors);

} // namespace support
