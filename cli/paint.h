// Colours of a terminal.
#pragma once

#include <cstdio>
#include <string>

namespace cli {

enum class ColorWish {
  automatic, // on a terminal, unless the environment has NO_COLOR
  always,
  never
};

// Marks texts for one output stream, or leaves them as they are.
class Paint {
public:
  Paint(ColorWish wish, std::FILE *stream);

  std::string place(const std::string &text) const;   // where something is
  std::string error(const std::string &text) const;   // what is bad, or gone
  std::string success(const std::string &text) const; // what is good, new, or pointed at

private:
  bool wanted;
};

} // namespace cli
