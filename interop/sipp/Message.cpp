#include "Message.h"

#include <algorithm>
#include <charconv>

namespace carrier {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headEnd = "\r\n\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool isSameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

} // namespace

std::optional<Message> Message::parse(std::string text) {
  const std::string_view all = text;
  const std::size_t end = all.find(headEnd);
  if (end == all.npos || lengthOfFirst(all) != all.size()) return std::nullopt;
  std::string_view head = all.substr(0, end + lineEnd.size());
  const auto takeLine = [&head] {
    const std::string_view line = head.substr(0, head.find(lineEnd));
    head.remove_prefix(line.size() + lineEnd.size());
    return line;
  };
  Message message{std::string(takeLine())};
  while (!head.empty()) {
    const std::string_view line = takeLine();
    const std::size_t colon = line.find(':');
    if (colon == line.npos) return std::nullopt;
    message.add(std::string(trimmed(line.substr(0, colon))), trimmed(line.substr(colon + 1)));
  }
  message.content = all.substr(end + headEnd.size());
  return message;
}

std::string_view Message::field(std::string_view name) const {
  const auto found = std::ranges::find_if(fields, [&](const auto &field) { return isSameName(field.first, name); });
  return found == fields.end() ? "" : std::string_view(found->second);
}

std::string_view Message::branch() const {
  constexpr std::string_view parameter = ";branch=";
  const std::string_view via = field("Via");
  const std::size_t found = via.find(parameter);
  if (found == via.npos) return "";
  const std::string_view rest = via.substr(found + parameter.size());
  return rest.substr(0, rest.find_first_of("; ,"));
}

void Message::setBody(std::string_view type, std::string_view body) {
  add("Content-Type", type);
  content = body;
}

Message Message::answer(std::string_view status) const {
  Message message("SIP/2.0 " + std::string(status));
  for (const auto &[name, value] : fields) {
    if (isSameName(name, "To")) {
      message.add(name, value + ";tag=carrier");
    } else if (isSameName(name, "Via") || isSameName(name, "From") || isSameName(name, "Call-ID") ||
               isSameName(name, "CSeq")) {
      message.add(name, value);
    }
  }
  return message;
}

std::string Message::text() const {
  std::string all = startLine;
  for (const auto &[name, value] : fields)
    all.append(lineEnd).append(name).append(": ").append(value);
  all.append(lineEnd).append("Content-Length: ").append(std::to_string(content.size()));
  return all.append(headEnd).append(content);
}

std::size_t lengthOfFirst(std::string_view bytes) {
  const std::size_t end = bytes.find(headEnd);
  if (end == bytes.npos) return 0;
  constexpr std::string_view name = "\r\nContent-Length:";
  const std::size_t found = bytes.substr(0, end).find(name);
  std::size_t length = 0;
  if (found != bytes.npos) {
    const std::string_view digits = trimmed(bytes.substr(found + name.size(), end - found - name.size()));
    std::from_chars(digits.data(), digits.data() + digits.size(), length);
  }
  return end + headEnd.size() + length;
}

} // namespace carrier
