// pugixml's tree with a walk over it, and its tree built and saved.
#include "emit.h"
#include "rivals.h"
#include "walk.h"

#include <pugixml.hpp>

#include <vector>

namespace bench {

namespace {

// Names are compared without their prefix, since pugixml does not know about namespaces.
const char *localName(const char *name) {
  const char *colon = std::strchr(name, ':');
  return colon ? colon + 1 : name;
}

class StringWriter : public pugi::xml_writer {
public:
  explicit StringWriter(std::string &written) : output(written) {}
  void write(const void *bytes, size_t size) override { output.append(static_cast<const char *>(bytes), size); }

private:
  std::string &output;
};

class PugiNode {
public:
  PugiNode(pugi::xml_node seen, std::string *written) : node(seen), buffer(written) {}

  explicit operator bool() const { return node != nullptr; }
  const char *name() const { return localName(node.name()); }
  PugiNode firstElement() const { return element(node.first_child()); }
  PugiNode nextElement() const { return element(node.next_sibling()); }

  Text text(Arena &storage) const {
    pugi::xml_node child = node.first_child();
    if (!child.next_sibling()) return child.value();
    std::string joined;
    for (; child; child = child.next_sibling())
      joined += child.value();
    return storage.copy(joined);
  }

  Text xml(Arena &storage) const {
    buffer->clear();
    StringWriter writer(*buffer);
    node.print(writer, "", pugi::format_raw);
    return storage.copy(*buffer);
  }

  template <class Call> void forAttributes(Call call) const {
    for (pugi::xml_attribute attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute())
      call(attribute.name(), attribute.value());
  }

private:
  PugiNode element(pugi::xml_node at) const {
    while (at && at.type() != pugi::node_element)
      at = at.next_sibling();
    return {at, buffer};
  }

  pugi::xml_node node;
  std::string *buffer;
};

// The tree lives until the next document, since texts lie in it.
class PugiParser {
public:
  template <class Record> void read(std::string_view body, Arena &storage, Record &record) {
    if (!tree.load_buffer(body.data(), body.size(), pugi::parse_default, pugi::encoding_utf8))
      refuse("the tree was not built");
    Walk<PugiNode>(storage).read(PugiNode(tree.document_element(), &buffer), record);
  }

private:
  pugi::xml_document tree;
  std::string buffer;
};

class PugiWriter {
public:
  template <class Record> std::string_view write(const Record &record) {
    tree.reset();
    current = tree;
    Emit(*this).write(record);
    output.clear();
    StringWriter writer(output);
    tree.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return output;
  }

  void start(const char *name) { current = current.append_child(name); }
  void attribute(const char *name, Text value) { current.append_attribute(name).set_value(value.data()); }
  void text(Text value) { current.append_child(pugi::node_pcdata).set_value(value.data()); }
  void xml(Text value) { current.append_buffer(value.data(), value.size()); }
  void end() { current = current.parent(); }

private:
  pugi::xml_document tree;
  pugi::xml_node current;
  std::string output;
};

} // namespace

void addPugixml(std::vector<NamedWorkload> &workloads) {
  workloads.push_back({"pugixml-tree", makeRivalDecode<PugiParser>, true});
  workloads.push_back({"pugixml-save", makeRivalEncode<PugiWriter>, true});
}

} // namespace bench
