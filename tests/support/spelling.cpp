#include "spelling.h"

namespace support {

namespace {

constexpr std::string_view openMark = "<q:";
constexpr std::string_view closeMark = "</q:";

struct Speller {
  std::string uri;
  Spelling spelling;
  size_t elements = 0;

  std::string prefix() const {
    constexpr const char *turns[] = {"", "a:", "b:"};
    switch (spelling) {
    case Spelling::onePrefix: return "p:";
    case Spelling::mixedPrefixes: return turns[elements % 3];
    case Spelling::ownDeclarations: return elements == 0 ? "r:" : "";
    case Spelling::defaultNamespace:
    case Spelling::noNamespace: break;
    }
    return "";
  }

  std::string declaration(const char *name) const { return std::string(" ") + name + "=\"" + uri + "\""; }

  std::string declarations() const {
    const bool root = elements == 0;
    switch (spelling) {
    case Spelling::defaultNamespace: return root ? declaration("xmlns") : "";
    case Spelling::onePrefix: return root ? declaration("xmlns:p") : "";
    case Spelling::mixedPrefixes:
      return root ? declaration("xmlns:a") + declaration("xmlns") + declaration("xmlns:b") : "";
    case Spelling::ownDeclarations: return declaration(root ? "xmlns:r" : "xmlns");
    case Spelling::noNamespace: break;
    }
    return "";
  }
};

} // namespace

const char *spellingName(Spelling spelling) {
  switch (spelling) {
  case Spelling::defaultNamespace: return "default namespace";
  case Spelling::onePrefix: return "one prefix";
  case Spelling::mixedPrefixes: return "mixed prefixes";
  case Spelling::ownDeclarations: return "own declarations";
  case Spelling::noNamespace: return "no namespace";
  }
  return "?";
}

std::string SpelledDocument::qualified(std::string_view localName) const {
  for (const std::string &name : names)
    if (name.substr(name.find(':') + 1) == localName) return name;
  return "no element is called " + std::string(localName);
}

SpelledDocument spell(std::string_view body, std::string_view uri, Spelling spelling) {
  SpelledDocument document{spelling, {}, {}};
  Speller speller{std::string(uri), spelling};
  std::vector<std::string> open;
  size_t at = 0;
  while (at < body.size()) {
    if (body.substr(at).starts_with(openMark)) {
      at += openMark.size();
      const size_t end = body.find_first_of(" />", at);
      const std::string name = speller.prefix() + std::string(body.substr(at, end - at));
      document.text += "<" + name + speller.declarations();
      document.names.push_back(name);
      ++speller.elements;
      const size_t close = body.find('>', end);
      if (body[close - 1] != '/') open.push_back(name);
      at = end;
    } else if (body.substr(at).starts_with(closeMark)) {
      document.text += "</" + open.back();
      open.pop_back();
      at = body.find('>', at);
    } else {
      document.text += body[at++];
    }
  }
  return document;
}

} // namespace support
