// Documents that are made to hurt.

#include "wildcard.h"

#include <unistd.h>

namespace contract {
namespace {

// Reads with both streams watched; nothing may appear there.
int readQuietly(RuntimeContext *ctx, std::string_view document, Recorder &recorder) {
  Capture out(stdout);
  Capture err(stderr);
  const int status = read(ctx, document, recorder);
  EXPECT_EQ(err.finish() + out.finish(), "");
  return status;
}

void expectHarmless(RuntimeContext *ctx, std::string_view document, const char *what) {
  Recorder recorder;
  const int status = readQuietly(ctx, document, recorder);
  EXPECT_TRUE(status == 0 || status == STATUS_PARSE_FAILED || status == STATUS_LIMIT_EXCEEDED ||
              status == STATUS_NO_MEMORY)
      << what << ": " << status;
  EXPECT_EQ(status != 0, rtxErrCount(ctx) != 0) << what;
  if (status == 0) {
    EXPECT_EQ(recorder.open, 0u) << what;
  }
  rtxContextReset(ctx);
  Recorder after;
  EXPECT_EQ(read(ctx, "<a>b</a>", after), 0) << what;
  EXPECT_EQ(after.log, "<a>b</a>") << what;
  rtxContextReset(ctx);
}

TEST(Hostile, EntitiesAreNotExpandedAndFilesNotRead) {
  std::string path = testing::TempDir() + "contract-file-XXXXXX";
  const int file = mkstemp(path.data());
  ASSERT_GE(file, 0);
  ASSERT_EQ(write(file, "<secret/>", 9), 9);
  close(file);
  const std::string uri = "file://" + path;
  std::string laughs = "<!DOCTYPE r [<!ENTITY a0 'ha'>";
  for (int i = 1; i < 40; ++i) {
    const std::string before = "&a" + std::to_string(i - 1) + ";";
    laughs += "<!ENTITY a" + std::to_string(i) + " '" + before + before + "'>";
  }
  for (const std::string &document : std::initializer_list<std::string>{
           "<!DOCTYPE r [<!ENTITY e SYSTEM '" + uri + "'>]><r k='x'>&e;</r>", "<!DOCTYPE r SYSTEM '" + uri + "'><r/>",
           "<!DOCTYPE r [<!ENTITY % e SYSTEM '" + uri + "'> %e;]><r/>",
           "<!DOCTYPE r PUBLIC 'p' 'http://127.0.0.1:9/x'><r/>",
           "<r xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='" + uri + "' parse='text'/></r>",
           laughs + "]><r>&a39;</r>", "<!DOCTYPE r [<!ATTLIST r k CDATA 'default'>]><r/>"}) {
    Context ctx;
    Recorder recorder;
    const int status = readQuietly(ctx, document, recorder);
    EXPECT_EQ(status, document.starts_with("<!DOCTYPE") ? STATUS_PARSE_FAILED : 0) << document.substr(0, 60);
    EXPECT_EQ(recorder.log.find("secret"), recorder.log.npos);
    if (status != 0) {
      EXPECT_EQ(recorder.log, "") << document.substr(0, 60);
    }
  }
  unlink(path.c_str());
}

TEST(Hostile, ShapesOfEveryKindEndInAStatus) {
  Context ctx;
  const auto repeat = [](std::string_view piece, size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (size_t i = 0; i < count; ++i)
      text += piece;
    return text;
  };
  std::string attributes = "<a";
  std::string declarations = "<a";
  std::string names = "<a>";
  for (int i = 0; i < 50000; ++i) {
    attributes += " k" + std::to_string(i) + "=''";
    declarations += " xmlns:p" + std::to_string(i) + "='u'";
    names += "<n" + std::to_string(i) + "/>";
  }
  expectHarmless(ctx, attributes + "/>", "many attributes");
  expectHarmless(ctx, declarations + "/>", "many declarations");
  expectHarmless(ctx, names + "</a>", "many names");
  expectHarmless(ctx, repeat("<a>", 100000), "deep and open");
  expectHarmless(ctx, repeat("<a>", 100000) + repeat("</a>", 100000), "deep");
  expectHarmless(ctx, "<" + std::string(1000000, 'n') + "/>", "long name");
  expectHarmless(ctx, "<a " + std::string(1000000, 'n') + "='1'/>", "long attribute name");
  expectHarmless(ctx, "<a k='" + std::string(5000000, 'v') + "'/>", "long attribute");
  expectHarmless(ctx, "<a>" + std::string(15000000, 't') + "</a>", "long text");
  expectHarmless(ctx, "<a><![CDATA[" + std::string(5000000, ']') + "]]></a>", "long section");
  expectHarmless(ctx, "<a><!--" + std::string(5000000, ' ') + "--></a>", "long comment");
  expectHarmless(ctx, "<a><?p " + std::string(5000000, ' ') + "?></a>", "long instruction");
  expectHarmless(ctx, "<a>" + repeat("&amp;", 500000) + "</a>", "many references");
  expectHarmless(ctx, "<a>" + repeat("&#x41;", 500000) + "</a>", "many character references");
  expectHarmless(ctx, "<a>&#" + std::string(1000000, '0') + "65;</a>", "long character reference");
  expectHarmless(ctx, "<a>&" + std::string(1000000, 'e') + ";</a>", "long entity name");
  expectHarmless(ctx, repeat("<", 1000000), "brackets");
  expectHarmless(ctx, repeat("<a ", 300000), "unfinished tags");
  expectHarmless(ctx, repeat("<!--", 300000), "unfinished comments");
  expectHarmless(ctx, "<a>" + repeat("<b/>", 250000) + "</a>", "many children");
  expectHarmless(ctx, "<a" + std::string(1000000, ' ') + "/>", "long white space in a tag");
  expectHarmless(ctx, std::string(1000000, '\n') + "<a/>", "many lines");
  expectHarmless(ctx, "<?xml version='1.0' encoding='" + std::string(100000, 'U') + "'?><a/>", "long encoding name");
}

TEST(Hostile, FreshNamesInDocumentAfterDocumentAreAlwaysRead) {
  Context ctx;
  size_t reserved = 0;
  for (int i = 0; i < 400; ++i) {
    std::string document = "<r>";
    for (int j = 0; j < 1000; ++j)
      document += "<n" + std::to_string(i) + "-" + std::to_string(j) + "/>";
    Recorder recorder;
    ASSERT_EQ(read(ctx, document + "</r>", recorder), 0) << i;
    ASSERT_EQ(recorder.events, 2002u);
    rtxContextReset(ctx);
    if (i == 20) reserved = stats(ctx).reserved;
  }
  EXPECT_EQ(stats(ctx).reserved, reserved);
}

// A document that a strict parser refuses must never pass for well-formed.
void judge(RuntimeContext *ctx, const std::string &document) {
  Recorder recorder;
  WildcardHost host(ctx);
  const int status = read(ctx, document, recorder);
  if (status == 0) {
    ASSERT_EQ(recorder.open, 0u) << testing::PrintToString(document);
    ASSERT_EQ(rtxErrCount(ctx), 0u) << testing::PrintToString(document);
    ASSERT_EQ(read(ctx, document, host), 0) << testing::PrintToString(document);
    ASSERT_FALSE(host.open) << testing::PrintToString(document);
  } else {
    ASSERT_EQ(rtxErrCount(ctx), 1u) << testing::PrintToString(document);
    const RtxError *error = rtxErrAt(ctx, 0);
    ASSERT_EQ(error->status, status);
    ASSERT_GT(error->line, 0u) << testing::PrintToString(document);
    if (!error->transcoded) {
      ASSERT_LE(error->offset, document.size()) << testing::PrintToString(document);
    }
    rtxErrClear(ctx);
  }
  const std::string strict = infoset(document);
  // Namespace errors alone, which the reader leaves to others, show as well-formed there and not here.
  if (status == 0 && strict == notWellFormed) {
    for (const char *tolerated : {"xmlns", ":"}) {
      if (document.find(tolerated) != document.npos) return;
    }
    FAIL() << "accepted: " << testing::PrintToString(document);
  }
}

constexpr std::string_view seed =
    "<?xml version='1.0'?><r xmlns:p='u'><a k='v&lt;'>t&#65;</a><!--c--><p:b><![CDATA[x]]></p:b><?i d?></r>";
constexpr std::string_view plainSeed = "<r><a k='v&lt;' l=\"w\">t&#65;</a><!--c--><b><![CDATA[x]]></b><?i d?></r>";

TEST(Hostile, EveryByteInEveryPlace) {
  Context ctx;
  for (size_t at = 0; at < plainSeed.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string replaced(plainSeed);
      replaced[at] = static_cast<char>(byte);
      judge(ctx, replaced);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(Hostile, EveryPieceLeftOutOrDoubled) {
  Context ctx;
  for (const std::string_view text : {seed, plainSeed}) {
    for (size_t from = 0; from < text.size(); ++from) {
      for (size_t to = from + 1; to <= text.size() && to < from + 20; ++to) {
        judge(ctx, std::string(text.substr(0, from)) + std::string(text.substr(to)));
        judge(ctx, std::string(text.substr(0, to)) + std::string(text.substr(from)));
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(Hostile, SeveralChangesAtOnce) {
  Context ctx;
  uint32_t random = 2024;
  const auto next = [&random](size_t below) {
    random = random * 1664525u + 1013904223u;
    return (random >> 8) % static_cast<uint32_t>(below);
  };
  constexpr std::string_view pieces[] = {"<",
                                         ">",
                                         "/>",
                                         "</",
                                         "&",
                                         ";",
                                         "'",
                                         "\"",
                                         "]]>",
                                         "<![CDATA[",
                                         "<!--",
                                         "-->",
                                         "<?",
                                         "?>",
                                         "\xC3\xA9",
                                         "\xFF",
                                         "\0"sv,
                                         "&#0;",
                                         "&lt;",
                                         "xmlns=''",
                                         ":",
                                         "<!DOCTYPE r>",
                                         "\r",
                                         "\xEF\xBB\xBF",
                                         "<r>",
                                         "</r>",
                                         "encoding='UTF-16'",
                                         "\xFE\xFF"};
  for (int round = 0; round < 20000; ++round) {
    std::string document(round % 2 == 0 ? seed : plainSeed);
    for (uint32_t changes = 1 + next(3); changes > 0; --changes) {
      const size_t at = next(document.size() + 1);
      document.replace(at, next(4), pieces[next(std::size(pieces))]);
    }
    judge(ctx, document);
    if (HasFatalFailure()) return;
  }
}

TEST(Hostile, HeapLimitEndsACaptureThatGrows) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 1 << 20;
  Context ctx(options);
  WildcardHost host(ctx);
  const int status = read(ctx, "<r><a>" + std::string(4 << 20, 'x') + "</a></r>", host);
  EXPECT_TRUE(status != 0 || host.callbackStatus != 0 || rtxErrCount(ctx) > 0);
  EXPECT_LE(stats(ctx).peakUsed, size_t{1} << 20);
}

// A fragment copies the long name that it borrows. That a host frees what it was given does not let a small document
// ask for that again and again.
TEST(Hostile, FragmentsBorrowNoMoreThanTheHeapMayHold) {
  struct Forgetful {
    RuntimeContext *ctx = nullptr;
    WildcardHost *host = nullptr;
    int captured = 0;
    static void trace(void *user, bool enter, const char *function, const char *) {
      Forgetful &self = *static_cast<Forgetful *>(user);
      if (enter || std::string_view(function) != "SAXAnyEndElement") return;
      RtxXmlString &entry = *self.host->entries.back();
      if (entry.cdata || entry.value == nullptr) return; // an entry begins with the flag set
      ++self.captured;
      rtxMemHeapFreePtr(self.ctx, entry.value);
      entry.value = nullptr;
    }
  } forgetful;
  constexpr size_t limit = 1 << 20;
  RuntimeOptions options = defaultOptions();
  options.heapLimit = limit;
  options.trace = Forgetful::trace;
  options.traceUser = &forgetful;
  Context ctx(options);
  WildcardHost host(ctx);
  forgetful.ctx = ctx;
  forgetful.host = &host;
  std::string document = "<r xmlns:p='" + std::string(limit / 20, 'u') + "'>";
  for (int i = 0; i < 20; ++i)
    document += "<p:a/>";
  read(ctx, document + "</r>", host);
  EXPECT_EQ(forgetful.captured, 2); // an eighth of it
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_NO_MEMORY);
}

} // namespace
} // namespace contract
