#include "Http.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cctype>
#include <charconv>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace agent {

namespace {

constexpr std::chrono::seconds patience(10);
constexpr std::size_t largestResponse = 16 << 20;

template <class Number> std::optional<Number> numberOf(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// A connection that owns its socket, and gives up when its time is over.
class Connection {
public:
  explicit Connection(const std::string &server) : end(std::chrono::steady_clock::now() + patience) {
    const std::size_t colon = server.rfind(':');
    if (colon == std::string::npos) return;
    const auto port = numberOf<std::uint16_t>(std::string_view(server).substr(colon + 1));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    if (!port || inet_pton(AF_INET, server.substr(0, colon).c_str(), &address.sin_addr) != 1) return;
    address.sin_port = htons(*port);
    descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return;
    if (connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) shut();
  }
  ~Connection() { shut(); }
  Connection(const Connection &) = delete;
  Connection &operator=(const Connection &) = delete;

  bool send(std::string_view bytes) {
    while (!bytes.empty()) {
      if (!isReady(POLLOUT)) return false;
      const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }

  // Appends what there is. False at the end, or if nothing comes.
  bool receive(std::string &bytes) {
    char part[4096];
    if (!isReady(POLLIN)) return false;
    const ssize_t got = recv(descriptor, part, sizeof part, 0);
    if (got <= 0) return false;
    bytes.append(part, static_cast<std::size_t>(got));
    return true;
  }

private:
  bool isReady(short events) const {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
    pollfd waiting = {descriptor, events, 0};
    return descriptor >= 0 && left > 0 && poll(&waiting, 1, static_cast<int>(left)) == 1;
  }
  void shut() {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
  }

  const std::chrono::steady_clock::time_point end;
  int descriptor = -1;
};

// The value of a header, by its name in lower case.
std::optional<std::string_view> header(std::string_view head, std::string_view name) {
  while (!head.empty()) {
    const std::string_view line = head.substr(0, head.find("\r\n"));
    head.remove_prefix(std::min(head.size(), line.size() + 2));
    const std::size_t colon = line.find(':');
    const auto isSame = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
    if (colon != name.size() ||
        !std::equal(name.begin(), name.end(), line.begin(), [&](char b, char a) { return isSame(a, b); }))
      continue;
    const std::size_t begin = line.find_first_not_of(' ', colon + 1);
    return begin == std::string_view::npos ? std::string_view() : line.substr(begin);
  }
  return std::nullopt;
}

} // namespace

std::optional<HttpResponse> ask(const HttpRequest &request) {
  Connection connection(request.server);
  std::string sent = request.method + " " + request.path + " HTTP/1.1\r\nHost: " + request.server + "\r\n";
  if (!request.type.empty()) sent += "Content-Type: " + request.type + "\r\n";
  sent += "Content-Length: " + std::to_string(request.body.size()) + "\r\n\r\n";
  sent += request.body;
  if (!connection.send(sent)) return std::nullopt;

  std::string got;
  std::size_t headEnd = std::string::npos;
  while ((headEnd = got.find("\r\n\r\n")) == std::string::npos)
    if (got.size() > largestResponse || !connection.receive(got)) return std::nullopt;
  const std::string head = got.substr(0, headEnd + 2);
  const std::string_view version = "HTTP/1.1 ";
  const auto status = numberOf<int>(std::string_view(head).substr(std::min(head.size(), version.size()), 3));
  const auto length = numberOf<std::size_t>(header(head, "content-length").value_or("0"));
  if (!head.starts_with("HTTP/1.") || !status || !length || *length > largestResponse) return std::nullopt;

  const std::size_t bodyBegin = headEnd + 4;
  while (got.size() < bodyBegin + *length)
    if (!connection.receive(got)) return std::nullopt;
  return HttpResponse{*status, got.substr(bodyBegin, *length)};
}

} // namespace agent
