// What each status is called, and how its parameters are told.
#pragma once

namespace rt {

// In a detail, $1 to $9 stand for parameters; a part in brackets is left out if its parameter is empty.
struct StatusWording {
  int status;
  const char *text;
  const char *detail; // follows the text in a message
  unsigned paramCount;
};

// Null for a number that is no status.
const StatusWording *wordingOf(int status);

} // namespace rt
