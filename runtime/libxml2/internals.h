// What a context keeps behind its public members. Each part is described where it is defined.
#pragma once

#include "encodeState.h"
#include "error.h"
#include "heap.h"
#include "namespace.h"
#include "rtxContext.h"

struct RtSaxReader;

struct RtxInternals {
  RtxInternals(RuntimeContext *owner, const RuntimeOptions &chosen, const rt::SystemAllocator &allocator);

  RuntimeOptions options;
  rt::Heap heap;
  rt::ErrorList errors;
  rt::NamespaceStack namespaces;
  rt::EncodeState encode;
  RtxReaderInfo readerInfo; // what RuntimeContext::reader points at; its buffer is kept between readers

  RtSaxReader *reader = nullptr; // kept and reset between documents, made by the first rtSaxCCreateXmlReader
  bool readerActive = false;     // between its creation and its release

  // The input as rtxSetInput left it: a copy in a kept block, or the caller's bytes.
  char *inputCopy = nullptr;
  size_t inputCapacity = 0;
  bool inputTerminated = false; // a NUL stands behind ctx->buffer.data[ctx->buffer.size]

  // The growing output buffer, kept between documents.
  char *output = nullptr;
  size_t outputCapacity = 0;
  bool bufferIsOutput = false; // ctx->buffer is an output: there is nothing to read
};
