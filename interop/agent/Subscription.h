// A subscription to the state of a resource.
#pragma once

#include "Stack.h"

namespace agent {

// What one NOTIFY says. Its texts live as long as the call that shows it.
struct Notification {
  std::string_view state;  // of the subscription: active, pending or terminated
  std::string_view reason; // why it was terminated; may be empty
  std::string_view type;   // of the body; empty without one
  std::string_view body;
};

class Subscription : public Exchange {
public:
  // Subscribes. The taker is called for every notification, and may ask for a refresh.
  Subscription(Stack &stack, const std::string &resource, std::string package,
               std::function<void(const Notification &)> taker);
  ~Subscription() override; // ends it, and waits until the server knows
  Subscription(const Subscription &) = delete;
  Subscription &operator=(const Subscription &) = delete;

  void refresh(); // makes the server send all it has

  int status() const { return lastStatus; } // of the newest answer to a SUBSCRIBE; 0 before the first
  const std::string &phrase() const { return lastPhrase; }
  bool hasEnded() const { return ended; } // there will be no further notification

private:
  void happened(nua_event_t event, int status, const char *phrase, const sip_t *message) override;

  Stack &stack;
  const std::string package;
  std::function<void(const Notification &)> take;
  nua_handle_t *handle;
  int lastStatus = 0;
  std::string lastPhrase;
  bool ended = false;
};

} // namespace agent
