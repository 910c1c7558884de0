#include "Schema.h"

namespace ims {

namespace {

int pinnedLine(const PinnedLine *lines, uint8_t count, File file, uint8_t row, uint8_t step) {
  for (uint8_t i = 0; i < count; ++i)
    if (lines[i].file == file && lines[i].row == row && lines[i].step == step) return lines[i].line;
  return 0;
}

} // namespace

int siteLine(const TypeSchema &type, File file, uint8_t row, uint8_t step) {
  int pinned = pinnedLine(type.pinned, type.pinnedCount, file, row, step);
  return pinned != 0 ? pinned : linesPerType * type.number + stepsPerRow * row + step;
}

int siteLine(const EnumSchema &type, uint8_t step) { return linesPerType * type.number + step; }

int siteLine(const DocumentSchema &document, File file, uint8_t step) {
  int pinned = pinnedLine(document.pinned, document.pinnedCount, file, 0, step);
  return pinned != 0 ? pinned : linesPerType * (firstDocument + document.number) + step;
}

} // namespace ims
