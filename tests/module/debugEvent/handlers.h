// Handlers of debug information that tests drive or watch.
#pragma once

#include "debugInfo.h"
#include "handlerChain.h"

#include <cstring>
#include <type_traits>

namespace debugInfo {

template <typename Handler> inline constexpr bool fills = std::is_same_v<Handler, SaxTypeHandler>;

template <typename Handler> const RtSaxHandler &callbacksOf(const RecordType &type) {
  return fills<Handler> ? type.filling : type.checking;
}

template <typename Handler>
int initHandler(RuntimeContext *ctx, const RecordType &type, Handler &handler, Value &value, int32_t level = 0) {
  if constexpr (fills<Handler>) {
    return type.initFilling(ctx, &handler, value, level);
  } else {
    return type.initChecking(ctx, &handler, level);
  }
}

// A handler of a document's type on a record of its own, told events by hand.
template <typename Handler> class Told {
public:
  Told(RuntimeContext *context, const Document &document)
      : ctx(context), value(context, document), callbacks(callbacksOf<Handler>(*document.type)) {
    value.init();
    std::memset(&handler, 0xA5, sizeof handler);
    initialised = initHandler<Handler>(ctx, *document.type, handler, value);
  }
  ~Told() { support::releaseHandlers(ctx, handler); }
  Told(const Told &) = delete;
  Told &operator=(const Told &) = delete;

  int start(const char *qualifiedName, const char *const *attributes = nullptr) {
    const char *colon = std::strchr(qualifiedName, ':');
    return callbacks.startElement(&handler, colon == nullptr ? qualifiedName : colon + 1, qualifiedName, attributes);
  }
  int text(std::string_view bytes) { return callbacks.characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *qualifiedName) {
    const char *colon = std::strchr(qualifiedName, ':');
    return callbacks.endElement(&handler, colon == nullptr ? qualifiedName : colon + 1, qualifiedName);
  }
  // An element with text alone.
  void child(const char *name, std::string_view content) {
    EXPECT_EQ(start(name), 0);
    EXPECT_EQ(text(content), 0);
    EXPECT_EQ(end(name), 0);
  }

  RuntimeContext *ctx;
  Held value;
  RtSaxHandler callbacks;
  Handler handler;
  int initialised;
};

} // namespace debugInfo
