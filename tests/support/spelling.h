// One body in every spelling of its namespace.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

enum class Spelling {
  defaultNamespace, // <root xmlns="uri"><child/></root>
  onePrefix,        // <p:root xmlns:p="uri"><p:child/></p:root>
  mixedPrefixes,    // the default namespace and two prefixes in turn, all declared on the root
  ownDeclarations,  // a prefix for the root, and a default declaration on each of its descendants
  noNamespace       // <root><child/></root>
};

inline constexpr Spelling qualifiedSpellings[] = {Spelling::defaultNamespace, Spelling::onePrefix,
                                                  Spelling::mixedPrefixes, Spelling::ownDeclarations};
inline constexpr Spelling allSpellings[] = {Spelling::defaultNamespace, Spelling::onePrefix, Spelling::mixedPrefixes,
                                            Spelling::ownDeclarations, Spelling::noNamespace};

const char *spellingName(Spelling spelling);

struct SpelledDocument {
  Spelling spelling;
  std::string text;
  std::vector<std::string> names; // the qualified names of the body's own elements, in document order

  // The first of these names whose local part is localName.
  std::string qualified(std::string_view localName) const;
};

// Spells a body in which the names of the module's own elements are written "q:name". Other elements stay as they are.
SpelledDocument spell(std::string_view body, std::string_view uri, Spelling spelling);

} // namespace support
