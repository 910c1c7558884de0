// The table of modules in ARCHITECTURE.md, counted from the tables, the headers and the list of exports. After a change
// that is meant, run this test with IMSCODEC_UPDATE_GOLDEN=1 in the environment, which rewrites it.
#include "Catalogue.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace ims;

namespace {

constexpr const char *architecture = IMSCODEC_SOURCE_DIR "/ARCHITECTURE.md";
constexpr const char *codecFolder = IMSCODEC_SOURCE_DIR "/xmlAddOns/addons/IMS/";

std::string contents(const std::string &path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(file) << path;
  return text.str();
}

// The functions that a header declares.
std::set<std::string> declared(const std::string &header) {
  static const std::regex prototype(R"(QX_API [^;(]*?\b(Qx\w+)\()");
  const std::string text = contents(codecFolder + header);
  std::set<std::string> names;
  for (std::sregex_iterator found(text.begin(), text.end(), prototype), end; found != end; ++found)
    names.insert((*found)[1]);
  return names;
}

struct Module {
  size_t documents = 0;
  std::set<const TypeSchema *> types;
  std::set<const EnumSchema *> enumerations;
  size_t fields = 0;
  size_t states = 0;
};

void add(Module &module, const EnumSchema *enumeration) {
  if (enumeration) module.enumerations.insert(enumeration);
}

void add(Module &module, const TypeSchema &type) {
  if (!module.types.insert(&type).second) return;
  module.fields += type.fieldCount;
  module.states += size_t{type.elementCount} * type.stateCount;
  for (size_t i = 0; i < type.fieldCount; ++i) {
    const Field &field = type.fields[i];
    if (field.kind == Kind::enumeration) add(module, field.enumeration);
    if (field.kind == Kind::record || field.kind == Kind::recordList || field.kind == Kind::choice ||
        field.kind == Kind::choiceList)
      add(module, *field.type);
  }
}

std::string table() {
  std::vector<const ModuleSchema *> order;
  std::map<const ModuleSchema *, Module> modules;
  for (const DocumentSchema *document : allDocuments()) {
    if (modules.count(document->module) == 0) order.push_back(document->module);
    Module &module = modules[document->module];
    ++module.documents;
    if (document->type) add(module, *document->type);
    if (document->simple) add(module, document->simple->enumeration);
  }

  std::ostringstream text;
  text << "| module | documents | record types | enumerations | field rows | content states | functions |\n"
          "|---|---|---|---|---|---|---|\n";
  const size_t registry = declared("QxXmlIMS.h").size();
  text << "| registries | - | - | - | - | - | " << registry << " |\n";
  size_t documents = 0, types = 0, enumerations = 0, fields = 0, states = 0, functions = registry;
  for (const ModuleSchema *schema : order) {
    const Module &module = modules[schema];
    const std::string name = schema->name;
    const size_t own = declared(name + "/QxXml" + name + ".h").size();
    text << "| `" << name << "` | " << module.documents << " | " << module.types.size() << " | "
         << module.enumerations.size() << " | " << module.fields << " | " << module.states << " | " << own << " |\n";
    documents += module.documents;
    types += module.types.size();
    enumerations += module.enumerations.size();
    fields += module.fields;
    states += module.states;
    functions += own;
  }
  text << "| all | " << documents << " | " << types << " | " << enumerations << " | " << fields << " | " << states
       << " | " << functions << " |\n";
  return text.str();
}

TEST(Architecture, CountsWhatTheTablesHold) {
  const std::string text = contents(architecture);
  const std::string head = "| module | documents |";
  const size_t begin = text.find(head);
  ASSERT_NE(begin, std::string::npos);
  const size_t end = text.find("\n\n", begin) + 1;
  const std::string counted = table();
  if (std::getenv("IMSCODEC_UPDATE_GOLDEN"))
    std::ofstream(architecture) << text.substr(0, begin) << counted << text.substr(end);
  else
    EXPECT_EQ(text.substr(begin, end - begin), counted);
}

TEST(Headers, DeclareEveryExportedFunctionAndNoOther) {
  std::set<std::string> all = declared("QxXmlIMS.h");
  std::set<const ModuleSchema *> modules;
  for (const DocumentSchema *document : allDocuments()) {
    if (!modules.insert(document->module).second) continue;
    const std::string name = document->module->name;
    all.merge(declared(name + "/QxXml" + name + ".h"));
  }
  std::set<std::string> exported;
  std::istringstream lines(contents(IMSCODEC_GOLDEN_DIR "/codec.exports"));
  for (std::string line; std::getline(lines, line);)
    exported.insert(line);
  EXPECT_EQ(all, exported);
}

} // namespace
