#include "utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <iconv.h>

namespace cli {

namespace {

struct Encoding {
  std::string name;
  std::size_t markLength; // bytes of the byte order mark
};

struct Signature {
  std::string_view bytes;
  const char *name;
  std::size_t markLength;
};

using namespace std::string_view_literals;

// UTF-32 first: its mark begins like that of UTF-16.
constexpr Signature signatures[] = {
    {"\xFF\xFE\0\0"sv, "UTF-32LE", 4}, {"\0\0\xFE\xFF"sv, "UTF-32BE", 4}, {"<\0\0\0"sv, "UTF-32LE", 0},
    {"\0\0\0<"sv, "UTF-32BE", 0},      {"\xFF\xFE"sv, "UTF-16LE", 2},     {"\xFE\xFF"sv, "UTF-16BE", 2},
    {"<\0?\0"sv, "UTF-16LE", 0},       {"\0<\0?"sv, "UTF-16BE", 0},
};

// The encoding in an XML declaration, or an empty name.
std::string declaredEncoding(std::string_view document) {
  const std::string_view declaration = document.substr(0, document.find("?>"));
  const std::size_t word = declaration.find("encoding");
  if (!declaration.starts_with("<?xml") || word == std::string_view::npos) return {};
  const std::size_t begin = declaration.find_first_of("\"'", word);
  if (begin == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[begin], begin + 1);
  if (end == std::string_view::npos) return {};
  return std::string(declaration.substr(begin + 1, end - begin - 1));
}

Encoding encodingOf(std::string_view document) {
  for (const Signature &signature : signatures)
    if (document.starts_with(signature.bytes)) return {signature.name, signature.markLength};
  return {declaredEncoding(document), 0};
}

class Converter {
public:
  Converter(const char *to, const char *from) : handle(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(handle);
  }
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;

  bool usable() const { return reinterpret_cast<std::intptr_t>(handle) != -1; }

  std::string convert(std::string_view text) {
    std::string result;
    char *in = const_cast<char *>(text.data()); // iconv does not write to it
    std::size_t inLeft = text.size();
    bool more = true;
    while (more) {
      char piece[4096];
      char *out = piece;
      std::size_t outLeft = sizeof(piece);
      more = iconv(handle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1) && errno == E2BIG;
      result.append(piece, sizeof(piece) - outLeft);
    }
    return result;
  }

private:
  iconv_t handle;
};

} // namespace

std::optional<std::string> toUtf8(std::string_view document) {
  const Encoding encoding = encodingOf(document);
  Converter converter("UTF-8", encoding.name.c_str());
  if (encoding.name.empty() || !converter.usable()) return std::nullopt;
  return converter.convert(document.substr(encoding.markLength));
}

std::map<std::size_t, std::size_t> fromUtf8(std::string_view document, const std::set<std::size_t> &offsets) {
  std::map<std::size_t, std::size_t> places;
  const std::optional<std::string> utf8 = toUtf8(document);
  if (!utf8) return places;
  const Encoding encoding = encodingOf(document);
  Converter converter(encoding.name.c_str(), "UTF-8");
  if (!converter.usable()) return places;
  std::size_t before = 0;
  std::size_t place = encoding.markLength;
  for (const std::size_t offset : offsets) {
    place += converter.convert(std::string_view(*utf8).substr(before, offset - before)).size();
    before = std::min(offset, utf8->size());
    places[offset] = place;
  }
  return places;
}

} // namespace cli
