#include "debugInfo.h"

#include <algorithm>
#include <cstring>

namespace debugInfo {

// ---- Documents ------------------------------------------------------------------------------------------------

void fillWithPattern(Value &value) { std::memset(static_cast<void *>(&value), 0xA5, sizeof value); }

namespace {

RtSaxHandler callbacks(RtSaxStartElement start, RtSaxEndElement end, RtSaxCharacters characters) {
  return {start, end, characters, nullptr, nullptr};
}

#define RECORD_TYPE(E, ATTRIBUTES)                                                                                     \
  const RecordType E##Type = {                                                                                         \
      "tns__" #E,                                                                                                      \
      sizeof(tns__##E),                                                                                                \
      [](RuntimeContext *c, Value &v) { return QxInit_tns__##E(c, &v.E); },                                            \
      [](RuntimeContext *c, Value &v) { return QxMemFree_tns__##E(c, &v.E); },                                         \
      [](const char *name, const Value &v) { return QxPrint_tns__##E(name, &v.E); },                                   \
      [](RuntimeContext *c, const Value &v, const char *element, const RtxNamespace *ns) {                             \
        return QxXmlET_tns__##E(c, &v.E, element, ns);                                                                 \
      },                                                                                                               \
      [](RuntimeContext *c, const Value &v, const char *element, const RtxNamespace *ns) {                             \
        return QxXmlET_tns__##E##_StartElement(c, &v.E, element, ns);                                                  \
      },                                                                                                               \
      ATTRIBUTES,                                                                                                      \
      [](RuntimeContext *c, const Value &v, const RtxNamespace *ns) {                                                  \
        return QxXmlET_tns__##E##_Contents(c, &v.E, ns);                                                               \
      },                                                                                                               \
      QxXmlET_tns__##E##_EndElement,                                                                                   \
      [](RuntimeContext *c, SaxTypeHandler *handler, Value &v, int32_t level) {                                        \
        return QxSAX_tns__##E##_init(c, handler, &v.E, level);                                                         \
      },                                                                                                               \
      callbacks(QxSAX_tns__##E##_startElement, QxSAX_tns__##E##_endElement, QxSAX_tns__##E##_characters),              \
      QxVSAX_tns__##E##_init,                                                                                          \
      callbacks(QxVSAX_tns__##E##_startElement, QxVSAX_tns__##E##_endElement, QxVSAX_tns__##E##_characters),           \
  };
#define ATTRIBUTES_OF(E)                                                                                               \
  [](RuntimeContext *c, const Value &v, const RtxNamespace *ns) { return QxXmlET_tns__##E##_Attrs(c, &v.E, ns); }

RECORD_TYPE(start_trigger, nullptr)
RECORD_TYPE(stop_trigger, nullptr)
RECORD_TYPE(control, nullptr)
RECORD_TYPE(session, ATTRIBUTES_OF(session))
RECORD_TYPE(debugconfig, ATTRIBUTES_OF(debugconfig))
RECORD_TYPE(debuginfo, ATTRIBUTES_OF(debuginfo))

// PASSED and TAKEN: how an encoder is given the value, and how a decoder is given its storage.
#define DOCUMENT(ROOT, E, KIND, TYPE, PASSED, TAKEN)                                                                   \
  {                                                                                                                    \
    ROOT, #E, KIND, TYPE, [](RuntimeContext *c, const Value &v) { return QxXmlE_tns_##E(c, PASSED); },                 \
        [](RuntimeContext *c, const Value &v) { return QxXmlE_tns_##E##_StartElement(c, PASSED); },                    \
        [](RuntimeContext *c, const Value &v) { return QxXmlE_tns_##E##_Contents(c, PASSED); },                        \
        [](RuntimeContext *c, const Value &v) { return QxXmlE_tns_##E##_EndElement(c, PASSED); },                      \
        [](RuntimeContext *c, Value &v) { return QxXmlD_tns_##E(c, TAKEN); }, QxXmlV_tns_##E,                          \
  }
#define TEXT(ROOT, E) DOCUMENT(ROOT, E, Kind::text, nullptr, &v.text, &v.text)
#define BYTES(ROOT, E) DOCUMENT(ROOT, E, Kind::bytes, nullptr, &v.bytes, &v.bytes)
#define CODE(ROOT, E) DOCUMENT(ROOT, E, Kind::code, nullptr, v.code, &v.code)
#define RECORD(ROOT, E) DOCUMENT(ROOT, E, Kind::record, &E##Type, &v.E, &v.E)

} // namespace

const std::vector<Document> &allDocuments() {
  static const std::vector<Document> documents = {
      TEXT("time", time),
      TEXT("from", from),
      TEXT("to", to),
      TEXT("method", method),
      TEXT("icsi", icsi),
      TEXT("iari", iari),
      BYTES("debug-id", debug_id),
      TEXT("time-period", time_period),
      CODE("reason", reason),
      TEXT("interface", interface),
      CODE("depth", depth),
      RECORD("start-trigger", start_trigger),
      RECORD("stop-trigger", stop_trigger),
      RECORD("control", control),
      RECORD("session", session),
      RECORD("debugconfig", debugconfig),
      RECORD("debuginfo", debuginfo),
  };
  return documents;
}

const Document &documentOf(std::string_view root) {
  for (const Document &document : allDocuments())
    if (document.root == root) return document;
  ADD_FAILURE() << "no document is called " << root;
  return allDocuments().front();
}

namespace {

std::vector<const Document *> documentsThatAre(bool record) {
  std::vector<const Document *> some;
  for (const Document &document : allDocuments())
    if ((document.kind == Kind::record) == record) some.push_back(&document);
  return some;
}

} // namespace

std::vector<const Document *> recordDocuments() { return documentsThatAre(true); }
std::vector<const Document *> simpleDocuments() { return documentsThatAre(false); }

// ---- Values by hand -------------------------------------------------------------------------------------------

void *Builder::allocate(size_t size) {
  void *block = rtxMemHeapAlloc(ctx, size);
  if (block == nullptr) failed = true;
  return block;
}

RtxXmlString Builder::text(std::string_view text, bool cdata) {
  auto *copy = static_cast<char *>(allocate(text.size() + 1));
  if (copy == nullptr) return {cdata, nullptr};
  std::copy(text.begin(), text.end(), copy);
  copy[text.size()] = '\0';
  return {cdata, copy};
}

RtxHexBinary Builder::bytes(std::string_view digits) {
  const size_t length = digits.size() / 2;
  if (length == 0) return {0, nullptr};
  auto *block = static_cast<uint8_t *>(allocate(length));
  if (block == nullptr) return {0, nullptr};
  for (size_t i = 0; i < length; ++i)
    block[i] = static_cast<uint8_t>(std::stoi(std::string(digits.substr(2 * i, 2)), nullptr, 16));
  return {static_cast<uint32_t>(length), block};
}

tns__session *Builder::session(tns__debugconfig &config) {
  auto *item = static_cast<tns__session *>(allocate(sizeof(tns__session)));
  if (item == nullptr) return nullptr;
  EXPECT_EQ(QxInit_tns__session(ctx, item), 0);
  if (rtxDListAppend(ctx, &config.tns_session, item) != nullptr) return item;
  failed = true;
  rtxMemHeapFreePtr(ctx, item);
  return nullptr;
}

tns__debugconfig *Builder::debugconfig(tns__debuginfo &record) {
  auto *item = static_cast<tns__debugconfig *>(allocate(sizeof(tns__debugconfig)));
  if (item == nullptr) return nullptr;
  EXPECT_EQ(QxInit_tns__debugconfig(ctx, item), 0);
  if (rtxDListAppend(ctx, &record.tns_debugconfig, item) != nullptr) return item;
  failed = true;
  rtxMemHeapFreePtr(ctx, item);
  return nullptr;
}

void Builder::foreign(tns__debuginfo &record, std::string_view element) {
  auto *item = static_cast<RtxXmlString *>(allocate(sizeof(RtxXmlString)));
  if (item == nullptr) return;
  *item = element.data() == nullptr ? RtxXmlString{false, nullptr} : text(element);
  if (rtxDListAppend(ctx, &record.anyElems.items, item) != nullptr) return;
  failed = true;
  rtxMemHeapFreePtr(ctx, item->value);
  rtxMemHeapFreePtr(ctx, item);
}

void Builder::complete(tns__start_trigger &record) {
  record.m = 127;
  record.tns_from = text("sip:bob@example.com");
  record.tns_to = text("sip:carol@example.com");
  record.tns_icsi = text("urn:urn-7:3gpp-service.ims.icsi.mmtel");
  record.tns_iari = text("urn:urn-7:3gpp-application.ims.iari.game");
  record.tns_method = text("INVITE");
  record.tns_time = text("2024-01-02T03:04:05Z");
  record.tns_debug_id = bytes("0A1BFF");
}

void Builder::complete(tns__stop_trigger &record) {
  record.m = 7;
  record.tns_time = text("2024-01-03T00:00:00Z");
  record.tns_time_period = text("PT5M");
  record.tns_reason = tns__reason_session_end;
}

void Builder::complete(tns__control &record) {
  record.m = 3;
  record.tns_interface = text("Gm Mw");
  record.tns_depth = tns__depth_minimum;
  record.tns_debug_id = bytes("43AA55");
}

void Builder::complete(tns__session &record, std::string_view id) {
  complete(record.tns_start_trigger);
  complete(record.tns_stop_trigger);
  complete(record.tns_control);
  record.tns_id = text(id);
}

void Builder::complete(tns__debugconfig &record, std::string_view aor) {
  if (tns__session *item = session(record)) complete(*item, "4");
  if (tns__session *item = session(record)) complete(*item, "5");
  record.tns_aor = text(aor);
}

void Builder::complete(tns__debuginfo &record) {
  if (tns__debugconfig *item = debugconfig(record)) complete(*item, "sip:alice@example.com");
  if (tns__debugconfig *item = debugconfig(record)) complete(*item, "sip:dave@example.com");
  foreign(record, "<x:f xmlns:x=\"urn:x\">t<x:g/></x:f>");
  foreign(record, "<y xmlns=\"urn:y\"/>");
  record.tns_version = 3;
  record.tns_state = tns__debuginfo_state_partial;
}

void Builder::complete(const Document &document, Value &value) {
  const std::string_view root = document.root;
  if (document.kind == Kind::text) value.text = text("a <&> b");
  if (document.kind == Kind::bytes) value.bytes = bytes("43AA55");
  if (document.kind == Kind::code) value.code = 1;
  if (root == "start-trigger") complete(value.start_trigger);
  if (root == "stop-trigger") complete(value.stop_trigger);
  if (root == "control") complete(value.control);
  if (root == "session") complete(value.session);
  if (root == "debugconfig") complete(value.debugconfig);
  if (root == "debuginfo") complete(value.debuginfo);
}

namespace {

// What a record of a type looks like when it is complete.
struct Complete {
  std::string dump;
  std::string attributes;
  std::string content;
};

Complete completeOf(std::string_view root) {
  const auto whole = [](std::string_view name, const std::string &attributes) {
    return "<q:" + std::string(name) + attributes + ">" + completeOf(name).content + "</q:" + std::string(name) + ">";
  };
  if (root == "start-trigger") {
    return {"from=sip:bob@example.com to=sip:carol@example.com icsi=urn:urn-7:3gpp-service.ims.icsi.mmtel "
            "iari=urn:urn-7:3gpp-application.ims.iari.game method=INVITE time=2024-01-02T03:04:05Z debug-id=0A1BFF",
            "",
            "<q:from>sip:bob@example.com</q:from><q:to>sip:carol@example.com</q:to>"
            "<q:icsi>urn:urn-7:3gpp-service.ims.icsi.mmtel</q:icsi>"
            "<q:iari>urn:urn-7:3gpp-application.ims.iari.game</q:iari><q:method>INVITE</q:method>"
            "<q:time>2024-01-02T03:04:05Z</q:time><q:debug-id>0A1BFF</q:debug-id>"};
  }
  if (root == "stop-trigger") {
    return {"time=2024-01-03T00:00:00Z time-period=PT5M reason=1", "",
            "<q:time>2024-01-03T00:00:00Z</q:time><q:time-period>PT5M</q:time-period><q:reason>session_end</q:reason>"};
  }
  if (root == "control") {
    return {"interface=Gm Mw depth=1 debug-id=43AA55", "",
            "<q:interface>Gm Mw</q:interface><q:depth>minimum</q:depth><q:debug-id>43AA55</q:debug-id>"};
  }
  if (root == "session") {
    return {"id=4 start{" + completeOf("start-trigger").dump + "} stop{" + completeOf("stop-trigger").dump +
                "} control{" + completeOf("control").dump + "}",
            " id=\"4\"", whole("start-trigger", "") + whole("stop-trigger", "") + whole("control", "")};
  }
  if (root == "debugconfig") {
    const std::string session = completeOf("session").dump;
    return {"aor=sip:alice@example.com session{" + session + "} session{id=5" + session.substr(4) + "}",
            " aor=\"sip:alice@example.com\"", whole("session", " id=\"4\"") + whole("session", " id=\"5\"")};
  }
  const std::string config = completeOf("debugconfig").dump;
  return {
      "version=3 state=1 debugconfig{" + config + "} debugconfig{aor=sip:dave@example.com" +
          config.substr(config.find(' ')) + "} any=<x:f xmlns:x=\"urn:x\">t<x:g/></x:f> " + "any=<y xmlns=\"urn:y\"/>",
      " version=\"3\" state=\"partial\"",
      whole("debugconfig", " aor=\"sip:alice@example.com\"") + whole("debugconfig", " aor=\"sip:dave@example.com\"") +
          "<x:f xmlns:x=\"urn:x\">t<x:g/></x:f><y xmlns=\"urn:y\"/>"};
}

} // namespace

std::string completeDump(const Document &document) {
  switch (document.kind) {
  case Kind::text: return "a <&> b";
  case Kind::bytes: return "43AA55";
  case Kind::code: return "1";
  case Kind::record: break;
  }
  return completeOf(document.root).dump;
}

std::string completeBody(const Document &document) {
  std::string attributes;
  std::string content;
  switch (document.kind) {
  case Kind::text: content = "a &lt;&amp;&gt; b"; break;
  case Kind::bytes: content = "43AA55"; break;
  case Kind::code: content = document.root == "reason"sv ? "session_end" : "minimum"; break;
  case Kind::record:
    attributes = completeOf(document.root).attributes;
    content = completeOf(document.root).content;
    break;
  }
  return "<q:"s + document.root + attributes + ">" + content + "</q:" + document.root + ">";
}

void release(RuntimeContext *ctx, const Document &document, Value &value) {
  switch (document.kind) {
  case Kind::text: rtxMemHeapFreePtr(ctx, value.text.value); break;
  case Kind::bytes: rtxMemHeapFreePtr(ctx, value.bytes.bytes); break;
  case Kind::code: break;
  case Kind::record: document.type->release(ctx, value); break;
  }
}

Held::Held(RuntimeContext *context, const Document &ofDocument) : ctx(context), document(ofDocument) {
  fillWithPattern(value);
}

Held::~Held() {
  if (owned) release(ctx, document, value);
}

Held &Held::init() {
  EXPECT_EQ(document.type->init(ctx, value), 0);
  owned = true;
  return *this;
}

Held &Held::complete() {
  if (document.kind == Kind::record) init();
  Builder(ctx).complete(document, value);
  owned = true;
  return *this;
}

namespace {

class Dump {
public:
  void add(const std::string &fragment) { all += (all.empty() ? "" : " ") + fragment; }
  void add(const char *name, const RtxXmlString &text) {
    add(name + "="s + (text.value == nullptr ? "-" : text.value));
  }
  void add(const char *name, const RtxHexBinary &binary) {
    EXPECT_EQ(binary.bytes == nullptr, binary.length == 0);
    std::string digits;
    for (uint32_t i = 0; i < binary.length; ++i) {
      digits += "0123456789ABCDEF"[binary.bytes[i] >> 4];
      digits += "0123456789ABCDEF"[binary.bytes[i] & 15];
    }
    add(name + "="s + digits);
  }
  void add(const char *name, uint32_t number, uint32_t pattern) {
    add(name + "="s + (number == pattern ? "?" : std::to_string(number)));
  }
  void addWithin(const char *name, const std::string &inner) { add(name + "{"s + inner + "}"); }
  void strangeBits(uint32_t m, uint32_t known) {
    if ((m & ~known) != 0) add("m=" + std::to_string(m));
  }

  std::string all;
};

} // namespace

std::string dump(const tns__start_trigger &record) {
  Dump dump;
  if ((record.m & 1) != 0) dump.add("from", record.tns_from);
  if ((record.m & 2) != 0) dump.add("to", record.tns_to);
  if ((record.m & 4) != 0) dump.add("icsi", record.tns_icsi);
  if ((record.m & 8) != 0) dump.add("iari", record.tns_iari);
  if ((record.m & 16) != 0) dump.add("method", record.tns_method);
  if ((record.m & 32) != 0) dump.add("time", record.tns_time);
  if ((record.m & 64) != 0) dump.add("debug-id", record.tns_debug_id);
  dump.strangeBits(record.m, 127);
  return dump.all;
}

std::string dump(const tns__stop_trigger &record) {
  Dump dump;
  if ((record.m & 1) != 0) dump.add("time", record.tns_time);
  if ((record.m & 2) != 0) dump.add("time-period", record.tns_time_period);
  if ((record.m & 4) != 0) dump.add("reason", record.tns_reason, 0xA5A5);
  dump.strangeBits(record.m, 7);
  return dump.all;
}

std::string dump(const tns__control &record) {
  Dump dump;
  dump.add("interface", record.tns_interface);
  if ((record.m & 1) != 0) dump.add("depth", record.tns_depth, 0xA5A5);
  if ((record.m & 2) != 0) dump.add("debug-id", record.tns_debug_id);
  dump.strangeBits(record.m, 3);
  return dump.all;
}

std::string dump(const tns__session &record) {
  Dump all;
  all.add("id", record.tns_id);
  all.addWithin("start", dump(record.tns_start_trigger));
  all.addWithin("stop", dump(record.tns_stop_trigger));
  all.addWithin("control", dump(record.tns_control));
  return all.all;
}

std::string dump(const tns__debugconfig &record) {
  Dump all;
  all.add("aor", record.tns_aor);
  for (const auto *session : itemsOf<tns__session>(record.tns_session))
    all.addWithin("session", dump(*session));
  return all.all;
}

std::string dump(const tns__debuginfo &record) {
  Dump all;
  all.add("version", record.tns_version, 0xA5A5A5A5);
  all.add("state", record.tns_state, 0xA5A5);
  for (const auto *config : itemsOf<tns__debugconfig>(record.tns_debugconfig))
    all.addWithin("debugconfig", dump(*config));
  for (const auto *entry : itemsOf<RtxXmlString>(record.anyElems.items))
    all.add("any", *entry);
  return all.all;
}

std::string dump(const Document &document, const Value &value) {
  const std::string_view root = document.root;
  if (document.kind == Kind::text) return value.text.value == nullptr ? "-" : value.text.value;
  if (document.kind == Kind::bytes) {
    Dump bytes;
    bytes.add("", value.bytes);
    return bytes.all.substr(1);
  }
  if (document.kind == Kind::code) return std::to_string(value.code);
  if (root == "start-trigger") return dump(value.start_trigger);
  if (root == "stop-trigger") return dump(value.stop_trigger);
  if (root == "control") return dump(value.control);
  if (root == "session") return dump(value.session);
  if (root == "debugconfig") return dump(value.debugconfig);
  return dump(value.debuginfo);
}

// ---- Reading and writing ----------------------------------------------------------------------------------------

std::string brief(RuntimeContext *ctx) { return support::errorsWithoutPlaces(ctx); }

Reading decodeInput(RuntimeContext *ctx, const Document &document) {
  Held held(ctx, document);
  Value before;
  fillWithPattern(before);
  const int status = document.decode(ctx, held);
  held.owned = std::memcmp(&held.value, &before, sizeof before) != 0;
  return {status, held.owned ? dump(document, held.value) : "untouched", brief(ctx)};
}

Reading decode(RuntimeContext *ctx, const Document &document, const std::string &text) {
  return support::readDocument(ctx, text, [&](RuntimeContext *c) { return decodeInput(c, document); });
}

Reading decode(const Document &document, const std::string &text) {
  return support::readDocument(text, [&](RuntimeContext *c) { return decodeInput(c, document); });
}

Reading decode(std::string_view root, const std::string &text) { return decode(documentOf(root), text); }

static Reading validateInput(RuntimeContext *ctx, const Document &document) {
  const int status = document.validate(ctx);
  return {status, "", brief(ctx)};
}

Reading validate(RuntimeContext *ctx, const Document &document, const std::string &text) {
  return support::readDocument(ctx, text, [&](RuntimeContext *c) { return validateInput(c, document); });
}

Reading validate(const Document &document, const std::string &text) {
  return support::readDocument(text, [&](RuntimeContext *c) { return validateInput(c, document); });
}

Reading validate(std::string_view root, const std::string &text) { return validate(documentOf(root), text); }

std::string element(std::string_view root, std::string_view attributes, std::string_view content) {
  return "<" + std::string(root) + " xmlns=\"" + namespaceUri + "\"" + (attributes.empty() ? "" : " ") +
         std::string(attributes) + ">" + std::string(content) + "</" + std::string(root) + ">";
}

std::string element(std::string_view root, std::string_view content) { return element(root, "", content); }

std::string encode(RuntimeContext *ctx, const Document &document, const Value &value) {
  return support::withoutDeclaration(
      support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, value); }));
}

std::string spelled(std::string_view body, std::string_view prefix) {
  std::string text;
  for (size_t at = 0; at < body.size();) {
    if (body.substr(at).starts_with("q:")) {
      text += prefix;
      at += 2;
    } else {
      text += body[at++];
    }
  }
  return text;
}

} // namespace debugInfo
