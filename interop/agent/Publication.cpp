#include "Publication.h"

#include <utility>

namespace agent {

namespace {

constexpr std::chrono::seconds patience(10);
constexpr char lifetime[] = "600"; // seconds; the stack refreshes in time

} // namespace

Publication::Publication(Stack &owner, const std::string &resource, std::string eventPackage, std::string contentType)
    : stack(owner), package(std::move(eventPackage)), type(std::move(contentType)),
      handle(stack.open(*this, resource)) {}

Publication::~Publication() {
  if (published) {
    lastStatus = 0;
    nua_unpublish(handle, SIPTAG_EVENT_STR(package.c_str()), TAG_END());
    stack.waitUntil([this] { return lastStatus != 0; }, patience);
  }
  nua_handle_bind(handle, nullptr);
  nua_handle_destroy(handle);
}

bool Publication::publish(std::string_view body) {
  lastStatus = 0;
  lastPhrase.clear();
  const std::string terminated(body);
  nua_publish(handle, SIPTAG_EVENT_STR(package.c_str()), SIPTAG_CONTENT_TYPE_STR(type.c_str()),
              SIPTAG_PAYLOAD_STR(terminated.c_str()), SIPTAG_EXPIRES_STR(lifetime), TAG_END());
  stack.waitUntil([this] { return lastStatus != 0; }, patience);
  published = published || lastStatus / 100 == 2;
  return lastStatus / 100 == 2;
}

void Publication::happened(nua_event_t event, int status, const char *phrase, const sip_t *) {
  if ((event != nua_r_publish && event != nua_r_unpublish) || status < 200) return;
  lastStatus = status;
  lastPhrase = phrase ? phrase : "";
}

} // namespace agent
