// The bytes of a text that markup cannot hold as they are.
#pragma once

namespace tiny {

// The reference that is written for a byte, or null. Line ends and tabs are those that a reader would change.
inline const char *referenceFor(char c, bool inAttribute) {
  switch (c) {
  case '&': return "&amp;";
  case '<': return "&lt;";
  case '>': return "&gt;";
  case '\r': return "&#13;";
  case '\n': return inAttribute ? "&#10;" : nullptr;
  case '\t': return inAttribute ? "&#9;" : nullptr;
  case '"': return inAttribute ? "&quot;" : nullptr;
  default: return nullptr;
  }
}

} // namespace tiny
