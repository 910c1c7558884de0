// Reads a document: UTF-8, without a document type, all else as XML 1.0 has it.
#include "context.h"

using namespace tiny;

// ---- What cannot be read

bool RtSaxReader::fail(const char *reason, size_t place) {
  addText(context, reason);
  status = recordAt(context, STATUS_PARSE_FAILED, lineNotWellFormed, place);
  return false;
}

bool RtSaxReader::exceed(const char *limit, size_t value, size_t place) {
  addText(context, limit);
  rtxErrAddUIntParm(context, static_cast<uint32_t>(value));
  status = recordAt(context, STATUS_LIMIT_EXCEEDED, lineLimit, place);
  return false;
}

bool RtSaxReader::lackStorage(size_t place) {
  status = recordAt(context, STATUS_NO_MEMORY, lineStorage, place);
  return false;
}

// ---- Pieces

bool RtSaxReader::looksAt(std::string_view literal) const {
  return document.size() - at >= literal.size() && memcmp(document.data() + at, literal.data(), literal.size()) == 0;
}

bool RtSaxReader::take(std::string_view literal) {
  if (!looksAt(literal)) return false;
  at += literal.size();
  return true;
}

bool RtSaxReader::takeSpace() {
  const size_t start = at;
  while (!atEnd() && isSpace(document[at]))
    ++at;
  return at > start;
}

std::string_view RtSaxReader::takeName() {
  const size_t start = at;
  at += nameLength({document.data() + at, document.size() - at});
  return {document.data() + start, at - start};
}

bool RtSaxReader::takeCharacter() {
  uint32_t code = 0;
  const size_t taken = readCharacter({document.data() + at, document.size() - at}, code);
  if (taken == 0 && !atEnd()) return fail("bytes that are not UTF-8", at);
  if (taken == 0) return fail("the document ends too early", at);
  if (!isXmlCharacter(code)) return fail("a character that XML does not allow", at);
  at += taken;
  return true;
}

bool RtSaxReader::skipBehind(std::string_view literal) {
  while (!take(literal)) {
    if (!takeCharacter()) return false;
  }
  return true;
}

// ---- Around the root

bool RtSaxReader::readDocument() {
  take("\xEF\xBB\xBF");
  if (!readDeclaration() || !readAround()) return false;
  if (looksAt("<!")) return fail("a document type", at);
  if (!looksAt("<")) return fail("no element", at);
  if (!readStartTag() || !readContent() || !readAround()) return false;
  return atEnd() || fail("something behind the root element", at);
}

bool RtSaxReader::readPseudoAttribute(std::string_view name, std::string_view &value) {
  const size_t start = at;
  if (!takeSpace() || !take(name)) {
    at = start;
    return false;
  }
  takeSpace();
  const bool equals = take("=");
  takeSpace();
  const char quote = atEnd() ? '\0' : document[at];
  const size_t end = equals && (quote == '"' || quote == '\'') ? document.find(quote, at + 1) : document.npos;
  value = end == document.npos ? "" : std::string_view(document.data() + at + 1, end - at - 1);
  if (end != document.npos) at = end + 1;
  return true;
}

bool RtSaxReader::readDeclaration() {
  const size_t start = at;
  if (!take("<?xml") || atEnd() || !isSpace(document[at])) {
    at = start;
    return true;
  }
  std::string_view value;
  const bool version = readPseudoAttribute("version", value) && value.size() > 2 && value.starts_with("1.") &&
                       value.find_first_not_of("0123456789", 2) == value.npos;
  if (!version) return fail("an XML declaration without version 1", at);
  if (readPseudoAttribute("encoding", value)) {
    char name[8] = "";
    for (size_t i = 0; i < value.size() && i < sizeof name - 1; ++i)
      name[i] = static_cast<char>(value[i] >= 'a' && value[i] <= 'z' ? value[i] - 'a' + 'A' : value[i]);
    if (value.size() != 5 || strcmp(name, "UTF-8") != 0) return fail("an encoding that is not UTF-8", at);
  }
  if (readPseudoAttribute("standalone", value) && value != "yes" && value != "no")
    return fail("standalone is neither yes nor no", at);
  takeSpace();
  return take("?>") || fail("an XML declaration that does not end", at);
}

bool RtSaxReader::readAround() {
  for (;;) {
    takeSpace();
    if (!looksAt("<!--") && !looksAt("<?")) return true;
    if (!readMarkup()) return false;
  }
}

// ---- Inside

bool RtSaxReader::readContent() {
  while (open.count > 0) {
    if (atEnd()) return fail("the document ends inside an element", at);
    if (!(document[at] == '<' ? readMarkup() : readCharacters(false))) return false;
  }
  return true;
}

bool RtSaxReader::readMarkup() {
  if (looksAt("</")) return readEndTag();
  if (looksAt("<?")) return readInstruction();
  if (looksAt("<!--")) return readComment();
  if (looksAt("<![CDATA[")) return readSection();
  if (looksAt("<!")) return fail("a declaration inside an element", at);
  return readStartTag();
}

bool RtSaxReader::readComment() {
  const size_t start = at;
  at += 4;
  return skipBehind("--") && (take(">") || fail("two hyphens inside a comment", start));
}

bool RtSaxReader::readInstruction() {
  const size_t start = at;
  at += 2;
  const std::string_view name = takeName();
  const bool reserved =
      name.size() == 3 && (name[0] | 0x20) == 'x' && (name[1] | 0x20) == 'm' && (name[2] | 0x20) == 'l';
  if (reserved || !isNcName(name)) return fail("a processing instruction without a name of its own", start);
  if (take("?>")) return true;
  if (!takeSpace()) return fail("a processing instruction without a name of its own", start);
  return skipBehind("?>");
}

bool RtSaxReader::readSection() {
  const size_t end = document.find("]]>", at);
  if (end == document.npos) return fail("a CDATA section that does not end", at);
  at += 9;
  while (at < end) {
    if (!readCharacters(true)) return false;
  }
  return take("]]>");
}

// Bytes up to the next one that needs a look: character data that can be delivered as it is.
size_t RtSaxReader::plainLength(bool inSection) const {
  std::string_view rest(document.data() + at, document.size() - at);
  const size_t whole = rest.size();
  for (uint32_t code = 0; !rest.empty();) {
    const char c = rest.front();
    if (c == '\r' || (c == ']' && rest.starts_with("]]>")) || (!inSection && (c == '<' || c == '&'))) break;
    const size_t taken = readCharacter(rest, code);
    if (taken == 0 || !isXmlCharacter(code)) break;
    rest.remove_prefix(taken);
  }
  return whole - rest.size();
}

// Delivers a piece of character data and deals with what ends it.
bool RtSaxReader::readCharacters(bool inSection) {
  const size_t start = at;
  at += plainLength(inSection);
  if (at > start) return deliverText({document.data() + start, at - start}, start);
  if (take("\r\n") || take("\r")) return deliverText("\n", start);
  if (looksAt("]]>")) return fail("the end of a CDATA section in text", at);
  if (!looksAt("&")) return takeCharacter(); // which says what is wrong with it
  char bytes[4];
  size_t length = 0;
  return readReference(bytes, length) && deliverText({bytes, length}, start);
}

// A reference to one of the five entities or to a character.
bool RtSaxReader::readReference(char (&bytes)[4], size_t &length) {
  const size_t start = at;
  constexpr struct {
    std::string_view name;
    char character;
  } entities[] = {{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
  for (const auto &entity : entities) {
    if (!take(entity.name)) continue;
    bytes[0] = entity.character;
    length = 1;
    return true;
  }
  const bool hexadecimal = take("&#x");
  if (!hexadecimal && !take("&#")) return fail("a reference to an entity that there is not", start);
  const size_t digits = at;
  uint32_t code = 0;
  for (; !atEnd() && (hexadecimal ? hexDigit(document[at]) >= 0 : isDigit(document[at])); ++at) {
    code = code * (hexadecimal ? 16 : 10) + static_cast<uint32_t>(hexDigit(document[at]));
    if (code > 0x10FFFF) code = 0x110000; // enough to be refused
  }
  if (at == digits || !isXmlCharacter(code) || !take(";")) return fail("a reference to no character", start);
  if (code < 0x80) {
    bytes[0] = static_cast<char>(code);
    length = 1;
    return true;
  }
  length = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  for (size_t i = length; i > 1; code >>= 6)
    bytes[--i] = static_cast<char>(0x80 | (code & 0x3F));
  constexpr uint32_t leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
  bytes[0] = static_cast<char>(leads[length] | code);
  return true;
}

// ---- Tags

bool RtSaxReader::readStartTag() {
  const size_t start = at;
  if (open.count >= depthLimit) return exceed("depthLimit", depthLimit, start);
  ++at;
  const std::string_view name = takeName();
  if (!isQualifiedName(name)) return fail("a tag without a proper name", start);
  attributes.count = values.count = 0;
  bool empty = false;
  for (;;) {
    const bool space = takeSpace();
    empty = take("/>");
    if (empty || take(">")) break;
    if (!space) return atEnd() ? fail("the document ends inside a tag", at) : fail("a tag that does not end", start);
    if (!readAttribute()) return false;
  }
  if (at - start > tagLimit) return exceed("tagLimit", tagLimit, start);
  if (!openElement(name, start)) return false;
  if (empty) deliverEnd();
  return true;
}

bool RtSaxReader::readAttribute() {
  System &system = context->internals->system;
  const size_t start = at;
  if (attributes.count >= attributeLimit) return exceed("attributeLimit", attributeLimit, start);
  const std::string_view name = takeName();
  if (!isQualifiedName(name)) return fail("an attribute without a proper name", start);
  for (size_t i = 0; i < attributes.count; ++i) {
    if (name == values.items + attributes.items[i].name) return fail("an attribute that the tag has already", start);
  }
  const size_t nameAt = values.count;
  if (!values.append(system, name.data(), name.size()) || !values.add(system, '\0')) return lackStorage(start);
  const size_t valueAt = values.count;
  takeSpace();
  if (!take("=")) return fail("an attribute without a value", start);
  takeSpace();
  if (!readValue()) return false;
  if (prefixOf(name) == "xmlns" && values.count == valueAt + 1) return fail("a prefix for no namespace", start);
  return attributes.add(system, {start, nameAt, valueAt}) || lackStorage(start);
}

// Appends the value of an attribute, white space in it as blanks, to values.
bool RtSaxReader::readValue() {
  System &system = context->internals->system;
  const std::string_view quote(document.data() + at, atEnd() ? 0 : 1);
  if (quote != "\"" && quote != "'") return fail("a value without quotes", at);
  ++at;
  while (!take(quote)) {
    const size_t start = at;
    char bytes[4];
    size_t length = 0;
    bool taken = true;
    if (looksAt("<")) return fail("markup in a value", at);
    if (looksAt("&")) {
      if (!readReference(bytes, length)) return false;
      taken = values.append(system, bytes, length);
    } else if (take("\r\n") || takeSpace()) {
      // Each of several blanks counts, but a line end counts once.
      at = start + (document[start] == '\r' && at > start + 1 && document[start + 1] == '\n' ? 2 : 1);
      taken = values.add(system, ' ');
    } else {
      if (!takeCharacter()) return false;
      taken = values.append(system, document.data() + start, at - start);
    }
    if (!taken) return lackStorage(start);
  }
  return values.add(system, '\0') || lackStorage(at);
}

// Pushes the element that the start tag has begun, binds its declarations and delivers it.
bool RtSaxReader::openElement(std::string_view name, size_t place) {
  System &system = context->internals->system;
  Namespaces &namespaces = context->internals->namespaces;
  const Element element = {place, names.count, name.size(), nowhere, 0, namespaces.mark()};
  if (!names.append(system, name.data(), name.size()) || !names.add(system, '\0') || !open.add(system, element))
    return lackStorage(place);
  if (!namespaces.push(system)) return lackStorage(place);
  for (size_t i = 0; i < attributes.count; ++i) {
    const char *attribute = values.items + attributes.items[i].name;
    const bool isDefault = strcmp(attribute, "xmlns") == 0;
    if (!isDefault && prefixOf(attribute) != "xmlns") continue;
    const char *prefix = isDefault ? "" : attribute + 6;
    if (!namespaces.bind(system, prefix, values.items + attributes.items[i].value, false)) return lackStorage(place);
  }
  return deliverStart();
}

bool RtSaxReader::readEndTag() {
  const size_t start = at;
  at += 2;
  const bool matches = open.count > 0 && take(nameOf(open.items[open.count - 1]));
  takeSpace();
  if (!matches || !take(">")) return fail("an end tag that is not of the open element", start);
  deliverEnd();
  return true;
}
