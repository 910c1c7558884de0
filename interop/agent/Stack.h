// A SIP stack on the loopback interface, and what takes its events. The headers of the stack are included here only,
// since they learn from macros which types its events are for.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace agent {
class Stack;
class Exchange;
} // namespace agent

#define NUA_MAGIC_T ::agent::Stack
#define NUA_HMAGIC_T ::agent::Exchange
#include <sofia-sip/nua.h>
#include <sofia-sip/sip_status.h>
#include <sofia-sip/sip_tag.h>
#include <sofia-sip/su_wait.h>

namespace agent {

enum class Transport {
  udp,
  tcp, // for bodies that are too large for a datagram
};

struct Settings {
  std::string server; // HOST:PORT
  std::string user = "sip:watcher@home.example";
  Transport transport = Transport::udp;
  bool takesCalls = false;
};

// One request and what follows from it.
class Exchange {
public:
  virtual ~Exchange() = default;
  virtual void happened(nua_event_t event, int status, const char *phrase, const sip_t *message) = 0;
};

// Belongs to one thread, and works while it waits. Exchanges go before their stack goes.
class Stack {
public:
  explicit Stack(const Settings &settings);
  ~Stack();
  Stack(const Stack &) = delete;
  Stack &operator=(const Stack &) = delete;

  explicit operator bool() const { return nua != nullptr; } // false if there is no free port, or no storage

  // A handle for requests about a resource. The exchange destroys it.
  nua_handle_t *open(Exchange &exchange, const std::string &resource);

  // Where the events of a call go that somebody makes to us. The exchange of a call destroys its handle, too.
  void onCall(std::function<Exchange *(nua_handle_t *)> taker) { takeCall = std::move(taker); }

  // Works until there is nothing more to wait for. False if the limit was reached before.
  bool waitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit);

private:
  static void dispatch(nua_event_t event, int status, const char *phrase, nua_t *nua, Stack *stack,
                       nua_handle_t *handle, Exchange *exchange, const sip_t *message, tagi_t tags[]);

  const Settings settings;
  su_root_t *root = nullptr;
  nua_t *nua = nullptr;
  std::function<Exchange *(nua_handle_t *)> takeCall;
  bool isDown = false;
};

// The body of a message; empty if it has none.
std::string_view bodyOf(const sip_t *message);

} // namespace agent
