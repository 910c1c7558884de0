#include "Peer.h"

#include <algorithm>
#include <arpa/inet.h>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace linphone {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds limit(15);
constexpr std::string_view lineEnd = "\r\n";

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// The header fields of that name as they stand, with their line ends.
std::string fields(std::string_view head, const std::string &name) {
  std::string found;
  while (!head.empty()) {
    const std::size_t end = std::min(head.find(lineEnd), head.size() - lineEnd.size()) + lineEnd.size();
    if (head.starts_with(name + ":")) found.append(head.substr(0, end));
    head.remove_prefix(end);
  }
  return found;
}

std::string value(std::string_view head, const std::string &name) {
  const std::string field = fields(head, name);
  if (field.empty()) return "";
  const std::size_t start = field.find_first_not_of(' ', name.size() + 1);
  return field.substr(start, field.find(lineEnd) - start);
}

} // namespace

Peer::Peer(const std::string &program, const std::string &folder) {
  udp = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_in own = loopback(0);
  socklen_t length = sizeof own;
  if (udp < 0 || bind(udp, reinterpret_cast<sockaddr *>(&own), sizeof own) != 0 ||
      getsockname(udp, reinterpret_cast<sockaddr *>(&own), &length) != 0)
    return;
  ownPort = ntohs(own.sin_port);
  start(program, folder);
  const std::string ready = "ready ";
  if (!waitUntil([this] { return !lines.empty() || isGone(); }) || lines.empty() || !lines.front().starts_with(ready))
    return;
  port = std::atoi(lines.front().c_str() + ready.size());
  lines.clear();
}

Peer::~Peer() {
  if (input >= 0) close(input); // upon which it goes
  if (process > 0) {
    waitUntil([this] { return isGone(); });
    kill(process, SIGKILL); // in case that it did not
    waitpid(process, nullptr, 0);
  }
  for (const int descriptor : {output, udp})
    if (descriptor >= 0) close(descriptor);
}

void Peer::start(const std::string &program, const std::string &folder) {
  std::signal(SIGPIPE, SIG_IGN); // it may go while we write
  const std::string portText = std::to_string(ownPort);
  int in[2];
  int out[2];
  if (pipe2(in, O_CLOEXEC) != 0) return;
  input = in[1];
  if (pipe2(out, O_CLOEXEC) == 0) {
    output = out[0];
    process = fork();
    if (process == 0) {
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      execl(program.c_str(), program.c_str(), portText.c_str(), folder.c_str(), nullptr);
      _exit(127);
    }
    close(out[1]);
  }
  close(in[0]);
}

void Peer::command(const std::string &line) {
  record += "> " + line + "\n";
  const std::string whole = line + "\n";
  [[maybe_unused]] const ssize_t written = write(input, whole.data(), whole.size()); // fails only for one that is gone
}

Lines Peer::saidOf(const std::set<std::string> &users) {
  command("tell");
  waitUntil([this] { return has("told") || isGone(); });
  Lines asked;
  Lines others;
  for (const std::string &line : lines) {
    const bool isAsked = users.contains(line.substr(line.find(' ') + 1));
    if (line != "told") (isAsked ? asked : others).push_back(line);
  }
  if (isGone()) asked.push_back("gone");
  lines = others;
  return asked;
}

bool Peer::waitFor(const std::string &what, const std::string &user) {
  const std::string line = what + " " + user;
  waitUntil([&] { return has(line) || isGone(); });
  return has(line);
}

std::optional<Message> Peer::receive() {
  waitUntil([this] { return !messages.empty() || isGone(); });
  if (messages.empty()) return std::nullopt;
  Message first = messages.front();
  messages.pop_front();
  return first;
}

int Peer::send(const Message &message) {
  const std::string number = std::to_string(++sent);
  awaited = number + "@127.0.0.1";
  status = 0;
  const std::string head[] = {
      "MESSAGE sip:linphone@127.0.0.1:" + std::to_string(port) + " SIP/2.0",
      "Via: SIP/2.0/UDP 127.0.0.1:" + std::to_string(ownPort) + ";branch=z9hG4bK" + number,
      "Max-Forwards: 70",
      "From: <" + message.user + ">;tag=" + number,
      "To: <sip:linphone@home.example>",
      "Call-ID: " + awaited,
      "CSeq: 1 MESSAGE",
      "Content-Type: " + message.type,
      "Content-Length: " + std::to_string(message.body.size()),
      "",
  };
  std::string datagram;
  for (const std::string &line : head)
    datagram.append(line).append(lineEnd);
  datagram += message.body;
  record += "== to the peer\n" + datagram + "\n\n";
  const sockaddr_in address = loopback(port);
  if (sendto(udp, datagram.data(), datagram.size(), 0, reinterpret_cast<const sockaddr *>(&address), sizeof address) <
      0)
    return 0;
  waitUntil([this] { return status != 0 || isGone(); });
  return status;
}

bool Peer::has(const std::string &line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }

bool Peer::waitUntil(const std::function<bool()> &done) {
  const Clock::time_point end = Clock::now() + limit;
  while (!done()) {
    if (Clock::now() >= end) return false;
    pollfd sources[] = {{udp, POLLIN, 0}, {output, POLLIN, 0}};
    poll(sources, std::size(sources), 100);
    if (sources[0].revents != 0) takeDatagram();
    if (sources[1].revents != 0) takeLines();
  }
  return true;
}

void Peer::takeLines() {
  char buffer[4096];
  const ssize_t length = read(output, buffer, sizeof buffer);
  if (length > 0) {
    unfinished.append(buffer, static_cast<std::size_t>(length));
  } else {
    close(std::exchange(output, -1));
    record += "< gone\n";
  }
  for (std::size_t end; (end = unfinished.find('\n')) != unfinished.npos; unfinished.erase(0, end + 1)) {
    lines.push_back(unfinished.substr(0, end));
    record += "< " + lines.back() + "\n";
  }
}

void Peer::takeDatagram() {
  std::string datagram(65536, '\0');
  sockaddr_in from{};
  socklen_t length = sizeof from;
  const ssize_t size = recvfrom(udp, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr *>(&from), &length);
  if (size < 0) return;
  datagram.resize(static_cast<std::size_t>(size));
  const std::size_t end = datagram.find("\r\n\r\n");
  if (end == datagram.npos) return;
  record += "== from the peer\n" + datagram + "\n\n";
  const std::string head = datagram.substr(0, end + lineEnd.size());
  const std::string call = value(head, "Call-ID");

  const std::string answer = "SIP/2.0 ";
  if (head.starts_with(answer)) {
    const int told = std::atoi(head.c_str() + answer.size());
    if (call == awaited && told >= 200) status = told;
    return;
  }
  std::string to = fields(head, "To");
  to.insert(to.size() - lineEnd.size(), ";tag=composing");
  const std::string good = answer + "200 OK\r\n" + fields(head, "Via") + fields(head, "From") + to +
                           fields(head, "Call-ID") + fields(head, "CSeq") + "Content-Length: 0\r\n\r\n";
  sendto(udp, good.data(), good.size(), 0, reinterpret_cast<const sockaddr *>(&from), length);
  if (known.insert(call).second) {
    messages.push_back({value(head, "To"), value(head, "Content-Type"), datagram.substr(end + 2 * lineEnd.size())});
  }
}

} // namespace linphone
