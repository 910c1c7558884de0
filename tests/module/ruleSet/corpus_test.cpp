// Rule sets from the field, where a folder of them is named by IMSCODEC_CORPUS. Asserted is what holds for any body: it
// is read without complaint exactly if it is in order by the rules in words, and what was read so is written back
// unchanged in meaning. Where IMSCODEC_SCHEMAS names a folder of schemas, the written ones are valid if they were.
#include "reading.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

using namespace reading;
using support::Context;
using support::XmlElement;

namespace {

std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string folderIn(const char *variable) {
  const char *value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

// ---- The rules in words ---------------------------------------------------------------------------------------

bool isOurs(const XmlElement &element) { return element.uri == namespaceUri || element.uri.empty(); }
bool isForeign(const XmlElement &element) { return element.uri != namespaceUri; }

// An element has these attributes and no others; those behind the first so many may be absent.
bool hasOnly(const XmlElement &element, const std::vector<std::string> &names, size_t required) {
  size_t found = 0;
  for (const auto &[name, value] : element.attributes) {
    if (name.starts_with("{http://www.w3.org/2001/XMLSchema-instance}")) continue;
    const auto at = std::find(names.begin(), names.end(), name);
    if (at == names.end()) return false;
    if (at < names.begin() + static_cast<std::ptrdiff_t>(required)) ++found;
  }
  return found == required;
}

template <typename Judge> bool all(const XmlElement &element, const Judge &judge) {
  return std::all_of(element.children.begin(), element.children.end(), judge);
}

bool isException(const XmlElement &element) {
  return element.name == "except" && hasOnly(element, {"domain", "id"}, 0) && element.children.empty();
}

bool isInMany(const XmlElement &element) {
  return isOurs(element) && element.name == "except" ? isException(element) : isForeign(element);
}

bool isInIdentity(const XmlElement &element) {
  if (isOurs(element) && element.name == "one")
    return hasOnly(element, {"id"}, 1) && element.children.size() <= 1 && all(element, isForeign);
  if (isOurs(element) && element.name == "many") return hasOnly(element, {"domain"}, 0) && all(element, isInMany);
  return isForeign(element);
}

bool isValidity(const XmlElement &element) {
  const std::vector<const char *> names = {"from", "until"};
  if (element.children.size() > names.size()) return false;
  for (size_t i = 0; i < element.children.size(); ++i)
    if (element.children[i].name != names[i] || !hasOnly(element.children[i], {}, 0)) return false;
  return true;
}

bool isInConditions(const XmlElement &element) {
  if (isOurs(element) && element.name == "identity") return !element.children.empty() && all(element, isInIdentity);
  if (isOurs(element) && element.name == "sphere") return hasOnly(element, {"value"}, 1) && element.children.empty();
  if (isOurs(element) && element.name == "validity") return isValidity(element);
  return isForeign(element);
}

bool isRule(const XmlElement &element) {
  if (element.name != "rule" || !hasOnly(element, {"id"}, 1)) return false;
  const std::vector<std::string> names = {"conditions", "actions", "transformations"};
  size_t next = 0;
  for (const XmlElement &child : element.children) {
    const auto kind = static_cast<size_t>(std::find(names.begin(), names.end(), child.name) - names.begin());
    if (kind == names.size() || kind < next) return false;
    if (kind == 0 && !all(child, isInConditions)) return false;
    next = kind + 1;
  }
  return true;
}

bool isInOrder(const XmlElement &root) { return root.name == "ruleset" && all(root, isRule); }

// ---- The bodies -----------------------------------------------------------------------------------------------

std::map<std::string, std::string> bodies() {
  std::map<std::string, std::string> all;
  for (const auto &entry : std::filesystem::directory_iterator(folderIn("IMSCODEC_CORPUS") + "/common-policy"))
    if (entry.is_regular_file()) all[entry.path().filename().string()] = contents(entry.path());
  return all;
}

std::string list(const std::vector<int> &statuses) {
  std::string all;
  for (int status : statuses)
    all += (all.empty() ? "" : " ") + std::to_string(status);
  return all.empty() ? "0" : all;
}

void expectRecordsWithPlace(RuntimeContext *ctx, int status) {
  EXPECT_EQ(status == 0, rtxErrCount(ctx) == 0);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    EXPECT_GT(error->line, 0u) << support::errorText(*error);
}

// Reads, writes and reads again; what was written, or nothing if the body was not in order.
std::string roundTrip(RuntimeContext *ctx, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  support::HeapBalance balance(ctx);
  Record record(ctx);
  const int status = QxXmlD_cp_ruleset(ctx, record);
  record.initialised = true;
  expectRecordsWithPlace(ctx, status);
  if (status != 0) return {};
  const std::string written = encodeRecord(ctx, record);
  const auto before = support::parseNamespacedXml(text);
  const auto after = support::parseNamespacedXml(written);
  EXPECT_TRUE(after) << written;
  if (before && after) {
    EXPECT_EQ(meaning(*after), meaning(*before));
  }
  for (const std::string &fragment : fragments(record.get()))
    EXPECT_TRUE(support::parseNamespacedXml(fragment)) << fragment;
  EXPECT_EQ(support::setInput(ctx, written), 0);
  const Reading again = decodeInput(ctx);
  EXPECT_EQ(again.errors, "");
  EXPECT_EQ(again.record, dump(record.get()));
  return written;
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  if (folderIn("IMSCODEC_CORPUS").empty()) GTEST_SKIP() << "IMSCODEC_CORPUS names no folder of bodies";
  const std::map<std::string, std::string> files = bodies();
  ASSERT_FALSE(files.empty());
  std::string table;
  for (const auto &[name, text] : files) {
    SCOPED_TRACE(name);
    const auto tree = support::parseXml(text);
    Context ctx;
    roundTrip(ctx, text);
    const std::string decoded = list(support::statuses(ctx));
    EXPECT_EQ(rtxErrGetLastError(ctx) == STATUS_PARSE_FAILED, !tree);
    if (tree) {
      EXPECT_EQ(rtxErrCount(ctx) == 0, isInOrder(*tree)) << errorList(ctx);
    }
    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    const int status = QxXmlV_cp_ruleset(ctx);
    expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !tree);
    table += name + (tree ? "" : " (not well-formed)") + ": decoded " + decoded + ", validated " +
             list(support::statuses(ctx)) + "\n";
  }
  std::cout << table;
}

// ---- Schemas --------------------------------------------------------------------------------------------------

// A folder that goes with what is in it.
class TemporaryFolder {
public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "imscodec-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) path = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (!path.empty()) std::filesystem::remove_all(path, ignored);
  }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  std::filesystem::path path;
};

// What a validator of schemas prints about all files of a folder.
std::string judgement(const std::filesystem::path &folder, const std::string &schema) {
  const std::string command = "xmllint --noout --nonet --schema '" + schema + "' '" + folder.string() + "'/*.xml 2>&1";
  FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {};
  std::string output;
  char buffer[4096];
  while (const size_t length = std::fread(buffer, 1, sizeof buffer, pipe))
    output.append(buffer, length);
  pclose(pipe);
  return output;
}

TEST(Corpus, WhatASchemaAcceptsItAcceptsAgain) {
  const std::string schemas = folderIn("IMSCODEC_SCHEMAS");
  if (schemas.empty()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  std::map<std::string, std::string> files;
  if (!folderIn("IMSCODEC_CORPUS").empty()) files = bodies();
  for (support::Spelling spelling : support::qualifiedSpellings) {
    const std::string number = std::to_string(static_cast<int>(spelling));
    files["own-" + number + ".xml"] = support::spell(realLifeBody(), namespaceUri, spelling).text;
    files["full-" + number + ".xml"] = support::spell(fullBody, namespaceUri, spelling).text;
  }
  const TemporaryFolder folder;
  ASSERT_FALSE(folder.path.empty());
  std::vector<std::string> written;
  for (const auto &[name, text] : files) {
    SCOPED_TRACE(name);
    Context ctx;
    const std::string again = roundTrip(ctx, text);
    if (again.empty()) continue;
    std::ofstream(folder.path / ("before-" + name)) << text;
    std::ofstream(folder.path / ("after-" + name)) << again;
    written.push_back(name);
  }
  const std::string output = judgement(folder.path, schemas + "/common-policy.xsd");
  const auto accepted = [&](const std::string &file) {
    return output.find((folder.path / file).string() + " validates") != std::string::npos;
  };
  if (output.find(" validates") == std::string::npos && output.find("before-own-0.xml") == std::string::npos)
    GTEST_SKIP() << "no validator of schemas here: " << output;
  for (const std::string &name : written) {
    EXPECT_TRUE(!accepted("before-" + name) || accepted("after-" + name)) << name << "\n" << output;
    if (name.starts_with("own-") || name.starts_with("full-")) {
      EXPECT_TRUE(accepted("before-" + name)) << name << "\n" << output;
    }
  }
  EXPECT_GE(written.size(), 8u);
}

} // namespace
