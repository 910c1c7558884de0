// The bodies that are carried: of every vocabulary, in many sizes, all written by the library.
#pragma once

#include "imscodec.hpp"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace carrier {

// A vocabulary and how its bodies travel.
struct Kind {
  std::string_view name; // of the root element
  std::string_view method;
  std::string_view type;  // of the content
  std::string_view event; // of the package; empty for a method without
  std::string_view head;  // of a document; "@" is a number, "~" a text that has to be escaped
  std::string_view item;  // as often as a body of the wanted size needs it
  std::string_view tail;

  std::string fileName() const;
};

std::span<const Kind> kinds();

// The contexts of an agent. One of them is for the vocabulary that shares its context with no other.
class Codec {
public:
  // Reads a document and writes it again. Says what is wrong with it, or that it does not say the same as the other.
  struct Passed {
    std::string text;
    std::string problem; // empty: none
  };
  Passed pass(const Kind &kind, std::string_view document, std::string_view other);

private:
  imscodec::Context debugContext;
  imscodec::Context context;
};

struct Body {
  const Kind *kind;
  std::string source; // by hand
  std::string text;   // by the library
};

class Bodies {
public:
  // So many of every kind, of about these sizes, the greatest first.
  Bodies(std::size_t count, std::size_t smallest, std::size_t greatest);

  std::size_t count() const { return all.size() / kinds().size(); } // of each kind

  // Null if there is none.
  const Body *find(const Kind &kind, std::size_t number) const;

  // Writes each to a file of its own, KIND.NUMBER.
  void save(const std::filesystem::path &folder) const;

private:
  std::vector<Body> all; // kinds take turns
};

} // namespace carrier
