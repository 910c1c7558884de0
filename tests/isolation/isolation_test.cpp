// No body makes the library open a file, a connection or a converter of encodings. The functions by which the parser
// would do that are this program's own: they note the call, and go on to the system's only while nothing is watched.
#include "context.h"
#include "rtx.h"

#include <libxml/encoding.h>
#include <libxml/parser.h>

#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <iconv.h>
#include <netdb.h>
#include <string>
#include <sys/socket.h>
#include <vector>

namespace {

std::vector<std::string> *calls = nullptr; // null: not watched

bool note(const char *function, const char *what) {
  if (calls == nullptr) return false;
  calls->push_back(std::string(function) + " " + (what == nullptr ? "" : what));
  return true;
}

template <typename Function> Function *theSystems(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

void *gzopen64(const char *path, const char *) {
  note("gzopen64", path);
  return nullptr;
}

FILE *fopen64(const char *path, const char *mode) {
  return note("fopen64", path) ? nullptr : theSystems<FILE *(const char *, const char *)>("fopen64")(path, mode);
}

int open64(const char *path, int flags, ...) {
  return note("open64", path) ? -1 : theSystems<int(const char *, int, ...)>("open64")(path, flags, 0600);
}

int socket(int domain, int type, int protocol) {
  return note("socket", "") ? -1 : theSystems<int(int, int, int)>("socket")(domain, type, protocol);
}

int getaddrinfo(const char *node, const char *, const addrinfo *, addrinfo **) {
  note("getaddrinfo", node);
  return EAI_NONAME;
}

hostent *gethostbyname(const char *name) {
  note("gethostbyname", name);
  return nullptr;
}

iconv_t iconv_open(const char *to, const char *from) {
  if (note("iconv_open", from)) return reinterpret_cast<iconv_t>(-1);
  return theSystems<iconv_t(const char *, const char *)>("iconv_open")(to, from);
}

} // extern "C"

namespace {

// What the parser asks the system for while run runs.
std::vector<std::string> callsOf(const std::function<void()> &run) {
  std::vector<std::string> made;
  calls = &made;
  run();
  calls = nullptr;
  return made;
}

int parse(RuntimeContext *ctx, const std::string &body) {
  rtxSetInput(ctx, body.data(), body.size());
  RtSaxReader *reader = rtSaxCCreateXmlReader(
      ctx, nullptr, [](void *, const char *, const char *, const char *const *) { return 0; },
      [](void *, const char *, const char *) { return 0; }, [](void *, const char *, size_t) { return 0; });
  const int status = rtSaxCParse(reader);
  rtSaxCReleaseReader(reader);
  return status;
}

TEST(Isolation, IsWatchedWhereTheParserWouldBreakIt) {
  EXPECT_EQ(callsOf([] {
              xmlFreeDoc(xmlReadFile("no/such/file.xml", nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
            }).empty(),
            false);
  EXPECT_EQ(callsOf([] { xmlFindCharEncodingHandler("TSCII"); }).empty(), false);
}

TEST(Isolation, NoBodyOpensAnything) {
  const struct {
    const char *what;
    std::string body;
    int status;
  } rows[] = {
      {"plain", "<a/>", 0},
      {"external subset", "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>", STATUS_PARSE_FAILED},
      {"external subset of the network", "<!DOCTYPE a PUBLIC 'p' 'http://127.0.0.1:9/a.dtd'><a/>", STATUS_PARSE_FAILED},
      {"entity", "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>&e;</a>", STATUS_PARSE_FAILED},
      {"parameter entity", "<!DOCTYPE a [<!ENTITY % e SYSTEM 'http://127.0.0.1:9/'> %e;]><a/>", STATUS_PARSE_FAILED},
      {"inclusion", "<i:include xmlns:i='http://www.w3.org/2001/XInclude' href='/etc/passwd'/>", 0},
      {"style sheet", "<?xml-stylesheet href='http://127.0.0.1:9/'?><a/>", 0},
      {"catalogue", "<?oasis-xml-catalog catalog='http://127.0.0.1:9/'?><a/>", 0},
      {"schema", "<a xmlns:x='http://www.w3.org/2001/XMLSchema-instance' x:schemaLocation='urn:a /etc/passwd'/>", 0},
      {"base", "<a xml:base='http://127.0.0.1:9/'/>", 0},
      {"UTF-8", "<?xml version='1.0' encoding='UTF-8'?><a/>", 0},
      {"UTF-16", std::string("\xFF\xFE<\0a\0/\0>\0", 10), 0},
      {"Latin 1", "<?xml version='1.0' encoding='Latin1'?><a>\xE9</a>", 0},
      {"ASCII", "<?xml version='1.0' encoding='us-ascii'?><a/>", 0},
      {"UTF-32", std::string("\xFF\xFE\0\0<\0\0\0a\0\0\0/\0\0\0>\0\0\0", 20), STATUS_PARSE_FAILED},
      {"an encoding of the C library", "<?xml version='1.0' encoding='TSCII'?><a/>", STATUS_PARSE_FAILED},
      {"another", "<?xml version='1.0' encoding='EUC-JP'?><a/>", STATUS_PARSE_FAILED},
      {"one that nobody knows", "<?xml version='1.0' encoding='no-such'?><a/>", STATUS_PARSE_FAILED},
      {"UTF-16 that is none", "<?xml version='1.0' encoding='utf-16'?><a/>", STATUS_PARSE_FAILED},
  };
  support::Context ctx;
  for (const auto &row : rows) {
    SCOPED_TRACE(row.what);
    int status = 0;
    EXPECT_EQ(callsOf([&] { status = parse(ctx, row.body); }), std::vector<std::string>{});
    EXPECT_EQ(status, row.status);
    rtxErrClear(ctx);
  }
}

} // namespace
