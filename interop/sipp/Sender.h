// The agent that sends bodies in requests, and reads what comes back with the answers.
#pragma once

#include "Bodies.h"
#include "Link.h"
#include "Message.h"

#include <functional>
#include <map>
#include <vector>

namespace carrier {

class Sender {
public:
  // To a peer on this port.
  Sender(Transport given, std::uint16_t peer, const Bodies &sent) : transport(given), link(given, peer), bodies(sent) {}

  // Sends so many requests, no more than some of them at once, kinds taking turns. Calls back after each answer. False
  // if one got none in time.
  bool run(std::size_t total, std::size_t atOnce, const std::function<void(std::size_t answered)> &answered);

  std::size_t repetitions() const { return repeats; } // of requests that got no answer for a while
  const std::vector<std::string> &problems() const { return found; }

private:
  using Clock = std::chrono::steady_clock;

  struct Pending {
    std::string text;
    std::size_t number; // of the request
    Clock::time_point next;
    std::chrono::milliseconds interval;
    Clock::time_point end;
  };

  void start(std::size_t number);
  bool repeat(); // what is due; false if there was no answer in time
  bool take(const Message &answer);

  const Transport transport;
  Link link;
  const Bodies &bodies;
  Codec codec;
  std::map<std::string, Pending, std::less<>> pending; // by branch
  std::size_t repeats = 0;
  std::vector<std::string> found;
};

} // namespace carrier
