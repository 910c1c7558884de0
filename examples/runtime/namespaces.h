// The namespace bindings of a context: a stack, in scopes, and below it what the host has declared.
#pragma once

#include "storage.h"

#include <string_view>

namespace tiny {

struct Binding {
  const char *prefix; // empty: the default namespace
  const char *uri;
  size_t uriLength;
  char *texts; // the storage of both, which is used again by the next binding in this place
  size_t room;
  bool declared;   // to be written by rtXmlEncNSAttrs
  uint32_t older;  // the next binding of the same bucket, plus 1
  uint64_t usedBy; // the fragment that has this declaration in its top element
};

class Namespaces {
public:
  struct Mark {
    size_t bindings;
    size_t scopes;
  };

  bool push(System &system) { return scopes.add(system, bindings.count); }
  void pop();
  bool bind(System &system, std::string_view prefix, std::string_view uri, bool declared);

  Mark mark() const { return {bindings.count, scopes.count}; }
  void restore(Mark mark);
  void hide();          // what is bound so far, until show
  void show();          // and drops what was bound since
  void reset();         // to what the host has declared
  void beginDocument(); // declarations are the document's own from now on
  void endDocument();
  bool declare(System &system, std::string_view prefix, std::string_view uri, bool written, bool override);

  // The newest binding of a prefix, and the newest that is still in force of a URI. Null: none.
  Binding *find(std::string_view prefix) { return find(prefix, false); }
  Binding *findUri(std::string_view uri, bool prefixed);
  bool isInside(const Binding *binding, size_t first) const; // among the bindings from first on
  // The declarations to be written, oldest first; at begins at 0. Null at the end.
  const Binding *nextDeclared(size_t &at);

  bool setTable(System &system, const char *const *uris, uint32_t count);
  int indexOf(const Binding *binding) const;
  bool hasTable() const { return table.count > 0; }
  void destroy(System &system);

private:
  static constexpr size_t buckets = 256;

  size_t bucketOf(std::string_view prefix) const;
  Binding *find(std::string_view prefix, bool declaredOnly);
  Binding *findHost(std::string_view prefix);

  Array<Binding> bindings;
  Array<size_t> scopes; // for each, the bindings outside of it
  Array<Binding> host;
  Array<const char *> table;
  uint32_t heads[buckets]; // newest binding of each bucket, plus 1
  Mark base;               // what is below is hidden
  Mark shown;              // base before hide
  Mark document;           // where the document began
  bool hostHidden;
  bool inDocument;
};

} // namespace tiny
