// The trace of a handler's callbacks, for a context that wants one.
#pragma once

#include "Handler.h"

#include <stdio.h>

namespace ims {

// Tells that a callback is entered or left. It makes up the callback's name, which only a trace needs.
template <class Handler>
[[gnu::cold, gnu::noinline]] void trace(Handler *handler, const char *callback, const char *element,
                                        void (*tell)(void *, const char *, const char *)) {
  char function[128];
  snprintf(function, sizeof function, "%s_%s_%s", fillsRecord<Handler> ? "QxSAX" : "QxVSAX", typeOf(handler).name,
           callback);
  tell(handler, function, element);
}

// Runs a walk, which is compiled in once, between its entry and its exit in the trace.
template <class Handler, class Walk>
inline int inTrace(Handler *handler, const char *callback, const char *element, Walk walk) {
  const bool traced = handler->context->traced;
  if (traced) [[unlikely]]
    trace(handler, callback, element, rtSaxDiagStartFunc);
  int status = walk();
  if (traced) [[unlikely]]
    trace(handler, callback, element, rtSaxDiagEndFunc);
  return status;
}

} // namespace ims
