// libxml2's tree with a walk over it, and its text writer.
#include "emit.h"
#include "rivals.h"
#include "walk.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlwriter.h>

namespace bench {

namespace {

const char *chars(const xmlChar *text) { return reinterpret_cast<const char *>(text); }
const xmlChar *xmlChars(const char *text) { return reinterpret_cast<const xmlChar *>(text); }

// A text is mostly one node, and then seen where it lies.
Text contentOf(xmlDocPtr document, xmlNodePtr children, Arena &storage) {
  if (!children) return {};
  if (!children->next && children->type == XML_TEXT_NODE) return chars(children->content);
  xmlChar *joined = xmlNodeListGetString(document, children, 1);
  if (!joined) return {};
  Text result = storage.copy(chars(joined));
  xmlFree(joined);
  return result;
}

class XmlNode {
public:
  XmlNode(xmlNodePtr seen, Arena *attributeTexts, xmlBufferPtr written)
      : node(seen), storage(attributeTexts), buffer(written) {}

  explicit operator bool() const { return node != nullptr; }
  const char *name() const { return chars(node->name); }
  XmlNode firstElement() const { return element(node->children); }
  XmlNode nextElement() const { return element(node->next); }
  Text text(Arena &texts) const { return contentOf(node->doc, node->children, texts); }

  Text xml(Arena &texts) const {
    xmlBufferEmpty(buffer);
    xmlNodeDump(buffer, node->doc, node, 0, 0);
    return texts.copy(chars(xmlBufferContent(buffer)));
  }

  template <class Call> void forAttributes(Call call) const {
    for (xmlAttrPtr attribute = node->properties; attribute; attribute = attribute->next)
      call(chars(attribute->name), contentOf(node->doc, attribute->children, *storage));
  }

private:
  XmlNode element(xmlNodePtr at) const {
    while (at && at->type != XML_ELEMENT_NODE)
      at = at->next;
    return {at, storage, buffer};
  }

  xmlNodePtr node;
  Arena *storage;
  xmlBufferPtr buffer;
};

// One parser context for all documents. The tree lives until the next document, since texts lie in it.
class XmlTreeParser {
public:
  XmlTreeParser() : parser(xmlNewParserCtxt()), buffer(xmlBufferCreate()) {}
  XmlTreeParser(const XmlTreeParser &) = delete;
  XmlTreeParser &operator=(const XmlTreeParser &) = delete;
  ~XmlTreeParser() {
    xmlFreeDoc(tree);
    xmlBufferFree(buffer);
    xmlFreeParserCtxt(parser);
  }

  template <class Record> void read(std::string_view body, Arena &storage, Record &record) {
    xmlFreeDoc(tree);
    tree = xmlCtxtReadMemory(parser, body.data(), static_cast<int>(body.size()), nullptr, nullptr,
                             XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_NOBLANKS |
                                 XML_PARSE_COMPACT);
    if (!tree) refuse("the tree was not built");
    Walk<XmlNode>(storage).read(XmlNode(xmlDocGetRootElement(tree), &storage, buffer), record);
  }

private:
  xmlParserCtxtPtr parser;
  xmlBufferPtr buffer;
  xmlDocPtr tree = nullptr;
};

// One writer and one buffer for all documents.
class XmlWriter {
public:
  XmlWriter() : buffer(xmlBufferCreateSize(4096)) {
    xmlBufferSetAllocationScheme(buffer, XML_BUFFER_ALLOC_DOUBLEIT);
    writer = xmlNewTextWriterMemory(buffer, 0);
  }
  XmlWriter(const XmlWriter &) = delete;
  XmlWriter &operator=(const XmlWriter &) = delete;
  ~XmlWriter() {
    xmlFreeTextWriter(writer);
    xmlBufferFree(buffer);
  }

  template <class Record> std::string_view write(const Record &record) {
    xmlBufferEmpty(buffer);
    xmlTextWriterStartDocument(writer, nullptr, nullptr, nullptr);
    Emit(*this).write(record);
    xmlTextWriterEndDocument(writer);
    return {chars(xmlBufferContent(buffer)), static_cast<size_t>(xmlBufferLength(buffer))};
  }

  void start(const char *name) { xmlTextWriterStartElement(writer, xmlChars(name)); }
  void attribute(const char *name, Text value) {
    xmlTextWriterWriteAttribute(writer, xmlChars(name), xmlChars(value.data()));
  }
  void text(Text value) { xmlTextWriterWriteString(writer, xmlChars(value.data())); }
  void xml(Text value) { xmlTextWriterWriteRawLen(writer, xmlChars(value.data()), static_cast<int>(value.size())); }
  void end() { xmlTextWriterEndElement(writer); }

private:
  xmlBufferPtr buffer;
  xmlTextWriterPtr writer;
};

} // namespace

void addXmlTree(std::vector<NamedWorkload> &workloads) {
  workloads.push_back({"libxml2-tree", makeRivalDecode<XmlTreeParser>, true});
  workloads.push_back({"libxml2-writer", makeRivalEncode<XmlWriter>, true});
}

} // namespace bench
