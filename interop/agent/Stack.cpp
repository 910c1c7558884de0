#include "Stack.h"

#include <sofia-sip/su_log.h>

extern "C" {
extern su_log_t nua_log[];
extern su_log_t nta_log[];
extern su_log_t tport_log[];
}

namespace agent {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// The library under the stack is set up once a process, and taken down with it.
class Library {
public:
  Library() {
    su_init();
    // What goes wrong is for the exchanges to tell.
    for (su_log_t *log : {su_log_default, su_log_global, nua_log, nta_log, tport_log})
      su_log_set_level(log, 0);
  }
  ~Library() { su_deinit(); }
};

} // namespace

Stack::Stack(const Settings &given) : settings(given) {
  static const Library library;
  root = su_root_create(nullptr);
  if (!root) return;
  su_root_threading(root, 0);
  const std::string proxy =
      "sip:" + settings.server + (settings.transport == Transport::tcp ? ";transport=tcp" : ";transport=udp");
  const char *address =
      settings.transport == Transport::tcp ? "sip:127.0.0.1:*;transport=tcp" : "sip:127.0.0.1:*;transport=udp";
  nua = nua_create(root, dispatch, this, NUTAG_URL(address), NUTAG_PROXY(proxy.c_str()),
                   SIPTAG_FROM_STR(settings.user.c_str()), NUTAG_MEDIA_ENABLE(0),
                   NUTAG_OUTBOUND("no-options-keepalive"), NUTAG_USER_AGENT("imscodec agent"),
                   SIPTAG_ALLOW_STR(settings.takesCalls ? "NOTIFY, INVITE, ACK, CANCEL, BYE" : "NOTIFY"),
                   NUTAG_ALLOW_EVENTS("dialog"), NUTAG_ALLOW_EVENTS("presence"), TAG_END());
}

Stack::~Stack() {
  if (nua) {
    nua_shutdown(nua);
    waitUntil([this] { return isDown; }, std::chrono::seconds(5));
    nua_destroy(nua);
  }
  if (root) su_root_destroy(root);
}

nua_handle_t *Stack::open(Exchange &exchange, const std::string &resource) {
  return nua_handle(nua, &exchange, NUTAG_URL(resource.c_str()), SIPTAG_TO_STR(resource.c_str()), TAG_END());
}

bool Stack::waitUntil(const std::function<bool()> &done, milliseconds limit) {
  const Clock::time_point end = Clock::now() + limit;
  while (!done()) {
    if (Clock::now() >= end) return false;
    su_root_step(root, 20);
  }
  return true;
}

void Stack::dispatch(nua_event_t event, int status, const char *phrase, nua_t *, Stack *stack, nua_handle_t *handle,
                     Exchange *exchange, const sip_t *message, tagi_t[]) {
  if (event == nua_r_shutdown) {
    stack->isDown = status >= 200;
    return;
  }
  if (event == nua_i_invite && !exchange && stack->takeCall) {
    exchange = stack->takeCall(handle);
    nua_handle_bind(handle, exchange);
  }
  if (exchange) {
    exchange->happened(event, status, phrase, message);
  }
}

std::string_view bodyOf(const sip_t *message) {
  if (!message || !message->sip_payload || !message->sip_payload->pl_data) return {};
  return {message->sip_payload->pl_data, static_cast<std::size_t>(message->sip_payload->pl_len)};
}

} // namespace agent
