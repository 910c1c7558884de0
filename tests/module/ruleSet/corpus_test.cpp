// Rule sets from the field, where a folder of them is named by IMSCODEC_CORPUS. Asserted is what holds for any body: it
// is read without complaint exactly if it is in order by the rules in words, and what was read so is written back
// unchanged in meaning. Where IMSCODEC_SCHEMAS names a folder of schemas, the written ones are valid if they were.
#include "corpus.h"
#include "reading.h"
#include "schemaJudge.h"

#include <algorithm>
#include <map>

using namespace reading;
using support::Context;
using support::CorpusBody;
using support::XmlElement;

namespace {

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

// Reads, writes and reads again; what was written, or nothing if the body was not in order.
std::string roundTrip(RuntimeContext *ctx, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  support::HeapBalance balance(ctx);
  auto record = Record::uninitialised(ctx);
  const int status = QxXmlD_cp_ruleset(ctx, record);
  record.owned = true;
  support::expectRecordsWithPlace(ctx, status);
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
  support::everyCorpusBody("common-policy", [](RuntimeContext *ctx, const CorpusBody &body) {
    roundTrip(ctx, body.text);
    const std::string decoded = support::statusList(ctx);
    EXPECT_EQ(rtxErrGetLastError(ctx) == STATUS_PARSE_FAILED, !body.tree);
    if (body.tree) {
      EXPECT_EQ(rtxErrCount(ctx) == 0, isInOrder(*body.tree)) << errorList(ctx);
    }
    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, body.text), 0);
    const int status = QxXmlV_cp_ruleset(ctx);
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    return "decoded " + decoded + ", validated " + support::statusList(ctx);
  });
}

// ---- Schemas --------------------------------------------------------------------------------------------------

TEST(Corpus, WhatASchemaAcceptsItAcceptsAgain) {
  support::SchemaJudge judge("common-policy.xsd");
  if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  std::map<std::string, std::string> files;
  if (!support::folderNamedBy("IMSCODEC_CORPUS").empty())
    for (const CorpusBody &body : support::corpusBodies("common-policy"))
      files[body.name] = body.text;
  for (support::Spelling spelling : support::qualifiedSpellings) {
    const std::string number = std::to_string(static_cast<int>(spelling));
    files["own-" + number] = support::spell(realLifeBody(), namespaceUri, spelling).text;
    files["full-" + number] = support::spell(fullBody, namespaceUri, spelling).text;
  }
  std::vector<std::string> written;
  for (const auto &[name, text] : files) {
    SCOPED_TRACE(name);
    Context ctx;
    const std::string again = roundTrip(ctx, text);
    if (again.empty()) continue;
    judge.add("before-" + name, text);
    judge.add("after-" + name, again);
    written.push_back(name);
  }
  auto accepted = judge.verdicts();
  for (const std::string &name : written) {
    EXPECT_TRUE(!accepted["before-" + name] || accepted["after-" + name]) << name << "\n" << judge.report();
    if (name.starts_with("own-") || name.starts_with("full-")) {
      EXPECT_TRUE(accepted["before-" + name]) << name << "\n" << judge.report();
    }
  }
  EXPECT_GE(written.size(), 8u);
}

} // namespace
