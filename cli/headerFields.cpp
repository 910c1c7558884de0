#include "headerFields.h"

#include <algorithm>
#include <charconv>

namespace cli {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::size_t endOfName(std::string_view line) {
  const auto isToken = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-.!%*_+`'~").find(c) != std::string_view::npos;
  };
  std::size_t end = 0;
  while (end < line.size() && isToken(line[end]))
    ++end;
  return end;
}

// The name of a field in small letters and in full; empty if the line is no field.
std::string fieldName(std::string_view line, std::size_t &valueAt) {
  const std::size_t end = endOfName(line);
  const std::size_t colon = line.find_first_not_of(" \t", end);
  if (end == 0 || colon == std::string_view::npos || line[colon] != ':') return {};
  valueAt = colon + 1;
  std::string name = folded(line.substr(0, end));
  if (name == "c") return "content-type";
  if (name == "e") return "content-encoding";
  if (name == "l") return "content-length";
  return name;
}

// A value between quotes or up to a semicolon, taken off the text.
std::string takeValue(std::string_view &text) {
  std::string value;
  if (text.starts_with('"')) {
    std::size_t at = 1;
    for (; at < text.size() && text[at] != '"'; ++at) {
      if (text[at] == '\\' && at + 1 < text.size()) ++at;
      value += text[at];
    }
    text.remove_prefix(std::min(at + 1, text.size()));
  } else {
    value = trimmed(text.substr(0, text.find(';')));
  }
  const std::size_t end = text.find(';');
  text.remove_prefix(end == std::string_view::npos ? text.size() : end);
  return value;
}

std::optional<std::size_t> number(std::string_view text) {
  std::size_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

} // namespace

std::string folded(std::string_view text) {
  std::string result(trimmed(text));
  for (char &c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

bool looksLikeField(std::string_view line) {
  std::size_t valueAt = 0;
  return !fieldName(line, valueAt).empty();
}

HeaderFields readHeaderFields(TextLines &lines) {
  HeaderFields fields;
  std::optional<std::string> length;
  std::optional<std::string> type;
  std::optional<std::string> encoding;
  std::optional<std::string> transferEncoding;
  std::string *current = nullptr; // the value that a folded line belongs to
  const auto begin = [&](std::optional<std::string> &value) { return value ? nullptr : &value.emplace(); };

  Line line;
  while (!fields.ended && lines.next(line)) {
    const std::string_view content = lines.contentOf(line);
    if (trimmed(content).empty()) {
      fields.ended = true;
      fields.wire = line.next - line.end == 2;
      break;
    }
    std::size_t valueAt = 0;
    if (content[0] != ' ' && content[0] != '\t') {
      const std::string name = fieldName(content, valueAt);
      current = name == "content-type"                ? begin(type)
                : name == "content-length"            ? begin(length)
                : name == "content-encoding"          ? begin(encoding)
                : name == "content-transfer-encoding" ? begin(transferEncoding)
                                                      : nullptr;
    }
    if (!current) continue;
    if (!current->empty()) *current += ' ';
    *current += trimmed(content.substr(valueAt));
  }
  fields.type = type.value_or("");
  fields.encoding = folded(encoding.value_or(""));
  fields.transferEncoding = folded(transferEncoding.value_or(""));
  if (length) fields.length = number(*length);
  return fields;
}

MediaType parseMediaType(std::string_view value) {
  const std::size_t end = value.find(';');
  MediaType type{folded(value.substr(0, end)), {}};
  std::string_view rest = end == std::string_view::npos ? std::string_view() : value.substr(end);
  while (!rest.empty()) {
    rest.remove_prefix(1);
    const std::size_t equals = rest.find_first_of("=;");
    if (equals == std::string_view::npos) break;
    const std::string name = folded(rest.substr(0, equals));
    rest.remove_prefix(equals);
    if (rest[0] == ';') continue;
    rest.remove_prefix(1);
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    std::string parameter = takeValue(rest);
    if (name == "boundary" && type.boundary.empty()) type.boundary = std::move(parameter);
  }
  return type;
}

} // namespace cli
