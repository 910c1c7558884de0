#include "reading.h"

#include "capture.h"

#include <algorithm>
#include <cstring>

namespace reading {

namespace {

// ---- The texts that no release function touches -------------------------------------------------------------------

void releaseKept(RuntimeContext *ctx, const tns__dialog_replaces &record) {
  for (const RtxXmlString &text : {record.tns_call_id, record.tns_local_tag, record.tns_remote_tag})
    rtxMemHeapFreePtr(ctx, text.value);
}

void releaseKept(RuntimeContext *ctx, const tns_participant_target_param &record) {
  for (const RtxXmlString &text : {record.tns_pname, record.tns_pval})
    rtxMemHeapFreePtr(ctx, text.value);
}

void releaseKept(RuntimeContext *ctx, const tns_participant_target &record) {
  for (const RtxListNode *node = record.tns_param.head; node != nullptr; node = node->next)
    releaseKept(ctx, *static_cast<const tns_participant_target_param *>(node->data));
}

void releaseKept(RuntimeContext *ctx, const tns_participant &record) {
  if ((record.m & tns_participant_has_target) != 0) releaseKept(ctx, record.tns_target);
}

void releaseKept(RuntimeContext *ctx, const tns__dialog &record) {
  if ((record.m & tns__dialog_has_replaces) != 0) releaseKept(ctx, record.tns_replaces);
  if ((record.m & tns__dialog_has_local) != 0) releaseKept(ctx, record.tns_local);
  if ((record.m & tns__dialog_has_remote) != 0) releaseKept(ctx, record.tns_remote);
}

void releaseKept(RuntimeContext *ctx, const tns__dialog_info &record) {
  for (const RtxListNode *node = record.tns_dialog.head; node != nullptr; node = node->next)
    releaseKept(ctx, *static_cast<const tns__dialog *>(node->data));
}

void releaseKept(RuntimeContext *, const tns__state &) {}
void releaseKept(RuntimeContext *, const tns_nameaddr &) {}
void releaseKept(RuntimeContext *, const tns__dialog_route_set &) {}
void releaseKept(RuntimeContext *, const tns_sessd &) {}

// ---- Functions behind untyped pointers ----------------------------------------------------------------------------

#define RELEASE_KEPT(T) releaseKept(ctx, *static_cast<T *>(record))
#define RELEASE_ALL(T) RELEASE_KEPT(T), QxMemFree_##T(ctx, static_cast<T *>(record))

#define TYPE(T, RELEASE)                                                                                               \
  {                                                                                                                    \
#T, sizeof(T), [](RuntimeContext *ctx, void *record) { return QxInit_##T(ctx, static_cast<T *>(record)); },        \
        [](const char *name, const void *record) { return QxPrint_##T(name, static_cast<const T *>(record)); },        \
        [](RuntimeContext *ctx, void *record) { RELEASE(T); },                                                         \
        {QxSAX_##T##_startElement, QxSAX_##T##_characters, QxSAX_##T##_endElement},                                    \
        {QxVSAX_##T##_startElement, QxVSAX_##T##_characters, QxVSAX_##T##_endElement},                                 \
        [](RuntimeContext *ctx, SaxTypeHandler *handler, void *record, int32_t level) {                                \
          return QxSAX_##T##_init(ctx, handler, static_cast<T *>(record), level);                                      \
        },                                                                                                             \
        QxVSAX_##T##_init   \
  }

#define ROOT(NAME, ELEMENT, T, TYPE)                                                                                   \
  {                                                                                                                    \
    NAME, TYPE, [](RuntimeContext *ctx, void *record) { return QxXmlD_tns_##ELEMENT(ctx, static_cast<T *>(record)); }, \
        QxXmlV_tns_##ELEMENT, [](RuntimeContext *ctx, const void *record) {                                            \
          return QxXmlE_tns_##ELEMENT(ctx, static_cast<const T *>(record));                                            \
        }                                                                                                              \
  }

} // namespace

namespace types {
constinit const Type state = TYPE(tns__state, RELEASE_ALL);
constinit const Type replaces = TYPE(tns__dialog_replaces, RELEASE_KEPT);
constinit const Type nameaddr = TYPE(tns_nameaddr, RELEASE_ALL);
constinit const Type routeSet = TYPE(tns__dialog_route_set, RELEASE_ALL);
constinit const Type param = TYPE(tns_participant_target_param, RELEASE_KEPT);
constinit const Type target = TYPE(tns_participant_target, RELEASE_ALL);
constinit const Type sessd = TYPE(tns_sessd, RELEASE_ALL);
constinit const Type participant = TYPE(tns_participant, RELEASE_ALL);
constinit const Type dialog = TYPE(tns__dialog, RELEASE_ALL);
constinit const Type info = TYPE(tns__dialog_info, RELEASE_ALL);
} // namespace types

constinit const Root info = ROOT("dialog-info", dialog_info, tns__dialog_info, &types::info);
constinit const Root dialog = ROOT("dialog", dialog, tns__dialog, &types::dialog);
constinit const Root state = ROOT("state", state, tns__state, &types::state);

// ---- Records ------------------------------------------------------------------------------------------------------

Record::Record(RuntimeContext *context, const Type &of)
    : ctx(context), type(of), storage(std::make_unique<unsigned char[]>(of.size)) {
  std::memset(storage.get(), 0xA5, of.size);
}

Record::~Record() {
  if (initialised) type.release(ctx, storage.get());
}

void Record::init() {
  EXPECT_EQ(type.init(ctx, storage.get()), 0);
  initialised = true;
}

int Record::decode(const Root &root) {
  EXPECT_EQ(root.type, &type);
  const int status = root.decode(ctx, storage.get());
  initialised = status != STATUS_READER_FAILED;
  return status;
}

namespace {

constexpr std::string_view printedName = "r";

// "r.tns_dialog[0].tns_state" as "dialog[0].state", "r" as "value".
std::string shortName(std::string_view name) {
  name.remove_prefix(printedName.size());
  if (name.empty()) return "value";
  if (name[0] == '.') name.remove_prefix(1);
  std::string shortened;
  while (!name.empty()) {
    const size_t prefix = name.find("tns_");
    shortened += name.substr(0, prefix);
    name = prefix == name.npos ? "" : name.substr(prefix + 4);
  }
  return shortened;
}

// In single quotes, where double ones need no backslash.
std::string requoted(std::string_view value) {
  if (value == "<null>") return "null";
  if (value.empty() || value[0] != '"') return std::string(value);
  std::string text = "'";
  for (size_t i = 1; i + 1 < value.size(); ++i) {
    if (value[i] == '\\' && value[i + 1] == '"') ++i;
    text += value[i];
  }
  return text + "'";
}

} // namespace

std::string Record::text() const {
  const std::string printed = support::captureStdout([this] { type.print("r", storage.get()); });
  std::string all;
  for (size_t at = 0; at < printed.size();) {
    const size_t end = printed.find('\n', at);
    const std::string_view line = std::string_view(printed).substr(at, end - at);
    const size_t equals = line.find(" = ");
    all += (all.empty() ? "" : " ") + shortName(line.substr(0, equals)) + "=" + requoted(line.substr(equals + 3));
    at = end + 1;
  }
  return all;
}

// ---- Reading ------------------------------------------------------------------------------------------------------

std::string recorded(RuntimeContext *ctx) { return support::errorsWithoutPlaces(ctx, support::ParserReason::omitted); }

Reading decodeInput(RuntimeContext *ctx, const Root &root) {
  Record record(ctx, *root.type);
  const int status = record.decode(root);
  return {status, record.initialised ? record.text() : "", recorded(ctx)};
}

int decodeStatus(RuntimeContext *ctx, const Root &root) { return Record(ctx, *root.type).decode(root); }

Reading validateInput(RuntimeContext *ctx, const Root &root) {
  const int status = root.validate(ctx);
  return {status, "", recorded(ctx)};
}

Reading decode(RuntimeContext *ctx, const Root &root, const std::string &document) {
  return support::readDocument(ctx, document, [&](RuntimeContext *c) { return decodeInput(c, root); });
}

Reading decode(const Root &root, const std::string &document) {
  return support::readDocument(document, [&](RuntimeContext *c) { return decodeInput(c, root); });
}

Reading validate(RuntimeContext *ctx, const Root &root, const std::string &document) {
  return support::readDocument(ctx, document, [&](RuntimeContext *c) { return validateInput(c, root); });
}

Reading validate(const Root &root, const std::string &document) {
  return support::readDocument(document, [&](RuntimeContext *c) { return validateInput(c, root); });
}

// ---- Cases --------------------------------------------------------------------------------------------------------

std::string Marked::unmarked() const {
  std::string bare = text;
  std::erase(bare, '^');
  return bare;
}

Marked whole(const Root &root, std::string text) { return {&root, std::move(text)}; }

Marked in(const Root &root, std::string_view content) {
  std::string text = "<"s + root.element + " xmlns=\"" + namespaceUri + "\"";
  if (&root == &info) text += " version=\"1\" state=\"full\" entity=\"e\"";
  if (&root == &dialog) text += " id=\"d\"";
  return {&root, text + ">" + std::string(content) + "</" + root.element + ">"};
}

namespace {

// "line:column+offset" of each mark, in order.
std::vector<std::string> markedPlaces(std::string_view marked) {
  std::vector<std::string> places;
  size_t line = 1, column = 1, offset = 0;
  for (char c : marked) {
    if (c == '^') {
      places.push_back(std::to_string(line) + ":" + std::to_string(column) + "+" + std::to_string(offset));
      continue;
    }
    ++offset;
    ++column;
    if (c == '\n') ++line, column = 1;
  }
  return places;
}

// The places of the context's errors, in the order of the document.
std::vector<std::string> recordedPlaces(RuntimeContext *ctx) {
  std::vector<const RtxError *> records;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    records.push_back(error);
  std::stable_sort(records.begin(), records.end(),
                   [](const RtxError *a, const RtxError *b) { return a->offset < b->offset; });
  std::vector<std::string> places;
  for (const RtxError *error : records) {
    const std::string place = support::placeText(*error);
    places.push_back(place.substr(0, place.find(' ')));
  }
  return places;
}

// Whoever finds an error says so: the module's own source, or the runtime's reader and then the module's source.
void expectSites(RuntimeContext *ctx, std::string_view source) {
  const std::string path = "xmlAddOns/addons/IMS/DialogInfo/"s + std::string(source);
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (error->status == STATUS_PARSE_FAILED) continue;
    ASSERT_GT(error->siteCount, 0u);
    for (uint32_t s = 0; s < error->siteCount; ++s) {
      const RtxErrorSite &site = error->sites[s];
      if (s == 0 && site.path == "runtime/reader"sv) continue;
      EXPECT_EQ(site.path, path);
      EXPECT_GT(site.line, 0);
    }
  }
}

constexpr std::string_view hopCount = "-16(tns__dialog_route_set.count,0)";

std::string validatorErrors(const Case &expected) {
  if (expected.validatorErrors != nullptr) return expected.validatorErrors;
  std::string errors = expected.errors;
  constexpr std::string_view code = "tns__state.tns_code";
  for (size_t at; (at = errors.find(code)) != errors.npos;)
    errors.replace(at, code.size(), "code");
  for (size_t at; (at = errors.find(hopCount)) != errors.npos;) {
    const bool last = at + hopCount.size() == errors.size();
    const size_t from = last && at != 0 ? at - 2 : at;
    errors.erase(from, at - from + hopCount.size() + (last ? 0 : 2));
  }
  return errors;
}

int statusOf(const std::string &errors) {
  if (errors.find("-104") != errors.npos) return STATUS_PARSE_FAILED;
  return errors.empty() ? 0 : std::stoi(errors);
}

} // namespace

void expectCase(const Case &expected) {
  const Root &root = *expected.document.root;
  const std::string text = expected.document.unmarked();
  const std::vector<std::string> places = markedPlaces(expected.document.text);
  for (support::InputForm form : support::inputForms) {
    SCOPED_TRACE((form == support::InputForm::copied ? "copied: " : "terminated: ") + text);
    support::Context ctx;
    ASSERT_EQ(support::setInput(ctx, text, form), 0);
    {
      support::HeapBalance balance(ctx);
      const Reading decoded = decodeInput(ctx, root);
      EXPECT_EQ(decoded.record, expected.record);
      EXPECT_EQ(decoded.errors, expected.errors);
      EXPECT_EQ(decoded.status, statusOf(expected.errors));
      EXPECT_EQ(recordedPlaces(ctx), places);
      expectSites(ctx, "QxXmlDialogInfoSAX");
    }
    rtxErrClear(ctx);
    {
      SCOPED_TRACE("validated");
      support::HeapBalance balance(ctx);
      const std::string errors = validatorErrors(expected);
      const Reading validated = validateInput(ctx, root);
      EXPECT_EQ(validated.errors, errors);
      EXPECT_EQ(validated.status, statusOf(errors));
      if (errors == expected.errors) {
        EXPECT_EQ(recordedPlaces(ctx), places);
      }
      expectSites(ctx, "QxXmlDialogInfoVldt");
    }
  }
}

void expectCases(std::initializer_list<Case> cases) {
  for (const Case &c : cases)
    expectCase(c);
}

} // namespace reading
