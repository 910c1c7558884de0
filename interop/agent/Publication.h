// The state of a resource as one source publishes it.
#pragma once

#include "Stack.h"

namespace agent {

class Publication : public Exchange {
public:
  Publication(Stack &stack, const std::string &resource, std::string package, std::string type);
  ~Publication() override; // withdraws what was published
  Publication(const Publication &) = delete;
  Publication &operator=(const Publication &) = delete;

  // Publishes a body in place of the one before, and waits for the answer. False if there was none in time, or the
  // server would not have it.
  bool publish(std::string_view body);

  int status() const { return lastStatus; } // of the newest answer; 0 if there was none
  const std::string &phrase() const { return lastPhrase; }

private:
  void happened(nua_event_t event, int status, const char *phrase, const sip_t *message) override;

  Stack &stack;
  const std::string package;
  const std::string type;
  nua_handle_t *handle;
  int lastStatus = 0;
  std::string lastPhrase;
  bool published = false;
};

} // namespace agent
