#include "kinds.h"

#include "Catalogue.h"
#include "json.h"
#include "rtSax.h"
#include "rtXmlDecode.h"
#include "rtXmlNamespace.h"
#include "rtxError.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

namespace cli {

namespace {

using ims::DocumentSchema;

// Where the errors found here come from, as the codec's own errors tell it.
constexpr char sourcePath[] = "cli/kinds";
enum Line : int {
  lineReader = 10,
  lineTable = 20,
  lineRoot = 30
};

// The namespaces of all documents, in the order of documents: an index finds both.
std::vector<const char *> allUris() {
  std::vector<const char *> uris;
  for (const DocumentSchema *document : ims::allDocuments())
    uris.push_back(document->module->uri);
  return uris;
}

// A handler that looks at the root element and skips all that is in it.
struct RootFinder {
  RuntimeContext *context;
  std::vector<const char *> uris = allUris();
  const DocumentSchema *kind = nullptr;

  const DocumentSchema *kindOf(const char *localName, int namespaceIndex) const {
    const char *uri = namespaceIndex >= 0 ? uris[static_cast<std::size_t>(namespaceIndex)] : "";
    const DocumentSchema *byName = nullptr;
    for (const DocumentSchema *document : ims::allDocuments()) {
      if (std::strcmp(document->root, localName) != 0) continue;
      if (std::strcmp(document->module->uri, uri) == 0) return document;
      if (!byName) byName = document;
    }
    return byName;
  }

  void look(const char *localName, const char *qualifiedName) {
    const char *prefix = nullptr;
    rtXmlDecQName(context, qualifiedName, nullptr, &prefix);
    kind = kindOf(localName, rtXmlNSGetIndex(context, prefix));
    if (kind) return;
    rtxErrAddStrParm(context, "one that imscodec kinds lists");
    rtxErrAddStrParm(context, qualifiedName);
    rtxErrSetNewData(context, STATUS_ROOT_MISMATCH, sourcePath, lineRoot);
  }

  static int startElement(void *handler, const char *localName, const char *qualifiedName, const char *const *) {
    static_cast<RootFinder *>(handler)->look(localName, qualifiedName);
    return 1;
  }
  static int endElement(void *, const char *, const char *) { return 0; }
  static int characters(void *, const char *, std::size_t) { return 0; }
};

} // namespace

const DocumentSchema *kindNamed(const std::string &name) {
  for (const DocumentSchema *document : ims::allDocuments())
    if (document->root == name) return document;
  return nullptr;
}

const DocumentSchema *findKind(RuntimeContext *ctx) {
  RootFinder finder{.context = ctx};
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &finder, RootFinder::startElement, RootFinder::endElement, RootFinder::characters);
  if (!reader) {
    rtxErrSetNewData(ctx, STATUS_READER_FAILED, sourcePath, lineReader);
    return nullptr;
  }
  const int status = rtXmlNSSetURITable(ctx, finder.uris.data(), static_cast<std::uint32_t>(finder.uris.size()));
  if (status == 0) {
    rtSaxCParse(reader);
  } else {
    rtxErrSetNewData(ctx, status, sourcePath, lineTable);
  }
  rtSaxCReleaseReader(reader);
  rtXmlNSSetURITable(ctx, nullptr, 0);
  // What is wrong inside the document is for its own decoder to say.
  if (finder.kind) rtxErrClear(ctx);
  return finder.kind;
}

void printKinds(bool json) {
  if (json) {
    Json kinds = Json::array();
    for (const DocumentSchema *document : ims::allDocuments())
      kinds.push_back({{"kind", document->root},
                       {"root", document->root},
                       {"namespace", document->module->uri},
                       {"module", document->module->name}});
    printJson(kinds);
    return;
  }
  std::size_t width = std::string_view("ROOT ELEMENT").size();
  for (const DocumentSchema *document : ims::allDocuments())
    width = std::max(width, std::strlen(document->root));
  std::printf("%-*s  %s\n", static_cast<int>(width), "ROOT ELEMENT", "NAMESPACE");
  for (const DocumentSchema *document : ims::allDocuments())
    std::printf("%-*s  %s\n", static_cast<int>(width), document->root,
                *document->module->uri ? document->module->uri : "(none)");
}

} // namespace cli
