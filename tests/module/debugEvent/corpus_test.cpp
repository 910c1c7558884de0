// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "corpus.h"
#include "debugInfo.h"

#include <algorithm>

using namespace debugInfo;
using support::CorpusBody;

namespace {

// Whether a decoder has nothing to say against an element: judged from the tree, by the rule in words.
bool inOrder(const support::XmlElement &element);

bool childrenInOrder(const support::XmlElement &element, const std::vector<std::string> &names, size_t required) {
  size_t next = 0;
  for (const support::XmlElement &child : element.children) {
    const size_t kind = static_cast<size_t>(std::find(names.begin(), names.end(), child.name) - names.begin());
    if (kind == names.size() || kind < next || (kind > next && next < required) || !inOrder(child)) return false;
    next = kind + 1;
  }
  return true;
}

bool inOrder(const support::XmlElement &element) {
  const auto attributes = [&](std::vector<std::string> names) {
    std::vector<std::string> found;
    for (const auto &[name, value] : element.attributes)
      found.push_back(name);
    std::sort(names.begin(), names.end());
    return found == names;
  };
  const auto all = [&](const char *name) {
    return std::all_of(element.children.begin(), element.children.end(),
                       [&](const support::XmlElement &child) { return child.name == name && inOrder(child); });
  };
  const std::string &name = element.name;
  if (name == "debuginfo") return attributes({"version", "state"}) && all("debugconfig");
  if (name == "debugconfig") return attributes({"aor"}) && all("session");
  if (name == "session")
    return attributes({"id"}) && childrenInOrder(element, {"start-trigger", "stop-trigger", "control"}, 3);
  if (name == "start-trigger")
    return childrenInOrder(element, {"from", "to", "icsi", "iari", "method", "time", "debug-id"}, 0);
  if (name == "stop-trigger") return childrenInOrder(element, {"time", "time-period", "reason"}, 0);
  if (name == "control") return childrenInOrder(element, {"interface", "depth", "debug-id"}, 1);
  if (name == "reason") return element.text == "dialog_established" || element.text == "session_end";
  if (name == "depth") return element.text == "maximum" || element.text == "minimum";
  if (name == "debug-id")
    return element.text.size() % 2 == 0 &&
           element.text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
  return element.attributes.empty();
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  const Document &document = documentOf("debuginfo");
  support::everyCorpusBody("debuginfo", [&](RuntimeContext *ctx, const CorpusBody &body) {
    Held held(ctx, document);
    int status = document.decode(ctx, held);
    held.owned = true;
    support::expectRecordsWithPlace(ctx, status);
    if (!body.tree) {
      EXPECT_EQ(status, STATUS_PARSE_FAILED);
    } else if (inOrder(*body.tree)) {
      EXPECT_EQ(status, 0) << support::errors(ctx);
    }
    const std::string value = dump(document, held);
    if (status == 0) {
      EXPECT_EQ(decode(document, encode(ctx, document, held)).record, value) << "written and read again";
    }
    const std::string decoded = brief(ctx);
    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, body.text), 0);
    status = document.validate(ctx);
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    return "\n  decoded: " + decoded + "\n  validated: " + brief(ctx) + "\n  " + value;
  });
}

} // namespace
