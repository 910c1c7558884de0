// A SIP message, as far as the agents need it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace carrier {

class Message {
public:
  // Nothing if it is none, or is not as long as it says.
  static std::optional<Message> parse(std::string text);

  explicit Message(std::string start) : startLine(std::move(start)) {}

  const std::string &start() const { return startLine; }
  std::string_view field(std::string_view name) const; // the first of this name; empty if there is none
  std::string_view branch() const;                     // which transaction it belongs to
  std::string_view body() const { return content; }

  void add(std::string name, std::string_view value) { fields.emplace_back(std::move(name), value); }
  void setBody(std::string_view type, std::string_view body);

  // An answer to this request.
  Message answer(std::string_view status) const;

  std::string text() const;

private:
  std::string startLine;
  std::vector<std::pair<std::string, std::string>> fields;
  std::string content;
};

// How long the first message in the bytes is; 0 as long as they do not tell.
std::size_t lengthOfFirst(std::string_view bytes);

} // namespace carrier
