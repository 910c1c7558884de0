// What a context keeps behind the members that its contract names.
#pragma once

#include "characters.h"
#include "encoder.h"
#include "errors.h"
#include "heap.h"
#include "namespaces.h"
#include "reader.h"
#include "rtxContext.h"
#include "storage.h"

enum class Direction {
  none,
  input,
  output
};

struct RtxInternals {
  RuntimeOptions options;
  tiny::System system;
  tiny::Heap heap;
  tiny::Errors errors;
  tiny::Namespaces namespaces;
  tiny::OpenTag openTag;
  tiny::Array<char> openUri[2]; // of the open tag's namespace, and of the one before
  tiny::Array<char> prefix;     // of the qualified name split last
  uint64_t fragments;           // foreign elements captured so far
  Direction direction;          // what the context was last given
  std::string_view input;
  tiny::Array<char> inputCopy;
  tiny::Array<char> output; // that grows
  RtSaxReader reader;
};

namespace tiny {

// Whether this is a context: its signature is its own address in disguise, so that a copy is none.
constexpr uintptr_t mark = 0x7E57C0DE;
inline bool usable(const RuntimeContext *ctx) {
  return ctx && ctx->signature == (reinterpret_cast<uintptr_t>(ctx) ^ mark);
}

inline std::string_view bufferText(const RuntimeContext *ctx) {
  return {ctx->buffer.data ? ctx->buffer.data : "", ctx->buffer.data ? ctx->buffer.size : 0};
}

// Appends a copy of a declaration to a record's list: 0, or STATUS_NO_MEMORY with the list unchanged.
int addDeclaration(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri);

// Adds a text as a parameter of the next record.
void addText(RuntimeContext *ctx, std::string_view text);

// Records an error of the runtime's own at an offset of the input. Returns status.
int recordAt(RuntimeContext *ctx, int status, int line, size_t offset);

} // namespace tiny
