// A chat client that runs as a process of its own, and the other end of its conversations: pipes to where its user
// sits, and a socket to which its messages come.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace linphone {

using Lines = std::vector<std::string>;

struct Message {
  std::string user; // of ours, who gets it or has sent it
  std::string type; // of the body
  std::string body;
};

class Peer {
public:
  // Starts the program, with a folder for its state.
  Peer(const std::string &program, const std::string &folder);
  ~Peer();
  Peer(const Peer &) = delete;
  Peer &operator=(const Peer &) = delete;

  explicit operator bool() const { return port != 0; } // it has said where it takes messages

  // What its user does; client.cpp has the commands.
  void command(const std::string &line);

  // What it has said of some users since it was asked last, as "WHAT USER", and "gone" if it has ended.
  Lines saidOf(const std::set<std::string> &users);

  // Waits until it says so of a user, without having asked.
  bool waitFor(const std::string &what, const std::string &user);

  // Its next message, which gets a 200 for an answer. Nothing if none comes for long.
  std::optional<Message> receive();

  // Sends it a message, and waits for the answer. The status; 0 if there was none.
  int send(const Message &message);

  // Everything that went to and fro.
  const std::string &transcript() const { return record; }

private:
  void start(const std::string &program, const std::string &folder);
  bool isGone() const { return output < 0; }
  bool has(const std::string &line) const;
  bool waitUntil(const std::function<bool()> &done);
  void takeLines();
  void takeDatagram();

  pid_t process = -1;
  int input = -1;  // of the process
  int output = -1; // of the process, until it ends
  int udp = -1;
  int ownPort = 0;
  int port = 0;
  std::string unfinished; // line
  Lines lines;
  std::deque<Message> messages;
  std::set<std::string> known; // calls of its messages, which it may repeat
  int sent = 0;
  std::string awaited; // the call of the message that has no answer yet
  int status = 0;
  std::string record;
};

} // namespace linphone
