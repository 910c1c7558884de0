#include "reading.h"

#include "capture.h"

#include <algorithm>
#include <cstring>
#include <regex>

namespace reading {

namespace {

// A type's functions behind untyped pointers.
template <typename T> constexpr Type typeOf() {
  using Functions = support::Functions<T>;
  using Filling = typename Functions::Filling;
  using Checking = typename Functions::Checking;
  return {
      .name = Functions::name,
      .size = sizeof(T),
      .init = [](RuntimeContext *ctx, void *record) { return Functions::init(ctx, static_cast<T *>(record)); },
      .print = [](const char *name,
                  const void *record) { return Functions::print(name, static_cast<const T *>(record)); },
      .release = [](RuntimeContext *ctx, void *record) { Functions::release(ctx, static_cast<T *>(record)); },
      .filling = {Filling::start, Filling::characters, Filling::end},
      .checking = {Checking::start, Checking::characters, Checking::end},
      .initFilling = [](RuntimeContext *ctx, SaxTypeHandler *handler, void *record,
                        int32_t level) { return Filling::init(ctx, handler, static_cast<T *>(record), level); },
      .initChecking = [](RuntimeContext *ctx, VsaxTypeHandler *handler,
                         int32_t level) { return Checking::init(ctx, handler, nullptr, level); },
  };
}

// The same of the document whose root is of a type.
template <typename T> constexpr Root rootOf(const Type &type) {
  using Document = dialogs::Document<T>;
  return {
      .element = Document::root,
      .type = &type,
      .decode = [](RuntimeContext *ctx, void *record) { return Document::decode(ctx, static_cast<T *>(record)); },
      .validate = Document::validate,
      .encode = [](RuntimeContext *ctx,
                   const void *record) { return Document::encode(ctx, static_cast<const T *>(record)); },
  };
}

} // namespace

namespace types {
constinit const Type state = typeOf<tns__state>();
constinit const Type replaces = typeOf<tns__dialog_replaces>();
constinit const Type nameaddr = typeOf<tns_nameaddr>();
constinit const Type routeSet = typeOf<tns__dialog_route_set>();
constinit const Type param = typeOf<tns_participant_target_param>();
constinit const Type target = typeOf<tns_participant_target>();
constinit const Type sessd = typeOf<tns_sessd>();
constinit const Type participant = typeOf<tns_participant>();
constinit const Type dialog = typeOf<tns__dialog>();
constinit const Type info = typeOf<tns__dialog_info>();
} // namespace types

constinit const Root info = rootOf<tns__dialog_info>(types::info);
constinit const Root dialog = rootOf<tns__dialog>(types::dialog);
constinit const Root state = rootOf<tns__state>(types::state);

// ---- Records ------------------------------------------------------------------------------------------------------

Record::Record(RuntimeContext *context, const Type &of)
    : ctx(context), type(of), storage(std::make_unique<unsigned char[]>(of.size)) {
  std::memset(storage.get(), support::pattern, of.size);
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

Marked inDialog(const std::string &content) { return in(dialog, "<state>s</state>" + content); }

Marked inLocal(const std::string &content) { return inDialog("<local>" + content + "</local>"); }

Marked inTarget(const std::string &content) { return inLocal("<target uri='u'>" + content + "</target>"); }

std::string dialogWith(const std::string &members) {
  return "state='s' " + (members.empty() ? "" : members + " ") + "id='d'";
}

std::string withoutDeclarations(const std::string &record) {
  static const std::regex declaration(R"( [^ ='"]*xmlns(:[^ ='"]*)?='[^']*')");
  return std::regex_replace(record, declaration, "");
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
