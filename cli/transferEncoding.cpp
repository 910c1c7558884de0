#include "transferEncoding.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace cli {

namespace {

class Decoder {
public:
  explicit Decoder(std::string_view all) : text(all) {}

  DecodedBody body;

  void takePlain(const Line &line) { append(line.begin, line.next); }

  void takeQuotedPrintable(const Line &line) {
    std::size_t end = line.end; // blanks at the end were not there before
    while (end > line.begin && (text[end - 1] == ' ' || text[end - 1] == '\t'))
      --end;
    bool joined = false;
    for (std::size_t at = line.begin; at < end;) {
      if (text[at] != '=') {
        const std::size_t stop = std::min(text.find('=', at), end);
        append(at, stop);
        at = stop;
      } else if (at + 1 == end) {
        joined = true;
        ++at;
      } else {
        const int high = hexDigit(at + 1, end);
        const int low = hexDigit(at + 2, end);
        if (high < 0 || low < 0) throw EncodingError("\"=\" without two hexadecimal digits", at);
        body.places.add(body.bytes.size(), at);
        body.bytes += static_cast<char>(high << 4 | low);
        at += 3;
      }
    }
    if (!joined) append(line.end, line.next);
  }

  void takeBase64(const Line &line) {
    for (std::size_t at = line.begin; at < line.end; ++at) {
      const char c = text[at];
      if (c == ' ' || c == '\t' || c == '\r') continue;
      if (c == '=') {
        padded = true;
        continue;
      }
      const int value = sixBits(c);
      if (value < 0 || padded) throw EncodingError("a character that base64 does not have there", at);
      if (count == 0) {
        group = 0;
        groupAt = at;
      }
      group = group << 6 | static_cast<std::uint32_t>(value);
      if (++count == 4) flush();
    }
  }

  // Ends a base64 text: two or three characters may be left.
  void finish() {
    if (count == 1) throw EncodingError("base64 that is cut off", groupAt);
    if (count > 0) {
      const unsigned missing = 4 - count;
      group <<= 6 * missing;
      flush();
      body.bytes.resize(body.bytes.size() - missing);
    }
  }

private:
  void append(std::size_t begin, std::size_t end) {
    if (begin == end) return;
    body.places.add(body.bytes.size(), begin);
    body.bytes.append(text.substr(begin, end - begin));
  }

  void flush() {
    body.places.add(body.bytes.size(), groupAt, true);
    for (const int shift : {16, 8, 0})
      body.bytes += static_cast<char>(group >> shift & 0xFF);
    count = 0;
  }

  int hexDigit(std::size_t at, std::size_t end) const {
    const char c = at < end ? text[at] : '\0';
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
  }

  static int sixBits(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
  }

  std::string_view text;
  std::uint32_t group = 0; // of base64: up to four characters
  std::size_t groupAt = 0;
  unsigned count = 0;
  bool padded = false;
};

} // namespace

std::optional<TransferEncoding> transferEncodingNamed(std::string_view name) {
  if (name.empty() || name == "7bit" || name == "8bit" || name == "binary") return TransferEncoding::none;
  if (name == "base64") return TransferEncoding::base64;
  if (name == "quoted-printable") return TransferEncoding::quotedPrintable;
  return std::nullopt;
}

DecodedBody decodeBody(std::string_view text, TextLines lines, TransferEncoding encoding) {
  Decoder decoder(text);
  decoder.body.places.add(0, lines.position()); // of an empty body
  Line line;
  while (lines.next(line)) {
    switch (encoding) {
    case TransferEncoding::none: decoder.takePlain(line); break;
    case TransferEncoding::base64: decoder.takeBase64(line); break;
    case TransferEncoding::quotedPrintable: decoder.takeQuotedPrintable(line); break;
    }
  }
  decoder.finish();
  return std::move(decoder.body);
}

} // namespace cli
