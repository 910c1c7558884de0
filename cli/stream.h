// Documents that come one a line as JSON strings, each answered in one line of JSON.
#pragma once

#include "commands.h"
#include "json.h"
#include "problem.h"
#include "session.h"

namespace cli {

// What a command makes of one document: the members of its answer, and what was wrong.
struct Answer {
  Json members = Json::object();
  std::vector<Problem> problems;
};
using Examine = Answer (*)(Session &session, const Source &source);

// Answers the standard input, line by line, until it ends. Nothing is kept from one line to the next.
ExitStatus answerStream(const Request &request, Examine examine);

} // namespace cli
