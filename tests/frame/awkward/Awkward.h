// Record types whose tables use everything that tables can say, for the tests of the engines: those of the library
// that do, and more in a namespace of their own, so that nothing here meets a name of the library.
//
// A record and its rows stand in the sources beside this one, by vocabulary; awkwardTypes and awkwardDocuments list
// them all.
#pragma once

#include "Engines.h"
#include "SchemaBuilder.h"

#include <span>

// Declares the schema of a record of namespace awkward.
#define AWKWARD_SCHEMA(Record)                                                                                         \
  namespace awkward {                                                                                                  \
  extern const ims::TypeSchema Record##Schema;                                                                         \
  }                                                                                                                    \
  template <> struct ims::SchemaOf<awkward::Record> {                                                                  \
    static constexpr bool exists = true;                                                                               \
    static constexpr const ims::TypeSchema *schema = &awkward::Record##Schema;                                         \
  }

// Defines it from <Record>Rows and <Record>Options.
#define AWKWARD_DEFINE(Record)                                                                                         \
  namespace {                                                                                                          \
  constexpr auto Record##Fields = ims::placeFields<Record>(Record##Rows, Record##Options);                             \
  }                                                                                                                    \
  constexpr ims::TypeSchema Record##Schema = ims::makeType<Record>(Record##Fields, Record##Options);

namespace awkward {

// One set of callbacks serves every type: a handler knows its table.
template <class Handler>
int onStart(void *handler, const char *localName, const char *qualifiedName, const char *const *attributes) {
  auto *own = static_cast<Handler *>(handler);
  return ims::inTrace(own, "onStart", localName,
                      [=] { return ims::walkStart(own, localName, qualifiedName, attributes); });
}
template <class Handler> int onEnd(void *handler, const char *localName, const char *qualifiedName) {
  auto *own = static_cast<Handler *>(handler);
  return ims::inTrace(own, "onEnd", localName, [=] { return ims::walkEnd(own, localName, qualifiedName); });
}
template <class Handler> int onCharacters(void *handler, const char *bytes, size_t length) {
  auto *own = static_cast<Handler *>(handler);
  return ims::inTrace(own, "onCharacters", nullptr, [=] { return ims::walkCharacters(own, bytes, length); });
}

inline constexpr ims::HandlerCallbacks decoding = {onStart<SaxTypeHandler>, onEnd<SaxTypeHandler>,
                                                   onCharacters<SaxTypeHandler>};
inline constexpr ims::HandlerCallbacks validating = {onStart<VsaxTypeHandler>, onEnd<VsaxTypeHandler>,
                                                     onCharacters<VsaxTypeHandler>};

std::span<const ims::TypeSchema *const> awkwardTypes();
std::span<const ims::EnumSchema *const> awkwardEnumerations();
std::span<const ims::DocumentSchema *const> awkwardDocuments();

} // namespace awkward
