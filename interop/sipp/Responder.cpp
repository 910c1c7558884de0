#include "Responder.h"

#include <algorithm>
#include <charconv>

namespace carrier {

const Kind *kindOf(std::string_view type) {
  const auto found = std::ranges::find(kinds(), type, &Kind::type);
  return found == kinds().end() ? nullptr : &*found;
}

std::string check(Codec &codec, const Bodies &bodies, const Message &message, std::string &text) {
  const Kind *kind = kindOf(message.field("Content-Type"));
  if (!kind) return "there is no such type: " + std::string(message.field("Content-Type"));
  const std::string_view subject = message.field("Subject");
  std::size_t number = bodies.count();
  std::from_chars(subject.data(), subject.data() + subject.size(), number);
  const Body *meant = bodies.find(*kind, number);
  if (!meant) return "there is no such body: " + std::string(subject);
  const std::string name = std::string(kind->name) + "-" + std::to_string(number) + ": ";
  Codec::Passed passed = codec.pass(*kind, message.body(), meant->source);
  if (!passed.problem.empty()) return name + passed.problem;
  if (passed.text != meant->text) return name + "it is not written as it was";
  if (message.body() != meant->text) return name + "other bytes came than were sent";
  text = std::move(passed.text);
  return "";
}

void Responder::step(std::chrono::milliseconds patience) {
  auto bytes = link.receive(patience);
  if (!bytes) return;
  const auto request = Message::parse(std::move(*bytes));
  if (!request || request->branch().empty()) {
    found.emplace_back("what came is no request");
    return;
  }
  // What comes once more is answered once more, and the answer is the same.
  const std::size_t transaction = std::hash<std::string_view>()(request->branch());
  if (std::ranges::find(transactions, transaction) == transactions.end()) {
    transactions.push_back(transaction);
  } else {
    ++repeats;
  }
  std::string answer = answerTo(*request);
  if (tamper) tamper(answer);
  if (!answer.empty()) link.send(answer);
}

std::string Responder::answerTo(const Message &request) {
  std::string text;
  const std::string problem = check(codec, bodies, request, text);
  if (!problem.empty()) {
    found.push_back(problem);
    return request.answer("400 Bad Request").text();
  }
  Message answer = request.answer("200 OK");
  answer.setBody(request.field("Content-Type"), text);
  return answer.text();
}

} // namespace carrier
