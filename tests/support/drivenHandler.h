// A handler told events by hand and without a reader, as a host may drive it.
#pragma once

#include "record.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace support {

template <typename Handler> inline constexpr bool fillsRecord = std::is_same_v<Handler, SaxTypeHandler>;

// Calls test<T, Kind>() for each of the types and both kinds of its handlers.
template <typename... Types, typename Test> void forEachHandler(const Test &test) {
  forEachType<Types...>([&]<typename T>() {
    const auto run = [&]<typename Kind>(const char *kind) {
      SCOPED_TRACE(kind);
      test.template operator()<T, Kind>();
    };
    run.template operator()<typename Functions<T>::Filling>("filling");
    run.template operator()<typename Functions<T>::Checking>("checking");
  });
}

// A handler of a type with a record of its own, in storage that had a pattern in it.
template <typename T, typename Kind> class DrivenHandler {
public:
  explicit DrivenHandler(RuntimeContext *context, int32_t level = 0) : record(context), ctx(context) {
    std::memset(static_cast<void *>(&handler), pattern, sizeof handler);
    EXPECT_EQ(Kind::init(ctx, &handler, record, level), 0);
  }
  ~DrivenHandler() { rtxMemHeapFreePtr(ctx, handler.delegateStorage); }
  DrivenHandler(const DrivenHandler &) = delete;
  DrivenHandler &operator=(const DrivenHandler &) = delete;

  int start(const char *name, const char *const *attributes = nullptr) {
    return Kind::start(&handler, name, name, attributes);
  }
  int text(std::string_view bytes) { return Kind::characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *name) { return Kind::end(&handler, name, name); }

  Record<T> record;
  typename Kind::Handler handler;

private:
  RuntimeContext *ctx;
};

struct Callbacks {
  RtSaxStartElement start;
  RtSaxCharacters characters;
  RtSaxEndElement end;
};

// Complains unless a handler is as its init leaves it: these callbacks, this level, nothing begun, nothing collected.
// record is what it is to fill, and counts for a SaxTypeHandler alone.
template <typename Handler>
void expectFresh(RuntimeContext *ctx, const Handler &handler, const Callbacks &callbacks, const void *record,
                 int32_t level) {
  EXPECT_EQ(handler.startElement, callbacks.start);
  EXPECT_EQ(handler.characters, callbacks.characters);
  EXPECT_EQ(handler.endElement, callbacks.end);
  EXPECT_EQ(handler.release, nullptr);
  EXPECT_NE(handler.delegateStorage, nullptr);
  EXPECT_EQ(handler.context, ctx);
  EXPECT_EQ(handler.rootName, nullptr);
  EXPECT_EQ(handler.level, level);
  EXPECT_EQ(handler.startLevel, level);
  EXPECT_EQ(handler.elementId, 0);
  EXPECT_EQ(handler.contentState, 0);
  EXPECT_EQ(handler.seenRequired, 0u);
  EXPECT_EQ(handler.delegate, nullptr);
  EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start) << "the collection buffer is empty";
  if constexpr (fillsRecord<Handler>) {
    EXPECT_EQ(handler.record, record);
  }
}

// The functions that a context's trace tells of: "+f" entered, "-f" left.
struct Trace {
  std::vector<std::string> log;

  void traceOf(RuntimeOptions &options) {
    options.trace = note;
    options.traceUser = this;
  }

private:
  static void note(void *self, bool enter, const char *function, const char *) {
    static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + std::string(function));
  }
};

} // namespace support
