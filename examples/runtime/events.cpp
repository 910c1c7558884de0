// Delivers what the document holds, leaves out what is to be skipped, and knows where each thing stands.
#include "context.h"

using namespace tiny;

// ---- Callbacks

// The text buffer shows what a handler looks at: a value or a collected text. Nothing yet.
void RtSaxReader::prepareCallback(Event next) {
  event = next;
  skipAsked = false;
  context->buffer = {};
}

bool RtSaxReader::deliverStart() {
  if (skipDepth > 0) return true;
  System &system = context->internals->system;
  const Element &element = open.items[open.count - 1];
  callbackAttributes.count = 0;
  if (!callbackAttributes.reserve(system, 2 * attributes.count + 1)) return lackStorage(element.at);
  for (size_t i = 0; i < attributes.count; ++i) {
    callbackAttributes.items[callbackAttributes.count++] = values.items + attributes.items[i].name;
    callbackAttributes.items[callbackAttributes.count++] = values.items + attributes.items[i].value;
  }
  callbackAttributes.items[callbackAttributes.count] = nullptr;
  prepareCallback(Event::start);
  const char *name = names.items + element.name;
  const int result = startElement(handler, localNameOf(name), name, callbackAttributes.items);
  event = Event::none;
  if (result != 0 || skipAsked) {
    skipDepth = open.count;
    skipSparesEnd = false;
  }
  return true;
}

bool RtSaxReader::deliverText(std::string_view text, size_t place) {
  Element &element = open.items[open.count - 1];
  if (element.text == nowhere) element.text = place;
  element.textLength += text.size();
  if (element.textLength > textLimit) return exceed("textLimit", textLimit, element.text);
  if (skipDepth > 0) return true;
  prepareCallback(Event::text);
  characters(handler, text.data(), text.size());
  event = Event::none;
  if (skipAsked) {
    skipDepth = open.count;
    skipSparesEnd = true;
  }
  return true;
}

void RtSaxReader::deliverEnd() {
  const Element element = open.items[open.count - 1];
  const bool ends = skipDepth == open.count;
  if (ends && skipSparesEnd) {
    context->state = XMLSTATE_INITIAL;
    rtxMemBufReset(&context->reader->text);
  }
  if (skipDepth == 0 || (ends && skipSparesEnd)) {
    prepareCallback(Event::end);
    const char *name = names.items + element.name;
    endElement(handler, localNameOf(name), name);
    event = Event::none;
  }
  if (ends) skipDepth = 0;
  context->internals->namespaces.restore(element.outside);
  names.count = element.name;
  --open.count;
}

int rtSaxSetSkipLevelToCurrent(RuntimeContext *ctx, int status) {
  if (usable(ctx)) ctx->internals->reader.skipAsked = true;
  return status;
}

// ---- Places

namespace tiny {

namespace {

size_t currentOffset(const RtSaxReader &reader) {
  if (reader.open.count == 0) return nowhere;
  const Element &element = reader.open.items[reader.open.count - 1];
  const char *shown = reader.context->buffer.data;
  switch (reader.event) {
  case Event::start:
    for (size_t i = 0; i < reader.attributes.count; ++i) {
      if (shown == reader.values.items + reader.attributes.items[i].value) return reader.attributes.items[i].at;
    }
    return element.at;
  case Event::text: return element.text;
  case Event::end: return shown && element.text != nowhere ? element.text : element.at;
  case Event::none: break;
  }
  return nowhere;
}

// The names of the open elements as "/a/b", cut; null if there is no storage for it.
char *pathOf(System &system, const RtSaxReader &reader) {
  constexpr size_t most = 1024;
  const size_t whole = reader.open.count == 0 ? 0 : reader.names.count; // a NUL each, for which there is a slash
  const size_t length = whole < most ? whole : most;
  char *path = length == 0 ? nullptr : static_cast<char *>(system.take(length + 1));
  if (!path) return nullptr;
  size_t used = 0;
  for (size_t i = 0; i < reader.open.count && used < length; ++i) {
    const std::string_view name = reader.nameOf(reader.open.items[i]);
    path[used++] = '/';
    for (size_t k = 0; k < name.size() && used < length; ++k)
      path[used++] = name[k];
  }
  path[used] = '\0';
  return path;
}

} // namespace

void LineCount::moveTo(std::string_view document, size_t offset) {
  while (offset < start) {
    at = start - 1;
    for (start = at; start > 0 && document[start - 1] != '\n';)
      --start;
    --line;
  }
  for (; at < offset; ++at) {
    if (document[at] != '\n') continue;
    ++line;
    start = at + 1;
  }
}

Place placeAt(RuntimeContext *ctx, size_t offset) {
  RtSaxReader &reader = ctx->internals->reader;
  if (!reader.parsing || offset == nowhere) return {};
  reader.lines.moveTo(reader.document, offset);
  const uint32_t column = static_cast<uint32_t>(offset - reader.lines.start) + 1;
  return {reader.lines.line, column, offset, pathOf(ctx->internals->system, reader)};
}

Place currentPlace(RuntimeContext *ctx) { return placeAt(ctx, currentOffset(ctx->internals->reader)); }

} // namespace tiny

// ---- Life

RtSaxReader *rtSaxCCreateXmlReader(RuntimeContext *ctx, void *handler, RtSaxStartElement startElement,
                                   RtSaxEndElement endElement, RtSaxCharacters characters) {
  if (!usable(ctx)) return nullptr;
  RtxInternals &internals = *ctx->internals;
  RtSaxReader &reader = internals.reader;
  if (reader.active || internals.direction != Direction::input) return nullptr;
  const RuntimeOptions &options = internals.options;
  reader.context = ctx;
  reader.handler = handler;
  reader.startElement = startElement;
  reader.endElement = endElement;
  reader.characters = characters;
  reader.active = true;
  reader.buffer = ctx->buffer;
  reader.errorLimit = options.errorLimit;
  reader.errorCount = 0;
  reader.depthLimit = options.depthLimit < 256 ? options.depthLimit : 256;
  reader.attributeLimit = options.attributeLimit < 128 ? options.attributeLimit : 128;
  reader.tagLimit = options.tagLimit > 2048 ? options.tagLimit : 2048;
  reader.textLimit = options.textLimit;
  internals.namespaces.hide();
  ctx->state = XMLSTATE_INITIAL;
  rtxMemBufReset(&ctx->reader->text);
  return &reader;
}

int rtSaxCParse(RtSaxReader *reader) {
  if (!reader || !reader->active || reader->parsing) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *reader->context->internals;
  const Namespaces::Mark outside = internals.namespaces.mark();
  reader->document = internals.input;
  reader->at = reader->skipDepth = 0;
  reader->lines = {1, 0, 0};
  reader->open.count = reader->names.count = 0;
  reader->borrowable = internals.options.heapLimit / 8;
  reader->status = 0;
  reader->parsing = true;
  reader->readDocument();
  reader->parsing = false;
  internals.namespaces.restore(outside);
  return reader->status;
}

void rtSaxCReleaseReader(RtSaxReader *reader) {
  if (!reader || !reader->active || reader->parsing) return;
  reader->active = false;
  RuntimeContext *ctx = reader->context;
  ctx->internals->namespaces.show();
  ctx->buffer = reader->buffer;
  rtxMemHeapFreePtr(ctx, ctx->reader->text.data); // what is on the heap now belongs to the record
  ctx->reader->text = {ctx, 0, 0, 0, nullptr};
}

void RtSaxReader::destroy(System &system) {
  open.destroy(system);
  names.destroy(system);
  attributes.destroy(system);
  values.destroy(system);
  callbackAttributes.destroy(system);
}
