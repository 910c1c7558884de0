// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "capture.h"
#include "composing.h"
#include "corpus.h"

#include <algorithm>

using namespace composing;
using support::CorpusBody;

namespace {

// Whether a decoder has nothing to say against the body: judged from the tree, by the rule in words.
bool inOrder(const support::XmlElement &root) {
  if (root.name != "isComposing") return false;
  const std::vector<std::string> names = {"state", "lastactive", "contenttype", "refresh"};
  size_t next = 0;
  for (const support::XmlElement &child : root.children) {
    if (child.uri != namespaceUri && !child.uri.empty()) return false;
    const size_t kind = static_cast<size_t>(std::find(names.begin(), names.end(), child.name) - names.begin());
    if (kind == names.size() || kind < next || (next == 0 && kind != 0) || !child.attributes.empty()) return false;
    if (child.name == "refresh" && (child.text.empty() || child.text.size() > 9 || child.text[0] == '0' ||
                                    child.text.find_first_not_of("0123456789") != std::string::npos))
      return false;
    next = kind + 1;
  }
  return true;
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  support::everyCorpusBody("iscomposing", [](RuntimeContext *ctx, const CorpusBody &body) {
    auto record = Record::uninitialised(ctx);
    int status = QxXmlD_tns_isComposing(ctx, record);
    record.owned = true;
    support::expectRecordsWithPlace(ctx, status);
    if (!body.tree) {
      EXPECT_EQ(status, STATUS_PARSE_FAILED);
    } else if (inOrder(*body.tree)) {
      EXPECT_EQ(status, 0) << support::errors(ctx);
    }
    const std::string decoded = support::statusList(ctx);
    rtxErrClear(ctx);
    status = QxXmlV_tns_isComposing(ctx);
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    return "decoded " + decoded + ", validated " + support::statusList(ctx) + "\n" +
           support::captureStdout([&] { QxPrint_tns__isComposing("  ", record); });
  });
}

} // namespace
