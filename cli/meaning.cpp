#include "meaning.h"

#include "json.h"
#include "rtSax.h"
#include "rtxContext.h"

#include <map>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

namespace cli {

namespace {

using namespace std::string_view_literals;

// Writes what a reader finds as JSON texts: names with their namespace, attributes sorted, text in one piece.
class Writer {
public:
  static int startElement(void *writer, const char *, const char *qualifiedName, const char *const *attributes) {
    static_cast<Writer *>(writer)->start(qualifiedName, attributes);
    return 0;
  }
  static int endElement(void *writer, const char *, const char *) {
    static_cast<Writer *>(writer)->end();
    return 0;
  }
  static int characters(void *writer, const char *bytes, std::size_t length) {
    static_cast<Writer *>(writer)->text.append(bytes, length);
    return 0;
  }

  std::string result;

private:
  using Scope = std::map<std::string, std::string, std::less<>>; // prefix and URI

  void start(std::string_view name, const char *const *attributes) {
    flush();
    Scope scope;
    std::vector<std::pair<std::string_view, std::string_view>> others;
    for (; attributes && attributes[0]; attributes += 2) {
      const std::string_view attribute = attributes[0];
      if (attribute == "xmlns"sv) {
        scope[""] = attributes[1];
      } else if (attribute.starts_with("xmlns:"sv)) {
        scope[std::string(attribute.substr(6))] = attributes[1];
      } else {
        others.emplace_back(attribute, attributes[1]);
      }
    }
    scopes.push_back(std::move(scope));

    Json sorted = Json::object();
    std::map<std::string, std::string_view> values;
    for (const auto &[attribute, value] : others)
      values[expanded(attribute, false)] = value;
    for (const auto &[attribute, value] : values)
      sorted[attribute] = value;
    result += "<" + jsonLine(expanded(name, true)) + jsonLine(sorted);
  }

  void end() {
    flush();
    result += ">";
    scopes.pop_back();
  }

  void flush() {
    if (!text.empty()) result += jsonLine(text);
    text.clear();
  }

  // A name with the URI of its prefix. A bare attribute is in no namespace.
  std::string expanded(std::string_view name, bool element) const {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return (element ? uriOf(""sv) : std::string()) + " " + std::string(name);
    return uriOf(name.substr(0, colon)) + " " + std::string(name.substr(colon + 1));
  }

  std::string uriOf(std::string_view prefix) const {
    for (auto scope = scopes.rbegin(); scope != scopes.rend(); ++scope)
      if (const auto found = scope->find(prefix); found != scope->end()) return found->second;
    return std::string(prefix); // declared nowhere: the name must do
  }

  std::vector<Scope> scopes;
  std::string text; // since the last tag
};

struct Release {
  void operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }
};

} // namespace

std::string meaningOf(const std::string &element) {
  const std::unique_ptr<RuntimeContext, Release> ctx(rtxContextCreate(nullptr));
  if (!ctx) throw std::bad_alloc();
  Writer writer;
  if (rtxSetInputZ(ctx.get(), element.c_str(), element.size()) != 0) return element;
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx.get(), &writer, Writer::startElement, Writer::endElement, Writer::characters);
  if (!reader) throw std::bad_alloc();
  const int status = rtSaxCParse(reader);
  rtSaxCReleaseReader(reader);
  return status == 0 ? writer.result : element;
}

} // namespace cli
