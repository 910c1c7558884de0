#include "reading.h"

#include "lists.h"
#include "output.h"

#include <cstdlib>
#include <cstring>
#include <regex>
#include <sstream>

namespace reading {

using support::forEachItem;

// ---- Documents ----

std::string document(std::string_view content) {
  return "<ruleset xmlns=\""s + namespaceUri + "\" xmlns:f=\"urn:f\">" + std::string(content) + "</ruleset>";
}

std::string rule(std::string_view content) { return "<rule id=\"r\">" + std::string(content) + "</rule>"; }

std::string conditions(std::string_view content) {
  return rule("<conditions>" + std::string(content) + "</conditions>");
}

std::string identity(std::string_view content) {
  return conditions("<identity>" + std::string(content) + "</identity>");
}

const char *const fullBody =
    "<q:ruleset>\n  <q:rule id=\" first \">\n    <q:conditions>\n"
    "      <q:identity>\n        <q:one id=\"sip:a@example.com\"/>\n"
    "        <q:one id=\"tel:+1\"><x:name xmlns:x=\"urn:x\">A</x:name></q:one>\n"
    "        <q:many domain=\"example.com\">\n          <q:except id=\"sip:b@example.com\"/>\n"
    "          <q:except domain=\"c.example.com\" id=\"\"/><x:but xmlns:x=\"urn:x\"/>\n        </q:many>\n"
    "        <x:all xmlns:x=\"urn:x\"/>\n      </q:identity>\n"
    "      <x:place xmlns:x=\"urn:x\">t<x:g/></x:place>\n      <x:mood xmlns:x=\"urn:x\"/>\n"
    "      <q:sphere value=\"work\"/>\n"
    "      <q:validity>\n        <q:from>2024-01-02T03:04:05Z</q:from>\n"
    "        <q:until>2025-01-02T03:04:05+01:00</q:until>\n      </q:validity>\n"
    "      <x:last xmlns:x=\"urn:x\"/>\n    </q:conditions>\n"
    "    <q:actions>\n      <x:allow xmlns:x=\"urn:x\">true</x:allow>\n    </q:actions>\n"
    "    <q:transformations>\n      <x:show xmlns:x=\"urn:x\"/>\n      <x:hide xmlns:x=\"urn:x\"/>\n"
    "    </q:transformations>\n  </q:rule>\n  <q:rule id=\"second\"/>\n</q:ruleset>";

const char *const fullRecord =
    "rule(first conditions[identity[one(sip:a@example.com) one(tel:+1 any=<x:name xmlns:x=\"urn:x\">A</x:name>) "
    "many(domain=example.com except(id=sip:b@example.com) except(domain=c.example.com id=) "
    "any=<x:but xmlns:x=\"urn:x\"/>) any=<x:all xmlns:x=\"urn:x\"/>] "
    "any[<x:place xmlns:x=\"urn:x\">t<x:g/></x:place> <x:mood xmlns:x=\"urn:x\"/>] sphere(work) "
    "validity(2024-01-02T03:04:05Z,2025-01-02T03:04:05+01:00) any[<x:last xmlns:x=\"urn:x\"/>]] "
    "actions[<x:allow xmlns:x=\"urn:x\">true</x:allow>] "
    "transformations[<x:show xmlns:x=\"urn:x\"/> <x:hide xmlns:x=\"urn:x\"/>]) rule(second)";

std::string realLifeBody() {
  const char *const conditions[] = {
      "<q:identity>\n\t<q:one id='sip:alice@example.com'/><q:one id='tel:+4670012345'/>\n</q:identity>\n"
      "<q:sphere value='home'/>",
      "<q:identity><q:many domain=\"example.com\"><q:except id=\"sip:pest@example.com\"/>"
      "<q:except domain=\"spam.example.com\"/></q:many></q:identity>",
      "<!-- all others --><ocp:other-identity/> <ocp:anonymous-request/>\n"
      "<q:validity><q:from>2024-06-01T00:00:00Z</q:from><q:until>2024-09-01T00:00:00Z</q:until></q:validity>",
      "<q:identity><q:many/></q:identity>\n<ocp:external-list>\n  <ocp:entry "
      "anc=\"http://xcap.example.com/resource-lists/users/sip:u%40example.com/index/~~/resource-lists/list%5b1%5d\"/>\n"
      "</ocp:external-list>\n<q:sphere value='work &amp; travel'/><pr:busy>no</pr:busy><!-- and --><pr:quiet/>",
      ""};
  const char *const actions[] = {
      "<pr:sub-handling>allow</pr:sub-handling>",
      ("<poc:allow-invite>pass</poc:allow-invite>\n  <poc:allow-auto-answer/>"
       "<sub-handling xmlns='urn:ietf:params:xml:ns:pres-rules'>polite-block</sub-handling>"),
      ""};
  const char *const transformations[] = {
      "<pr:provide-services>\n  <pr:service-uri-scheme>sip</pr:service-uri-scheme>\n"
      "  <opr:service-id><![CDATA[<push&talk>]]></opr:service-id>\n</pr:provide-services>",
      "<pr:provide-persons><pr:all-persons/></pr:provide-persons>\n"
      "<provide-devices xmlns=\"urn:ietf:params:xml:ns:pres-rules\"><deviceID>urn:uuid:d&#x2D;1</deviceID>"
      "<opr:network opr:id=\"3 &lt; 4\"/></provide-devices>",
      "<opr:provide-willingness>true</opr:provide-willingness><pr:provide-unknown-attribute ns=\"urn:vendor\" "
      "name='\"mood\"'>true</pr:provide-unknown-attribute><v:x xmlns:v='urn:vendor' v:y='1'><v:z v:y=\"\"/>t</v:x>",
      "<pr:provide-all-attributes/>"};
  std::string body = "<q:ruleset xmlns:pr=\"urn:ietf:params:xml:ns:pres-rules\"\n"
                     "         xmlns:ocp=\"urn:oma:xml:xdm:common-policy\" xmlns:opr=\"urn:oma:xml:prs:pres-rules\" "
                     "xmlns:poc='urn:oma:xml:poc:poc-rules' xmlns:unused=\"urn:unused\">\n";
  for (size_t i = 0; i < 20; ++i) {
    body += "  <q:rule id=\"rule-" + std::to_string(i) + "\">\n    <q:conditions>\n" +
            conditions[i % std::size(conditions)] + "\n    </q:conditions>\n";
    if (i % 7 != 6) body += "    <q:actions>" + std::string(actions[i % std::size(actions)]) + "</q:actions>\n";
    body += "    <q:transformations>\n" + std::string(transformations[i % std::size(transformations)]) +
            "\n    </q:transformations>\n  </q:rule>\n";
  }
  return body + "</q:ruleset>";
}

// ---- Records ----

namespace {

std::string show(const RtxXmlString &text) {
  return (text.value == nullptr ? "-"s : std::string(text.value)) + (text.cdata ? "!cdata" : "");
}

// Parts with blanks between them.
class Words {
public:
  Words &operator+=(const std::string &word) {
    all += (all.empty() ? "" : " ") + word;
    return *this;
  }
  std::string text() const { return all; }

private:
  std::string all;
};

std::string dumpTexts(const RtxAnyList &list) {
  Words words;
  forEachItem<const RtxXmlString>(list.items, [&](const RtxXmlString &text) { words += show(text); });
  return "[" + words.text() + "]";
}

std::string dumpItem(const cp_manyType_1 &item) {
  switch (item.t) {
  case cp_manyType_1_except: return dump(item.u.cp_except);
  case cp_manyType_1_any: return "any=" + show(item.u.cp__any);
  }
  return "t=" + std::to_string(item.t);
}

std::string dumpItem(const cp_identityType_1 &item) {
  switch (item.t) {
  case cp_identityType_1_one: return dump(item.u.cp_one);
  case cp_identityType_1_many: return dump(item.u.cp_many);
  case cp_identityType_1_any: return "any=" + show(item.u.cp__any);
  }
  return "t=" + std::to_string(item.t);
}

std::string dumpItem(const cp_conditionsType_1 &item) {
  switch (item.t) {
  case cp_conditionsType_1_identity: return dump(item.u.cp_identity);
  case cp_conditionsType_1_sphere: return dump(item.u.cp_sphere);
  case cp_conditionsType_1_validity: return dump(item.u.cp_validity);
  case cp_conditionsType_1_any: return "any" + dumpTexts(item.u.cp__any);
  }
  return "t=" + std::to_string(item.t);
}

} // namespace

std::string dump(const cp_oneType &record) {
  EXPECT_EQ(record.m & ~1u, 0u);
  Words words;
  words += show(record.cp_id);
  if ((record.m & cp_oneType_has_any) != 0) words += "any=" + show(record.cp__any);
  return "one(" + words.text() + ")";
}

std::string dump(const cp_exceptType &record) {
  EXPECT_EQ(record.m & ~3u, 0u);
  Words words;
  if ((record.m & cp_exceptType_has_domain) != 0) words += "domain=" + show(record.cp_domain);
  if ((record.m & cp_exceptType_has_id) != 0) words += "id=" + show(record.cp_id);
  return "except(" + words.text() + ")";
}

std::string dump(const cp_manyType &record) {
  EXPECT_EQ(record.m & ~1u, 0u);
  Words words;
  if ((record.m & cp_manyType_has_domain) != 0) words += "domain=" + show(record.cp_domain);
  forEachItem<const cp_manyType_1>(record.cp__choice, [&](const cp_manyType_1 &item) { words += dumpItem(item); });
  return "many(" + words.text() + ")";
}

std::string dump(const cp_identityType &record) {
  Words words;
  forEachItem<const cp_identityType_1>(record.items, [&](const cp_identityType_1 &item) { words += dumpItem(item); });
  return "identity[" + words.text() + "]";
}

std::string dump(const cp_sphereType &record) { return "sphere(" + show(record.cp_value) + ")"; }

std::string dump(const cp_validityType &record) {
  return "validity(" + show(record.cp_from) + "," + show(record.cp_until) + ")";
}

std::string dump(const cp_conditionsType &record) {
  Words words;
  forEachItem<const cp_conditionsType_1>(record.items,
                                         [&](const cp_conditionsType_1 &item) { words += dumpItem(item); });
  return "conditions[" + words.text() + "]";
}

std::string dump(const cp_extensibleType &record) { return dumpTexts(record.items); }

std::string dump(const cp_ruleType &record) {
  EXPECT_EQ(record.m & ~7u, 0u);
  Words words;
  words += show(record.cp_id);
  if ((record.m & cp_ruleType_has_conditions) != 0) words += dump(record.cp_conditions);
  if ((record.m & cp_ruleType_has_actions) != 0) words += "actions" + dump(record.cp_actions);
  if ((record.m & cp_ruleType_has_transformations) != 0) words += "transformations" + dump(record.cp_transformations);
  return "rule(" + words.text() + ")";
}

std::string dump(const cp__ruleset &record) {
  Words words;
  forEachItem<const cp_ruleType>(record.cp_rule, [&](const cp_ruleType &item) { words += dump(item); });
  return words.text();
}

std::vector<std::string> fragments(const cp__ruleset &record) {
  std::vector<std::string> all;
  const auto add = [&](const RtxXmlString &text) { all.push_back(show(text)); };
  const auto addOfMany = [&](const cp_manyType_1 &item) {
    if (item.t == cp_manyType_1_any) add(item.u.cp__any);
  };
  const auto addOfIdentity = [&](const cp_identityType_1 &item) {
    if (item.t == cp_identityType_1_one && (item.u.cp_one.m & cp_oneType_has_any) != 0) add(item.u.cp_one.cp__any);
    if (item.t == cp_identityType_1_many) forEachItem<const cp_manyType_1>(item.u.cp_many.cp__choice, addOfMany);
    if (item.t == cp_identityType_1_any) add(item.u.cp__any);
  };
  const auto addOfConditions = [&](const cp_conditionsType_1 &item) {
    if (item.t == cp_conditionsType_1_identity)
      forEachItem<const cp_identityType_1>(item.u.cp_identity.items, addOfIdentity);
    if (item.t == cp_conditionsType_1_any) forEachItem<const RtxXmlString>(item.u.cp__any.items, add);
  };
  forEachItem<const cp_ruleType>(record.cp_rule, [&](const cp_ruleType &item) {
    forEachItem<const cp_conditionsType_1>(item.cp_conditions.items, addOfConditions);
    forEachItem<const RtxXmlString>(item.cp_actions.items.items, add);
    forEachItem<const RtxXmlString>(item.cp_transformations.items.items, add);
  });
  return all;
}

std::vector<support::XmlElement> foreignElements(const support::XmlElement &root) {
  std::vector<support::XmlElement> all;
  const bool keepsAll = root.name == "actions" || root.name == "transformations";
  for (const support::XmlElement &child : root.children) {
    if (keepsAll || child.uri != namespaceUri) {
      all.push_back(child);
    } else {
      const std::vector<support::XmlElement> inside = foreignElements(child);
      all.insert(all.end(), inside.begin(), inside.end());
    }
  }
  return all;
}

// ---- Reading ----

std::string errorList(RuntimeContext *ctx) { return support::errorsBySource(ctx, "QxXmlRuleSet"); }

Reading decodeInput(RuntimeContext *ctx) {
  auto record = Record::uninitialised(ctx);
  const int status = QxXmlD_cp_ruleset(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  return {status, record.owned ? dump(record.get()) : "", errorList(ctx)};
}

Reading decode(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, decodeInput);
}

Reading decode(const std::string &document) { return support::readDocument(document, decodeInput); }

int decodeStatus(RuntimeContext *ctx) { return decodeInput(ctx).status; }

static Reading validateInput(RuntimeContext *ctx) {
  const int status = QxXmlV_cp_ruleset(ctx);
  return {status, "", errorList(ctx)};
}

Reading validate(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, validateInput);
}

Reading validate(const std::string &document) { return support::readDocument(document, validateInput); }

void expectReading(const Case &expected) {
  SCOPED_TRACE(expected.content);
  const std::string text = document(expected.content);
  const Reading decoded = decode(text);
  EXPECT_EQ(decoded.record, expected.record);
  EXPECT_EQ(decoded.errors, expected.errors);
  EXPECT_EQ(decoded.status, std::atoi(expected.errors.c_str()));
  const std::string validatorErrors =
      expected.validatorErrors == nullptr ? support::byValidator(expected.errors) : expected.validatorErrors;
  const Reading checked = validate(text);
  EXPECT_EQ(checked.errors, validatorErrors);
  EXPECT_EQ(checked.status, std::atoi(validatorErrors.c_str()));
}

std::string encodeRecord(RuntimeContext *ctx, const cp__ruleset *record) {
  return support::encoded(ctx, [record](RuntimeContext *c) { return QxXmlE_cp_ruleset(c, record); });
}

static std::string collapsed(const std::string &text) {
  std::istringstream words(text);
  Words all;
  for (std::string word; words >> word;)
    all += word;
  return all.text();
}

std::string meaning(const support::XmlElement &element) {
  if (element.uri != namespaceUri || element.name == "from" || element.name == "until") return element.infoset();
  std::string all = element.name + "[";
  for (const auto &[attribute, value] : element.attributes)
    all += attribute + "=\"" + (attribute == "id" ? collapsed(value) : value) + "\"";
  all += "](";
  for (const support::XmlElement &child : element.children)
    all += meaning(child);
  return all + ")";
}

} // namespace reading
