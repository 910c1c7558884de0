// The commands of the tool that work on documents.
#pragma once

#include "Schema.h"
#include "exitStatus.h"
#include "paint.h"

#include <string>
#include <vector>

namespace cli {

// What is asked of every command.
struct Request {
  std::vector<std::string> files;
  const ims::DocumentSchema *kind = nullptr; // null: by the root element
  bool json = false;
  ColorWish colors = ColorWish::automatic;
  bool stream = false; // documents come one a line instead of in files
};

ExitStatus printDocuments(const Request &request);

ExitStatus validateDocuments(const Request &request);

// Of the one file, which may hold several documents; output "-" is the standard output.
ExitStatus recodeDocuments(const Request &request, const std::string &output, bool indented);

// Of the two files: 1 if they differ, 2 if they cannot be compared.
ExitStatus compareDocuments(const Request &request);

ExitStatus newDocument(const ims::DocumentSchema &kind, const std::string &output, bool indented);

} // namespace cli
