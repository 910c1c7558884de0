// The errors of a context. Nothing is allocated before there is an error, and what was allocated is used again.
#pragma once

#include "place.h"
#include "rtxError.h"

namespace rt {

class Heap;

class ErrorList {
public:
  static constexpr uint32_t sitesKept = 16;
  static constexpr uint32_t paramsKept = 8;
  static constexpr size_t longestText = 1024;
  static constexpr size_t longestPath = 1024; // of open elements, its NUL included

  explicit ErrorList(uint32_t recordsKept) : limit(recordsKept) {}
  ErrorList(const ErrorList &) = delete;
  ErrorList &operator=(const ErrorList &) = delete;

  int first() const { return firstStatus; }
  int last() const { return lastStatus; }
  uint32_t count() const { return total; }

  // The index-th record that is kept, or null.
  const RtxError *at(uint32_t index) const;

  // Parameters of the record to come. A text that finds no storage becomes an empty one.
  void addText(Heap &heap, const char *text, size_t length);
  void addInt(int32_t value);
  void addUInt(uint32_t value);
  void dropParams();

  // Starts a record with the parameters added. The record before it is kept if there is room and storage for it.
  void start(Heap &heap, int status, const RtxErrorSite &site, const Place &place, const char *elementPath);

  // Adds a site to the newest record.
  void addSite(const RtxErrorSite &site);

  void clear();
  void destroy(Heap &heap);

private:
  // A block that only grows, and then keeps its first bytes.
  struct Store {
    char *bytes;
    size_t capacity;

    bool reserve(Heap &heap, size_t size, size_t kept);
  };

  // A record and the block that holds what it points at.
  struct KeptRecord {
    RtxError error;
    Store store;
  };

  // Parameters and the block of their texts, one behind the other, each with a NUL. A text is null until it is
  // known where the block is going to be.
  struct Params {
    RtxErrorParam list[paramsKept];
    uint32_t count;
    Store texts;
    size_t textsUsed;

    RtxErrorParam *add(RtxErrorParamKind kind);
    void drop();
  };

  void keepNewest(Heap &heap);
  bool growKept(Heap &heap);

  int firstStatus = 0;
  int lastStatus = 0;
  uint32_t total = 0;
  uint32_t limit;

  // The first records. Those beyond keptCount are storage to be used again.
  KeptRecord *kept = nullptr;
  uint32_t keptCount = 0;
  uint32_t keptCapacity = 0;

  // The newest record. It needs no storage but for its texts and its path, so that it is never lost.
  RtxError newest = {};
  RtxErrorSite newestSites[sitesKept] = {};
  Params params[2] = {}; // of the newest record and of the one to come
  uint32_t pending = 0;
};

} // namespace rt
