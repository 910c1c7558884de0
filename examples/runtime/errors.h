// The error records of a context.
#pragma once

#include "rtxError.h"
#include "storage.h"

namespace tiny {

// Where the records come from that the runtime makes itself: one path, and a line for each kind.
constexpr const char *readerPath = "runtime/reader";
enum ReaderLine {
  lineElement = 1,
  lineMissingAttribute,
  lineUnknownAttribute,
  lineNotWellFormed,
  lineLimit,
  lineStorage,
  lineSimpleRoot,
  lineSimpleElement,
  lineSimpleStorage,
  lineAnyStorage,
  lineInput
};

// A place in the input, of the errors that have one. The path belongs to the record.
struct Place {
  uint32_t line;
  uint32_t column;
  size_t offset;
  char *elementPath;
};

struct Record {
  static constexpr uint32_t mostParams = 8; // more than any error has
  static constexpr uint32_t mostSites = 16;

  RtxError error; // as hosts see it
  RtxErrorParam params[mostParams];
  RtxErrorSite sites[mostSites];
  Record *next;

  void addSite(const char *path, int line);
  void destroy(System &system); // the texts
};

// The first records are kept, and the newest. Storage for the next record is taken before it is needed, so that a
// first error that comes for lack of storage has a record, too.
class Errors {
public:
  bool prepare(System &system);
  void addParameter(System &system, RtxErrorParam parameter, size_t length);
  void start(System &system, uint32_t kept, int status, const char *path, int line, const Place &place);
  void clear(System &system);
  void destroy(System &system);
  void dropParameters(System &system);
  const Record *at(uint32_t index) const;

  Record *newest; // null: there is none
  uint32_t count;
  int first;

private:
  Record *nextSlot(System &system, uint32_t kept);

  Record *head; // the ones kept
  Record *tail;
  uint32_t keptCount;
  Record *spare;
  Record last; // the newest, when it is not kept
  RtxErrorParam pending[Record::mostParams];
  uint32_t pendingCount;
};

} // namespace tiny
