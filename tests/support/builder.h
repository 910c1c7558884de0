// Members of records, as copies on a context's heap that may have no storage left.
#pragma once

#include "rtx.h"

#include <cstring>
#include <string>
#include <string_view>

namespace support {

class Builder {
public:
  explicit Builder(RuntimeContext *context) : ctx(context) {}

  RtxXmlString text(std::string_view text, bool cdata = false) {
    const char *copy = rtxUTF8Strdup(ctx, std::string(text).c_str());
    if (copy == nullptr) outOfMemory = true;
    return {cdata, copy};
  }

  void addText(RtxList &list, std::string_view content, bool cdata = false) {
    if (auto *entry = append<RtxXmlString>(list)) *entry = text(content, cdata);
  }

  void foreign(RtxAnyList &list, std::string_view element) { addText(list.items, element); }

  bool failed() const { return outOfMemory; } // something is missing

protected:
  // An item of zeroes at the end of a list; null if there is no storage.
  template <typename T> T *append(RtxList &list) {
    auto *item = static_cast<T *>(rtxMemHeapAlloc(ctx, sizeof(T)));
    if (item != nullptr && rtxDListAppend(ctx, &list, item) != nullptr) {
      std::memset(static_cast<void *>(item), 0, sizeof(T));
      return item;
    }
    rtxMemHeapFreePtr(ctx, item);
    outOfMemory = true;
    return nullptr;
  }

  RuntimeContext *ctx;

private:
  bool outOfMemory = false;
};

} // namespace support
