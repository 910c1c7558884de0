// What the schema and the library say about a body.
#pragma once

#include "context.h"
#include "place.h"
#include "vocabulary.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace differential {

// One complaint of the schema.
struct SchemaComplaint {
  enum class What {
    unknownRoot,
    childRefused,
    childMissing,
    attributeRefused,
    attributeMissing,
    textRefused,      // text between elements
    elementsInSimple, // an element where there may be text only
    value,
    notNillable,
    type, // that xsi:type names
    other
  };

  const Vocabulary *vocabulary;
  What what;
  std::string element; // local name
  std::string uri;
  std::string parent;               // local name, empty of a root
  bool foreign;                     // the library takes the element for a foreign one,
  bool insideForeign;               // or one around it
  bool hasElements;                 // the element has elements inside
  std::string attribute;            // as written, empty if it is about the element
  std::string attributeUri;         // of the attribute
  std::vector<std::string> present; // all attributes of the element, as "{uri}name"
  std::string value;                // of the attribute, or the element's text
  std::string message;
};

// One complaint of the library.
struct LibraryComplaint {
  const Vocabulary *vocabulary;
  const Root *root; // whose validator was asked
  int status;
  std::vector<std::string> params;
  std::string path; // of the open elements
  Place place;
  std::string value; // of the attribute at the error's place
  std::string message;
};

// A schema, read once. It asks for nothing but files of its folder.
class Schema {
public:
  Schema(const std::filesystem::path &folder, const Vocabulary &vocabulary);
  ~Schema();
  Schema(Schema &&) noexcept;

  bool usable() const;
  std::vector<SchemaComplaint> complaints(const std::string &body) const;

private:
  struct State;
  std::unique_ptr<State> state;
};

// Whether a text is a date and time by the datatype of schemas, without white space around it.
bool isDateTime(const std::string &text);

// The library's complaints, none if its validator returns 0.
std::vector<LibraryComplaint> complaints(const support::Context &ctx, const Vocabulary &vocabulary, const Root &root,
                                         const std::string &body);

} // namespace differential
