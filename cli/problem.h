// What was wrong with a document: the context's errors, kept beyond the context's next call.
#pragma once

#include "json.h"
#include "paint.h"
#include "rtxContext.h"
#include "source.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace cli {

struct Problem {
  int status;
  std::string message;
  Json parameters;    // texts and numbers
  std::uint32_t line; // 0: no place
  std::uint32_t column;
  std::size_t offset;
  bool transcoded;  // the place is one of the document's UTF-8 form
  std::string path; // of open elements
  std::vector<std::pair<std::string, int>> trail;
};

// The errors of a context, oldest first.
std::vector<Problem> problemsOf(RuntimeContext *ctx);

// Gives problems their places in the file that their document was taken from.
void placeInFile(std::vector<Problem> &problems, const Source &document);

// Writes each problem as "FILE:LINE:COLUMN: error: TEXT (status NUMBER)", with the line that it is about.
void writeProblems(std::FILE *stream, const Source &source, const std::vector<Problem> &problems, ColorWish colors);

Json problemsJson(const std::vector<Problem> &problems);

} // namespace cli
