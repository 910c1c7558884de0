// The trace of a handler's callbacks, for a context that wants one.
#pragma once

#include "Handler.h"

#include <stdio.h>

namespace ims {

// Runs a walk between its entry and its exit in the trace. Makes up the callback's name, which only a trace needs. The
// walk should be a function that is not inline, or it is compiled in twice.
template <class Handler, class Walk>
[[gnu::cold, gnu::noinline]] int inTrace(Handler *handler, const char *callback, const char *element, Walk walk) {
  char function[128];
  snprintf(function, sizeof function, "%s_%s_%s", fillsRecord<Handler> ? "QxSAX" : "QxVSAX", typeOf(handler).name,
           callback);
  rtSaxDiagStartFunc(handler, function, element);
  int status = walk();
  rtSaxDiagEndFunc(handler, function, element);
  return status;
}

} // namespace ims
