// The places in the sources of this module that its error records name, as they are known to those who read logs.
#pragma once

#include <iterator>
#include <string>

namespace composing {

struct PinnedLine {
  const char *source; // the ending of QxXmlIsComposing in the name of the source
  int line;

  std::string file() const { return std::string("xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposing") + source; }
  std::string text() const { return file() + ":" + std::to_string(line); }
};

inline constexpr PinnedLine pinnedLines[] = {
    {"", 34},     {"Enc", 43},   {"Enc", 46},   {"Enc", 49},   {"Enc", 62},   {"Enc", 64},   {"Enc", 83},
    {"Enc", 86},  {"Enc", 91},   {"Enc", 95},   {"Enc", 101},  {"Enc", 105},  {"Enc", 113},  {"Enc", 117},
    {"Enc", 123}, {"Enc", 128},  {"Enc", 140},  {"Enc", 142},  {"Enc", 165},  {"Enc", 168},  {"Enc", 171},
    {"Enc", 174}, {"Enc", 196},  {"Enc", 199},  {"Enc", 202},  {"Enc", 218},  {"Enc", 232},  {"Enc", 234},
    {"Dec", 62},  {"SAX", 73},   {"SAX", 110},  {"SAX", 133},  {"SAX", 169},  {"SAX", 236},  {"SAX", 251},
    {"Vldt", 72}, {"Vldt", 109}, {"Vldt", 123}, {"Vldt", 159}, {"Vldt", 218}, {"Vldt", 231}, {"Vldt", 295},
};
static_assert(std::size(pinnedLines) == 42);

} // namespace composing
