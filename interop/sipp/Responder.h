// The agent that is sent bodies, and answers each request with the body that it has read.
#pragma once

#include "Bodies.h"
#include "Link.h"
#include "Message.h"

#include <functional>
#include <string>
#include <vector>

namespace carrier {

class Responder {
public:
  Responder(Transport transport, const Bodies &expected) : link(transport), bodies(expected) {
    transactions.reserve(mostTransactions); // so that what is said of memory is about bodies
  }

  std::uint16_t port() const { return link.port(); }

  // Answers the next request if there is one in time.
  void step(std::chrono::milliseconds patience);

  std::size_t requests() const { return transactions.size(); } // without those that came once more
  std::size_t repetitions() const { return repeats; }          // of requests that had come before
  const std::vector<std::string> &problems() const { return found; }

  // Changes answers before they leave; what is empty then does not.
  std::function<void(std::string &answer)> tamper;

private:
  std::string answerTo(const Message &request);

  static constexpr std::size_t mostTransactions = 1 << 16;

  Link link;
  const Bodies &bodies;
  Codec codec;
  std::vector<std::size_t> transactions; // hashes of branches
  std::size_t repeats = 0;
  std::vector<std::string> found;
};

// What is wrong with a body that came with a message; empty: nothing. What was read of it is written to text.
std::string check(Codec &codec, const Bodies &bodies, const Message &message, std::string &text);

// The kind of a type of content; null if there is none.
const Kind *kindOf(std::string_view type);

} // namespace carrier
