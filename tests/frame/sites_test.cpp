// The lines that errors carry: distinct in each source, and exactly the promised ones where a number is promised.
#include "sites.h"

#include "Catalogue.h"
#include "IsComposing/QxXmlIsComposingTables.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

using namespace ims;

namespace {

std::vector<const DocumentSchema *> everyDocument() {
  std::vector<const DocumentSchema *> all;
  for (const DocumentSchema *document : allDocuments())
    all.push_back(document);
  return all;
}

TEST(Sites, NoTwoOfASourceHaveOneLine) {
  std::map<std::pair<std::string, int>, std::string> seen;
  for (const frame::Site &site : frame::sites(everyDocument())) {
    auto [other, isNew] = seen.try_emplace({site.path, site.line}, site.where);
    EXPECT_TRUE(isNew) << site.path << ":" << site.line << " is " << other->second << " and " << site.where;
    EXPECT_GT(site.line, 0);
  }
  EXPECT_GT(seen.size(), 10000u) << "the tables were walked";
}

// ---- The composing indication ---------------------------------------------------------------------------------

constexpr const char *base = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposing";
constexpr const char *enc = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposingEnc";
constexpr const char *dec = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposingDec";
constexpr const char *sax = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposingSAX";
constexpr const char *vldt = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposingVldt";

constexpr const char *root = nullptr; // the document itself

struct Promise {
  const char *path;
  const char *member; // "" is the type itself
  uint8_t step;
  int line;
};

constexpr Promise promises[] = {
    // Records
    {base, "", step::checkContext, 34},
    // Type encoder
    {enc, "", step::wrapStart, 43},
    {enc, "", step::wrapContents, 46},
    {enc, "", step::wrapEnd, 49},
    {enc, "", step::startTag, 62},
    {enc, "", step::startRoom, 64},
    {enc, "tns_state", step::validate, 83},
    {enc, "tns_state", step::write, 86},
    {enc, "tns_lastactive", step::validate, 91},
    {enc, "tns_lastactive", step::write, 95},
    {enc, "tns_contenttype", step::validate, 101},
    {enc, "tns_contenttype", step::write, 105},
    {enc, "tns_refresh", step::facet, 113},
    {enc, "tns_refresh", step::write, 117},
    {enc, "anyElems", step::write, 123},
    {enc, "", step::contentsRoom, 128},
    {enc, "", step::endTag, 140},
    {enc, "", step::endRoom, 142},
    // Document encoder
    {enc, root, step::startDocument, 165},
    {enc, root, step::wrapRootStart, 168},
    {enc, root, step::wrapRootContents, 171},
    {enc, root, step::wrapRootEnd, 174},
    {enc, root, step::rootStart, 196},
    {enc, root, step::rootDeclarations, 199},
    {enc, root, step::rootStartRoom, 202},
    {enc, root, step::rootContentsRoom, 218},
    {enc, root, step::rootEnd, 232},
    {enc, root, step::rootEndRoom, 234},
    // Decoder
    {dec, root, step::reader, 62},
    {sax, "", step::rootName, 73},
    {sax, "", step::lookup, 110},
    {sax, "", step::unexpectedAttributes, 133},
    {sax, "", step::append, 169},
    {sax, "tns_refresh", step::range, 236},
    {sax, "", step::content, 251},
    // Validator
    {vldt, root, step::reader, 295},
    {vldt, "", step::rootName, 72},
    {vldt, "", step::lookup, 109},
    {vldt, "", step::unexpectedAttributes, 123},
    {vldt, "", step::append, 159},
    {vldt, "tns_refresh", step::range, 218},
    {vldt, "", step::content, 231},
};

uint8_t rowNamed(const TypeSchema &type, std::string_view member) {
  for (uint8_t i = 0; i < type.fieldCount; ++i)
    if (member == type.fields[i].name) return static_cast<uint8_t>(i + 1);
  EXPECT_EQ(member, "");
  return 0;
}

File fileWithPath(const ModuleSchema &module, std::string_view path) {
  int file = 0;
  while (file < fileCount - 1 && path != module.paths[file])
    ++file;
  EXPECT_EQ(path, module.paths[file]);
  return static_cast<File>(file);
}

TEST(Sites, OfTheComposingIndicationAreAsPromised) {
  static_assert(std::size(promises) == 42);
  for (const Promise &promise : promises) {
    File file = fileWithPath(*tns__isComposingSchema.module, promise.path);
    int line = promise.member ? siteLine(tns__isComposingSchema, file, rowNamed(tns__isComposingSchema, promise.member),
                                         promise.step)
                              : siteLine(tns_isComposingDocument, file, promise.step);
    EXPECT_EQ(line, promise.line) << promise.path << " " << (promise.member ? promise.member : "root");
  }
}

TEST(Sites, OfTheComposingIndicationBelowAThousandAreThePromisedOnes) {
  std::set<std::pair<std::string, int>> promised;
  for (const Promise &promise : promises)
    promised.emplace(promise.path, promise.line);
  std::set<std::pair<std::string, int>> pinned;
  for (const frame::Site &site : frame::sites({&tns_isComposingDocument}))
    if (site.line < linesPerType) pinned.emplace(site.path, site.line);
  EXPECT_EQ(pinned, promised);
}

} // namespace
