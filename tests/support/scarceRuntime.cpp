// The runtime's functions that need storage, as the linker's --wrap option sends the codec's calls here: each call asks
// the fault plan first. The runtime's own allocations are too few and too large to reach every place where the codec
// may find that there is none left.
#include "scarceRuntime.h"

#include "faultPlan.h"
#include "rtx.h"

namespace {

std::set<std::string_view> refused;

bool refuses(std::string_view function) {
  if (!support::faultPlan().refuseNext()) return false;
  refused.insert(function);
  return true;
}

} // namespace

const std::set<std::string_view> &support::refusedFunctions() { return refused; }

// Name, result on failure, parameters, arguments.
#define SCARCE(name, Result, failure, parameters, arguments)                                                           \
  extern "C" Result __real_##name parameters;                                                                          \
  extern "C" Result __wrap_##name parameters;                                                                          \
  Result __wrap_##name parameters { return refuses(#name) ? failure : __real_##name arguments; }

SCARCE(rtxMemHeapAlloc, void *, nullptr, (RuntimeContext * ctx, size_t size), (ctx, size))
SCARCE(rtxDListAppend, RtxListNode *, nullptr, (RuntimeContext * ctx, RtxList *list, void *data), (ctx, list, data))
SCARCE(rtxUTF8Strdup, char *, nullptr, (RuntimeContext * ctx, const char *text), (ctx, text))
SCARCE(rtxMemBufAppend, int, STATUS_NO_MEMORY, (RtxMemBuf * buffer, const char *bytes, size_t length),
       (buffer, bytes, length))
SCARCE(rtXmlDecXmlStr, int, STATUS_NO_MEMORY, (RuntimeContext * ctx, RtxXmlString *text), (ctx, text))
SCARCE(rtXmlNSPush, int, STATUS_NO_MEMORY, (RuntimeContext * ctx), (ctx))
SCARCE(rtXmlNSSetURITable, int, STATUS_NO_MEMORY, (RuntimeContext * ctx, const char *const *table, uint32_t count),
       (ctx, table, count))
SCARCE(rtXmlNSSetNamespace, int, STATUS_NO_MEMORY,
       (RuntimeContext * ctx, RtxNsDeclList *list, const char *prefix, const char *uri, bool override),
       (ctx, list, prefix, uri, override))
SCARCE(SAXAnyInit, int, STATUS_NO_MEMORY, (RuntimeContext * ctx, void *block, RtxXmlString *entry, int32_t level),
       (ctx, block, entry, level))
SCARCE(rtxCheckBuffer, int, STATUS_NO_MEMORY, (RuntimeContext * ctx, size_t count), (ctx, count))
