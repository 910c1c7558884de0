#include "Link.h"

#include "Message.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace carrier {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

[[noreturn]] void fail(const char *what) { throw std::system_error(errno, std::generic_category(), what); }

sockaddr_in addressOf(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int open(Transport transport) {
  const int opened = ::socket(AF_INET, (transport == Transport::udp ? SOCK_DGRAM : SOCK_STREAM) | SOCK_CLOEXEC, 0);
  if (opened < 0) fail("socket");
  const timeval limit{10, 0}; // a peer that takes nothing is a failure, not a reason to hang
  if (setsockopt(opened, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) != 0) fail("setsockopt");
  return opened;
}

int openOnFreePort(Transport transport) {
  const int opened = open(transport);
  const sockaddr_in address = addressOf(0);
  if (bind(opened, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) fail("bind");
  return opened;
}

std::uint16_t portOf(int socket) {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  if (getsockname(socket, reinterpret_cast<sockaddr *>(&address), &length) != 0) fail("getsockname");
  return ntohs(address.sin_port);
}

bool isReadable(int socket, Clock::time_point end) {
  const auto left = std::chrono::duration_cast<milliseconds>(end - Clock::now());
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0) > 0;
}

} // namespace

Link::Link(Transport given) : transport(given) {
  const int opened = openOnFreePort(transport);
  (transport == Transport::udp ? socket : listener) = opened;
  if (transport == Transport::tcp && listen(listener, 1) != 0) fail("listen");
}

Link::Link(Transport given, std::uint16_t peerPort) : transport(given), peer(addressOf(peerPort)) {
  if (transport == Transport::udp) {
    socket = openOnFreePort(transport);
    return;
  }
  for (const auto end = Clock::now() + std::chrono::seconds(10);; std::this_thread::sleep_for(milliseconds(20))) {
    socket = open(transport);
    if (connect(socket, reinterpret_cast<const sockaddr *>(&peer), sizeof peer) == 0) return;
    if (errno != ECONNREFUSED || Clock::now() >= end) fail("connect");
    close(socket);
  }
}

Link::~Link() {
  if (socket >= 0) close(socket);
  if (listener >= 0) close(listener);
}

std::uint16_t Link::port() const { return portOf(listener >= 0 ? listener : socket); }

std::optional<std::string> Link::receive(milliseconds patience) {
  const auto end = Clock::now() + patience;
  if (socket < 0) {
    if (!isReadable(listener, end)) return std::nullopt;
    socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) fail("accept");
  }
  for (;;) {
    if (auto message = takeFirst()) return message;
    if (!isReadable(socket, end)) return std::nullopt;
    static std::array<char, 65536> bytes;
    sockaddr_in from{};
    socklen_t length = sizeof from;
    const ssize_t count = recvfrom(socket, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr *>(&from), &length);
    if (transport == Transport::udp) {
      if (count < 0) continue; // somebody was not there yet
      peer = from;
      return std::string(bytes.data(), static_cast<std::size_t>(count));
    }
    if (count <= 0) { // it has gone
      std::this_thread::sleep_until(end);
      return std::nullopt;
    }
    received.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

std::optional<std::string> Link::takeFirst() {
  const std::size_t length = lengthOfFirst(received);
  if (length == 0 || length > received.size()) return std::nullopt;
  std::string message = received.substr(0, length);
  received.erase(0, length);
  return message;
}

void Link::send(std::string_view message) {
  if (transport == Transport::udp) {
    // What a full queue does not take is lost like everything that is lost on the way.
    static_cast<void>(
        sendto(socket, message.data(), message.size(), 0, reinterpret_cast<const sockaddr *>(&peer), sizeof peer));
    return;
  }
  while (!message.empty()) {
    const ssize_t count = ::send(socket, message.data(), message.size(), MSG_NOSIGNAL);
    if (count < 0) fail("send");
    message.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::uint16_t freePort(Transport transport) {
  const int opened = openOnFreePort(transport);
  const std::uint16_t port = portOf(opened);
  close(opened);
  return port;
}

} // namespace carrier
