// What tshark sees in the bodies that the library writes, as parts of SIP messages.
#include "Bodies.h"
#include "Capture.h"
#include "Message.h"
#include "xmlJudge.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace carrier;

// Which vocabularies it takes for XML by the types of their content. The others it has to be told of.
bool isKnown(const Kind &kind) { return kind.name != "dialog-info" && kind.name != "debuginfo"; }

std::string messageWith(const Kind &kind, std::string_view body) {
  const std::string method(kind.method);
  Message message(method + " sip:ben@home.example SIP/2.0");
  message.add("Via", "SIP/2.0/UDP 127.0.0.1:5060;branch=z9hG4bK-judged");
  message.add("From", "<sip:anna@home.example>;tag=a");
  message.add("To", "<sip:ben@home.example>;tag=b");
  message.add("Call-ID", "1@judged");
  message.add("CSeq", "1 " + method);
  message.add("Max-Forwards", "70");
  if (!kind.event.empty()) message.add("Event", kind.event);
  message.setBody(kind.type, body);
  return message.text();
}

std::string attributeOf(const support::XmlElement &element, std::string_view name) {
  const auto found = std::ranges::find(element.attributes, name, &std::pair<std::string, std::string>::first);
  return found == element.attributes.end() ? "" : found->second;
}

// The bytes of a text. What is shown of it has lost its tabs and ends of lines, since they stand as they are in an
// attribute of the report.
std::string textOf(const support::XmlElement &field) {
  const std::string digits = attributeOf(field, "value");
  std::string text;
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
    unsigned byte = 0;
    std::from_chars(&digits[at], &digits[at] + 2, byte, 16);
    text += static_cast<char>(byte);
  }
  return text;
}

// ---- The dissection as a document ----------------------------------------------------------------------------------

const support::XmlElement *find(const support::XmlElement &in, std::string_view name) {
  for (const support::XmlElement &child : in.children) {
    if (attributeOf(child, "name") == name) return &child;
    if (const auto *found = find(child, name)) return found;
  }
  return nullptr;
}

// Puts together again what the dissector took apart: <NAME, each NAME="VALUE", texts, elements, </NAME>. In
// vocabularies that it knows by heart a field has the name of its path, else that of its sort.
void rebuild(const support::XmlElement &field, std::string &document) {
  const std::string path = attributeOf(field, "name");
  const std::string label = attributeOf(field, "showname");
  const std::string content = attributeOf(field, "show");
  const bool isElement = label.starts_with('<') && !label.starts_with("<?");
  if (!isElement) {
    if (path == "xml.cdata") document += textOf(field);
    return;
  }
  document += label.substr(0, label.find_first_of(" />"));
  std::string inside;
  std::string end;
  for (const support::XmlElement &child : field.children) {
    const std::string childPath = attributeOf(child, "name");
    const std::string childContent = attributeOf(child, "show");
    const std::string childLabel = attributeOf(child, "showname");
    if (childPath.empty() && childContent.starts_with("</")) {
      end += childContent;
    } else if (childPath == "xml.attribute") {
      document += " " + childContent;
    } else if (childPath.starts_with("xml.") || childLabel.starts_with('<')) {
      rebuild(child, inside);
    } else if (childPath == path) {
      inside += textOf(child);
    } else if (!childPath.empty()) {
      document += " " + childPath.substr(childPath.rfind('.') + 1) + "=\"" + childContent + "\"";
    }
  }
  document += content.ends_with("/>") ? "/>" : ">";
  document += inside + end;
}

struct Dissection {
  std::string document; // rebuilt; empty: it saw no XML
  std::string complaint;
};

void findComplaints(const support::XmlElement &in, std::string &complaint) {
  for (const support::XmlElement &child : in.children) {
    const std::string name = attributeOf(child, "name");
    if (name == "_ws.malformed" || name == "_ws.expert" || name.find("unrecognized") != name.npos)
      complaint += attributeOf(child, "showname") + "\n";
    findComplaints(child, complaint);
  }
}

std::string quoted(const std::string &text) { return "'" + text + "'"; }

std::vector<Dissection> dissect(const std::string &name, const std::vector<std::string> &messages) {
  const std::filesystem::path folder = std::getenv("JUDGED_FOLDER");
  const std::string capture = (folder / (name + ".pcap")).string();
  const std::string report = (folder / (name + ".pdml")).string();
  EXPECT_TRUE(judges::writeCapture(capture, messages));
  std::string command = "tshark -r " + quoted(capture) + " -T pdml";
  for (const Kind &kind : kinds())
    if (!isKnown(kind)) command += " -d media_type==" + std::string(kind.type) + ",xml";
  command += " >" + quoted(report) + " 2>" + quoted(report + ".errors");
  EXPECT_EQ(std::system(command.c_str()), 0) << command;

  std::ifstream file(report, std::ios::binary);
  const auto all = support::parseXml(std::string(std::istreambuf_iterator<char>(file), {}));
  std::vector<Dissection> dissections;
  EXPECT_TRUE(all) << report;
  if (!all) return dissections;
  for (const support::XmlElement &packet : all->children) {
    Dissection &dissection = dissections.emplace_back();
    findComplaints(packet, dissection.complaint);
    const support::XmlElement *body = find(packet, "sip.msg_body");
    const support::XmlElement *xml = body ? find(*body, "xml") : nullptr;
    if (!xml) continue;
    for (const support::XmlElement &field : xml->children)
      rebuild(field, dissection.document);
  }
  EXPECT_EQ(dissections.size(), messages.size());
  return dissections;
}

std::string meaning(std::string_view document) {
  const auto parsed = support::parseNamespacedXml(document);
  return parsed ? parsed->infoset() : "no document";
}

// ---- Tests
// -----------------------------------------------------------------------------------------------------------

TEST(Dissection, ShowsWhatWasWritten) {
  const Bodies bodies(12, 200, 20000);
  std::vector<std::string> messages;
  std::vector<const Body *> written;
  for (std::size_t number = 0; number < bodies.count(); ++number) {
    for (const Kind &kind : kinds()) {
      written.push_back(bodies.find(kind, number));
      messages.push_back(messageWith(kind, written.back()->text));
    }
  }
  const auto dissections = dissect("carried", messages);
  ASSERT_EQ(dissections.size(), messages.size());
  for (std::size_t at = 0; at < written.size(); ++at) {
    SCOPED_TRACE(written[at]->text);
    EXPECT_EQ(dissections[at].complaint, "");
    EXPECT_TRUE(meaning(dissections[at].document) == meaning(written[at]->text)) << dissections[at].document;
    // What was written by hand says the same, except that attributes of debug information have got a prefix.
    if (written[at]->kind->name != "debuginfo") {
      EXPECT_TRUE(meaning(dissections[at].document) == meaning(written[at]->source)) << written[at]->source;
    }
  }
}

TEST(Dissection, ShowsSampleBodies) {
  Codec codec;
  std::vector<std::string> messages;
  std::vector<std::string> written;
  for (const auto &entry : std::filesystem::directory_iterator(std::getenv("JUDGED_BODIES"))) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string body(std::istreambuf_iterator<char>(file), {});
    const auto root = support::parseXml(body);
    const auto kind = std::ranges::find_if(kinds(), [&](const Kind &one) { return root && one.name == root->name; });
    if (kind == kinds().end()) continue;
    Codec::Passed passed = codec.pass(*kind, body, body);
    if (!passed.problem.empty()) continue; // some are there for their faults
    messages.push_back(messageWith(*kind, passed.text));
    written.push_back(std::move(passed.text));
  }
  EXPECT_GE(written.size(), 12u);
  const auto dissections = dissect("samples", messages);
  ASSERT_EQ(dissections.size(), messages.size());
  for (std::size_t at = 0; at < written.size(); ++at) {
    SCOPED_TRACE(written[at]);
    EXPECT_EQ(dissections[at].complaint, "");
    EXPECT_TRUE(meaning(dissections[at].document) == meaning(written[at])) << dissections[at].document;
  }
}

// Otherwise the agreement would say nothing.
TEST(Dissection, ShowsDamage) {
  const Bodies bodies(2, 200, 1200);
  std::vector<std::string> messages;
  std::vector<std::string> meant;
  for (const Kind &kind : kinds()) {
    const std::string text = bodies.find(kind, 0)->text;
    const std::size_t end = text.rfind("</");
    const std::size_t quote = text.rfind('"', end);
    std::string value = text; // of an attribute
    value.insert(quote, "x");
    for (const std::string &damaged :
         {text.substr(0, end), value, text.substr(0, end) + "</no" + text.substr(end + 2)}) {
      messages.push_back(messageWith(kind, damaged));
      meant.push_back(meaning(text));
    }
  }
  const auto dissections = dissect("damaged", messages);
  ASSERT_EQ(dissections.size(), messages.size());
  for (std::size_t at = 0; at < meant.size(); ++at) {
    EXPECT_TRUE(!dissections[at].complaint.empty() || meaning(dissections[at].document) != meant[at]) << messages[at];
  }
}

} // namespace
