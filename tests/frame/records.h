// Records of any type, handled by their tables alone.
#pragma once

#include "Engines.h"
#include "randomText.h"

#include <memory>
#include <string>
#include <string_view>

namespace frame {

// A record of a type on a context, in storage of exactly its size. Gives back everything at its end.
class Record {
public:
  Record(RuntimeContext *context, const ims::TypeSchema &schema);
  ~Record();
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  void *data() const { return storage.get(); }
  template <class T> T &as() const { return *static_cast<T *>(data()); }
  void initialise() { ims::initRecord(ctx, type, data()); }

  // The storage is somebody else's from now on, or gone.
  void forget() { owned = false; }

private:
  struct Free {
    void operator()(void *block) const { ::operator delete(block); }
  };
  RuntimeContext *ctx;
  const ims::TypeSchema &type;
  std::unique_ptr<void, Free> storage;
  bool owned = true;
};

// A document of which this type is the root, under the name "root".
ims::DocumentSchema documentOf(const ims::TypeSchema &type);

// What printing the record under the name "r" gives.
std::string printed(const ims::TypeSchema &type, const void *record);

// Encodes into the context's growing output. status (null allowed) takes the result; null: it must succeed.
std::string encode(RuntimeContext *ctx, const ims::DocumentSchema &document, const void *value, int *status = nullptr);

// Statuses and parameters of the errors kept: "-41(bogus) -33(tns__dialog|foo)".
std::string briefErrors(RuntimeContext *ctx);

// A text on the context's heap.
RtxXmlString text(RuntimeContext *ctx, std::string_view bytes);

// A list item on the context's heap, all zero.
void *newItem(RuntimeContext *ctx, size_t size);
template <class T> T *appendItem(RuntimeContext *ctx, RtxList &list) {
  auto *item = static_cast<T *>(newItem(ctx, sizeof(T)));
  ims::appendItem(ctx, &list, item);
  return item;
}
void appendText(RuntimeContext *ctx, RtxList &list, std::string_view bytes);

// Fills an initialised record with values that are valid and come back as they are from a document.
void fillRandomly(RuntimeContext *ctx, const ims::TypeSchema &type, void *record, support::Random &random);

} // namespace frame
