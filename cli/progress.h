// How far the tool is, on a terminal.
#pragma once

#include <cstddef>

namespace cli {

// A bar in the last line of the standard error stream. Nothing is shown unless that is a terminal and there is enough
// to do. The bar has to be hidden before anything else is written.
class Progress {
public:
  Progress(std::size_t total, std::size_t least);

  void show(std::size_t done);
  void hide();

private:
  std::size_t all;
  bool wanted;
  bool visible = false;
};

} // namespace cli
