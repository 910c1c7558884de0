// The namespace URIs of the modules, in the order that element tables index.
#pragma once

#include "QxXmlIMS.h"

namespace ims {

enum NamespaceIndex : int8_t {
  noNamespace = -1,
  commonPolicyNamespace = 0,
  pocSettingsNamespace = 1,
  isComposingNamespace = 2,
  simpleFilterNamespace = 3,
  dialogInfoNamespace = 4,
  debugInfoNamespace = 0 // in a table of its own
};

inline constexpr uint32_t imsNamespaceCount = 5;
inline constexpr uint32_t debugNamespaceCount = 1;

// A family of modules that share a table of URIs.
struct NamespaceFamily {
  const char *const *uris; // the constant table, which decoders install
  uint32_t count;
  const char *const *(*registry)(RuntimeContext *ctx); // the context's own table, which encoders install
};

extern const NamespaceFamily imsNamespaces;
extern const NamespaceFamily debugNamespaces;

} // namespace ims
