// What the tests with this server share.
#pragma once

#include "Subscription.h"

#include <string>
#include <vector>

namespace kamailio {

// The server that run_server has started.
agent::Settings settingsFor(agent::Transport transport = agent::Transport::udp);

// Writes a transcript beside the server's log.
void record(const std::string &name, std::string_view text);

// Somebody who has subscribed to the dialogs of a resource.
class Watcher {
public:
  explicit Watcher(const std::string &resource, agent::Transport transport = agent::Transport::udp);

  // Waits until there were so many notifications. That of the subscription itself is there from the beginning.
  bool waitFor(std::size_t notifications);

  void refresh() { subscription.refresh(); }

  agent::Stack stack;
  std::vector<std::string> bodies; // of the notifications; an empty one for one without

private:
  agent::Subscription subscription;
};

using Lines = std::vector<std::string>;

// A line for each body: "VERSION SCOPE ID=STATE ID=STATE", or "nothing", or "unreadable".
Lines summaries(const Watcher &watcher);

} // namespace kamailio
