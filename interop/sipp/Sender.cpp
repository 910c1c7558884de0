#include "Sender.h"

#include "Responder.h"

#include <algorithm>

namespace carrier {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds firstInterval(100); // to the first repetition; then twice as long each time
constexpr milliseconds longestInterval(800);
constexpr milliseconds patience(10000);

} // namespace

bool Sender::run(std::size_t total, std::size_t atOnce, const std::function<void(std::size_t)> &answered) {
  std::size_t started = 0;
  std::size_t done = 0;
  while (done < total) {
    while (started < total && pending.size() < atOnce)
      start(started++);
    if (auto bytes = link.receive(milliseconds(10))) {
      const auto answer = Message::parse(std::move(*bytes));
      if (!answer) {
        found.emplace_back("what came is no message");
      } else if (take(*answer)) {
        answered(++done);
      }
    }
    if (!repeat()) return false;
  }
  return true;
}

void Sender::start(std::size_t number) {
  const std::string id = std::to_string(number);
  const Kind &kind = kinds()[number % kinds().size()];
  const std::size_t which = number / kinds().size() % bodies.count();
  const std::string method(kind.method);
  const std::string branch = "z9hG4bK-carrier-" + id;
  Message request(method + " sip:ben@home.example SIP/2.0");
  request.add("Via", std::string(transport == Transport::udp ? "SIP/2.0/UDP" : "SIP/2.0/TCP") +
                         " 127.0.0.1:" + std::to_string(link.port()) + ";branch=" + branch);
  request.add("From", "<sip:anna@home.example>;tag=a" + id);
  request.add("To", "<sip:ben@home.example>");
  request.add("Call-ID", id + "@carrier");
  request.add("CSeq", "1 " + method);
  request.add("Max-Forwards", "70");
  request.add("Subject", std::to_string(which));
  if (!kind.event.empty()) request.add("Event", kind.event);
  request.setBody(kind.type, bodies.find(kind, which)->text);
  const auto now = Clock::now();
  const auto &[at, added] =
      pending.emplace(branch, Pending{request.text(), number, now + firstInterval, firstInterval, now + patience});
  link.send(at->second.text);
}

bool Sender::repeat() {
  const auto now = Clock::now();
  for (auto &[branch, request] : pending) {
    if (now >= request.end) {
      found.push_back("no answer to request " + std::to_string(request.number));
      return false;
    }
    if (transport == Transport::tcp || now < request.next) continue;
    ++repeats;
    link.send(request.text);
    request.interval = std::min(2 * request.interval, longestInterval);
    request.next = now + request.interval;
  }
  return true;
}

bool Sender::take(const Message &answer) {
  const auto asked = pending.find(answer.branch());
  if (asked == pending.end()) return false; // answered before
  const std::size_t number = asked->second.number;
  pending.erase(asked);
  const Kind &kind = kinds()[number % kinds().size()];
  const std::string which = std::to_string(number / kinds().size() % bodies.count());
  std::string text;
  std::string problem;
  if (!answer.start().starts_with("SIP/2.0 200 ")) {
    problem = answer.start();
  } else if (answer.field("Content-Type") != kind.type || answer.field("Subject") != which) {
    problem = "the answer to another request";
  } else {
    problem = check(codec, bodies, answer, text);
  }
  if (!problem.empty()) found.push_back(problem);
  return true;
}

} // namespace carrier
