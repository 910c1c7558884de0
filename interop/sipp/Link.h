// Messages over a socket of the loopback interface, to and from one peer.
#pragma once

#include <chrono>
#include <cstdint>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <string_view>

namespace carrier {

enum class Transport {
  udp,
  tcp
};

class Link {
public:
  explicit Link(Transport transport);            // waits for its peer on a free port
  Link(Transport transport, std::uint16_t peer); // to a peer who may not be there yet
  ~Link();
  Link(const Link &) = delete;
  Link &operator=(const Link &) = delete;

  std::uint16_t port() const;

  // The bytes of the next message, or nothing if there was none in time.
  std::optional<std::string> receive(std::chrono::milliseconds patience);

  void send(std::string_view message); // to who has sent the last message

private:
  std::optional<std::string> takeFirst();

  const Transport transport;
  int listener = -1;
  int socket = -1;
  sockaddr_in peer{};
  std::string received; // of a stream
};

// A port that nobody has.
std::uint16_t freePort(Transport transport);

} // namespace carrier
