#include "wildcard.h"

#include <cstring>

namespace contract {

namespace {
constexpr const char *untouched = "untouched"; // what an entry holds until its element has ended
constexpr uint8_t stateMark = 0x77;
} // namespace

WildcardHost::WildcardHost(RuntimeContext *context) : ctx(context) {
  handler.startElement = start;
  handler.endElement = end;
  handler.characters = text;
  std::memset(block, 0xA5, sizeof block);
}

WildcardHost::~WildcardHost() {
  dropDelegate();
  for (const auto &entry : entries) {
    if (entry->value != untouched) rtxMemHeapFreePtr(ctx, entry->value);
  }
}

std::string WildcardHost::captured() const {
  std::string all;
  for (const auto &entry : entries) {
    if (!all.empty()) all += '\n';
    all += entry->value == untouched ? "(none)" : entry->value == nullptr ? "(null)" : entry->value;
  }
  return all;
}

void WildcardHost::dropDelegate() {
  if (!open) return;
  open = false;
  if (delegate()->release != nullptr) delegate()->release(ctx, delegate());
  rtxMemHeapFreePtr(ctx, delegate()->delegateStorage);
}

void WildcardHost::check(int status) {
  if (status != 0 && callbackStatus == 0) callbackStatus = status;
  if (ctx->state != stateMark) stateTouched = true;
  if (!entries.empty() && open && (entries.back()->value != untouched || !entries.back()->cdata)) entryTouched = true;
}

int WildcardHost::start(void *self, const char *local, const char *qualified, const char *const *attributes) {
  auto &host = *static_cast<WildcardHost *>(self);
  if (host.level == 1) {
    auto entry = std::make_unique<RtxXmlString>(RtxXmlString{true, untouched});
    host.initStatus = SAXAnyInit(host.ctx, host.block, entry.get(), 0);
    if (host.initStatus != 0) return rtSaxSetSkipLevelToCurrent(host.ctx, host.initStatus);
    host.entries.push_back(std::move(entry));
    host.open = true;
  }
  host.ctx->state = stateMark;
  if (host.level >= 1) host.check(host.delegate()->startElement(host.block, local, qualified, attributes));
  ++host.level;
  return 0;
}

int WildcardHost::text(void *self, const char *bytes, size_t length) {
  auto &host = *static_cast<WildcardHost *>(self);
  if (host.level >= 2) host.check(host.delegate()->characters(host.block, bytes, length));
  return 0;
}

int WildcardHost::end(void *self, const char *local, const char *qualified) {
  auto &host = *static_cast<WildcardHost *>(self);
  --host.level;
  if (host.level >= 1) {
    if (host.level >= 2) {
      host.check(host.delegate()->endElement(host.block, local, qualified));
    } else {
      const int status = host.delegate()->endElement(host.block, local, qualified);
      if (status != 0 && host.callbackStatus == 0) host.callbackStatus = status;
      if (host.ctx->state != stateMark) host.stateTouched = true;
      host.dropDelegate();
    }
  }
  return 0;
}

int read(RuntimeContext *ctx, std::string_view document, WildcardHost &host) {
  ExactBytes bytes(document);
  if (const int status = rtxSetInput(ctx, bytes.data(), bytes.size())) return status;
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &host.handler, host.handler.startElement, host.handler.endElement,
                                              host.handler.characters);
  if (reader == nullptr) return STATUS_READER_FAILED;
  const int status = rtSaxCParse(reader);
  rtSaxCReleaseReader(reader);
  return status;
}

} // namespace contract
