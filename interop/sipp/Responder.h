// The agent that is sent bodies, and answers each request with the body that it has read.
#pragma once

#include "Bodies.h"
#include "Link.h"
#include "Message.h"

#include <deque>
#include <functional>
#include <map>

namespace carrier {

class Responder {
public:
  Responder(Transport given, const Bodies &expected) : transport(given), link(given), bodies(expected) {}

  std::uint16_t port() const { return link.port(); }

  // Answers the next request if there is one in time.
  void step(std::chrono::milliseconds patience);

  std::size_t requests() const { return count; }      // without those that came once more
  std::size_t repetitions() const { return repeats; } // of requests that had been answered
  const std::vector<std::string> &problems() const { return found; }

  // Changes answers before they leave; what is empty then does not.
  std::function<void(std::string &answer)> tamper;

private:
  std::string answerTo(const Message &request);

  const Transport transport;
  Link link;
  const Bodies &bodies;
  Codec codec;
  std::map<std::string, std::string, std::less<>> answers; // by branch
  std::deque<std::string> branches;                        // of them, oldest first
  std::size_t count = 0;
  std::size_t repeats = 0;
  std::vector<std::string> found;
};

// What is wrong with a body that came with a message; empty: nothing. What was read of it is written to text.
std::string check(Codec &codec, const Bodies &bodies, const Message &message, std::string &text);

// The kind of a type of content; null if there is none.
const Kind *kindOf(std::string_view type);

} // namespace carrier
