#include "Subscription.h"

#include <utility>

namespace agent {

namespace {

constexpr char lifetime[] = "600"; // seconds; the stack refreshes in time

const char *formatOf(const std::string &package) {
  return package == "dialog" ? "application/dialog-info+xml" : "application/pidf+xml";
}

std::string_view textOf(const char *text) { return text ? std::string_view(text) : std::string_view(); }

} // namespace

Subscription::Subscription(Stack &owner, const std::string &resource, std::string eventPackage,
                           std::function<void(const Notification &)> taker)
    : stack(owner), package(std::move(eventPackage)), take(std::move(taker)), handle(stack.open(*this, resource)) {
  refresh();
}

Subscription::~Subscription() {
  take = nullptr;
  if (!ended && lastStatus != 0) {
    nua_unsubscribe(handle, TAG_END());
    stack.waitUntil([this] { return ended; }, std::chrono::seconds(2));
  }
  nua_handle_bind(handle, nullptr);
  nua_handle_destroy(handle);
}

void Subscription::refresh() {
  nua_subscribe(handle, SIPTAG_EVENT_STR(package.c_str()), SIPTAG_ACCEPT_STR(formatOf(package)),
                SIPTAG_EXPIRES_STR(lifetime), TAG_END());
}

void Subscription::happened(nua_event_t event, int status, const char *phrase, const sip_t *message) {
  if (event == nua_r_unsubscribe && status >= 300) {
    ended = true;
  } else if (event == nua_r_subscribe && status >= 200) {
    lastStatus = status;
    lastPhrase = phrase ? phrase : "";
    if (status >= 300) ended = true;
  } else if (event == nua_i_notify && message) {
    Notification notification;
    if (const auto *state = message->sip_subscription_state) {
      notification.state = textOf(state->ss_substate);
      notification.reason = textOf(state->ss_reason);
    }
    if (message->sip_content_type) notification.type = textOf(message->sip_content_type->c_type);
    notification.body = bodyOf(message);
    if (notification.state == "terminated") ended = true;
    if (take) take(notification);
  }
}

} // namespace agent
