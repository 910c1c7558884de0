#include "message.h"

#include "headerFields.h"
#include "transferEncoding.h"
#include "visible.h"

#include <algorithm>
#include <optional>

namespace cli {

namespace {

using namespace std::string_view_literals;

constexpr int deepestMultipart = 8;
constexpr std::size_t mostParts = 1000;
constexpr std::size_t mostTypesNamed = 5;
constexpr std::size_t longestShown = 80; // bytes

constexpr std::string_view knownTypes[] = {
    "application/im-iscomposing+xml"sv, "application/dialog-info+xml"sv,  "application/auth-policy+xml"sv,
    "application/simple-filter+xml"sv,  "application/poc-settings+xml"sv, "application/3gpp-ims+xml"sv,
    "application/debuginfo+xml"sv,
};

bool isKnown(std::string_view type) {
  return std::find(std::begin(knownTypes), std::end(knownTypes), type) != std::end(knownTypes);
}

// ---- What a text is ---------------------------------------------------------------------------------------------

// Whether a text is XML, for better or worse: in UTF-8 or a relative, by its byte order mark, in UTF-16 or UTF-32, in
// EBCDIC, or empty.
bool isDocument(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF"sv)) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n"sv);
  if (first == std::string_view::npos) return true;
  text.remove_prefix(first);
  return "<\xFF\xFE\0"sv.find(text[0]) != std::string_view::npos || text.starts_with("\x4C\x6F\xA7\x94"sv);
}

constexpr std::string_view version = "SIP/2.0"sv;

// A request line or a status line.
bool isStartLine(std::string_view line) {
  while (!line.empty() && (line.back() == ' ' || line.back() == '\t'))
    line.remove_suffix(1);
  if (line.starts_with(version)) {
    line.remove_prefix(version.size());
    return line.size() >= 4 && line[0] == ' ' &&
           std::all_of(&line[1], &line[3] + 1, [](char c) { return c >= '0' && c <= '9'; }) &&
           (line.size() == 4 || line[4] == ' ');
  }
  if (!line.ends_with(version)) return false;
  line.remove_suffix(version.size());
  const std::size_t method = line.find(' ');
  return method != std::string_view::npos && method > 0 && line.size() > method + 2 && line.back() == ' ' &&
         std::all_of(&line[0], &line[0] + method, [](char c) { return c >= 'A' && c <= 'Z'; });
}

// Where a message begins in a text, and what each of its lines begins with.
struct Start {
  std::size_t at;
  std::string_view indentation;
  bool startLine;
};

Start startAt(std::string_view text, const Line &line, bool startLine) {
  const std::size_t first = text.find_first_not_of(" \t"sv, line.start);
  return {line.start, text.substr(line.start, first - line.start), startLine};
}

// A message begins with the first line that is not empty if that is a start line, or a header field that is followed by
// a content type; else with the first start line of all.
std::optional<Start> findMessage(std::string_view text) {
  TextLines lines(text, text.starts_with("\xEF\xBB\xBF"sv) ? 3 : 0, text.size(), {});
  bool first = true;
  for (Line line; lines.next(line);) {
    std::string_view content = lines.contentOf(line);
    content.remove_prefix(std::min(content.find_first_not_of(" \t"sv), content.size()));
    if (content.empty()) continue;
    if (isStartLine(content)) return startAt(text, line, true);
    if (first && looksLikeField(content)) {
      const Start start = startAt(text, line, false);
      TextLines fields(text, start.at, text.size(), start.indentation);
      if (!readHeaderFields(fields).type.empty()) return start;
    }
    first = false;
  }
  return std::nullopt;
}

// ---- What is in a message -----------------------------------------------------------------------------------------

class Finder {
public:
  Finder(std::shared_ptr<const File> wholeFile, std::string_view commonIndentation)
      : file(std::move(wholeFile)), text(file->bytes()), indentation(commonIndentation) {}

  Findings findings;

  void findFrom(std::size_t begin, bool startLine) {
    TextLines lines(text, begin, text.size(), indentation);
    Line line;
    if (startLine) lines.next(line);
    const HeaderFields fields = readHeaderFields(lines);
    const std::size_t end = endOfBody(lines, fields.length, fields.wire);
    if (!fields.ended || lines.position() == end) {
      refuse(fields.length == 0u ? "its Content-Length says that it has no body" : "the message has no body");
    } else if (fields.type.empty()) {
      refuse("the message has no Content-Type");
    } else {
      visit(fields, lines.position(), end, 0);
    }
    if (findings.documents.empty() && findings.refusals.empty()) refuseTypes();
  }

private:
  // The body ends where Content-Length says, unless there is less than that. Line ends of a text may have been CRLF
  // when its bytes were counted: one of both counts ends a line then, if the text goes on.
  std::size_t endOfBody(const TextLines &lines, std::optional<std::size_t> length, bool wire) const {
    if (!length) return text.size();
    const std::optional<std::size_t> end = endAfter(lines, *length, 0);
    if (wire || (end && endsLine(*end))) return end.value_or(text.size());
    const std::optional<std::size_t> endOnWire = endAfter(lines, *length, 1);
    return endOnWire && endsLine(*endOnWire) ? *endOnWire : end.value_or(text.size());
  }

  // The place behind so many bytes, if each line end has some more than here. Nothing if there are not so many.
  std::optional<std::size_t> endAfter(TextLines lines, std::size_t length, std::size_t more) const {
    for (Line line; length > 0;) {
      if (!lines.next(line)) return std::nullopt;
      const std::size_t bytes = line.next - line.begin;
      if (bytes + more >= length) return line.begin + std::min(bytes, length);
      length -= bytes + more;
    }
    return lines.position();
  }

  bool endsLine(std::size_t at) const { return at == text.size() || text[at - 1] == '\n' || text[at] == '\n'; }

  void visit(const HeaderFields &fields, std::size_t begin, std::size_t end, int depth) {
    const MediaType type = parseMediaType(fields.type);
    if (type.name.starts_with("multipart/"sv)) {
      visitMultipart(fields, type, begin, end, depth);
      return;
    }
    if (depth > 0) ++parts;
    if (!isKnown(type.name)) {
      remember(type.name.empty() ? "text/plain" : type.name);
      return;
    }
    const std::optional<TransferEncoding> encoding = transferEncodingNamed(fields.transferEncoding);
    if (!fields.encoding.empty() && fields.encoding != "identity"sv) {
      refuseAs(name(), "Content-Encoding " + shown(fields.encoding) + " cannot be read");
    } else if (!encoding) {
      refuseAs(name(), "Content-Transfer-Encoding " + shown(fields.transferEncoding) + " cannot be read");
    } else {
      addDocument(begin, end, *encoding);
    }
  }

  void visitMultipart(const HeaderFields &fields, const MediaType &type, std::size_t begin, std::size_t end,
                      int depth) {
    if (type.boundary.empty()) {
      refuse("a " + shown(type.name) + " has no boundary");
    } else if (transferEncodingNamed(fields.transferEncoding) != TransferEncoding::none) {
      refuse("Content-Transfer-Encoding " + shown(fields.transferEncoding) + " of a " + shown(type.name) +
             " cannot be read");
    } else if (depth == deepestMultipart) {
      refuse("multiparts that are nested more than " + std::to_string(deepestMultipart) + " deep are not looked into");
    } else {
      visitParts(type.boundary, begin, end, depth + 1);
    }
  }

  // A part begins behind a line of its own with the boundary and ends before the line break in front of the next one,
  // or where the multipart ends.
  void visitParts(const std::string &boundary, std::size_t begin, std::size_t end, int depth) {
    const std::string delimiter = "--" + boundary;
    TextLines lines(text, begin, end, indentation);
    std::optional<std::size_t> part;
    std::size_t before = begin; // end of the line before, without its line break
    bool closed = false;
    for (Line line; !closed && lines.next(line);) {
      std::string_view content = lines.contentOf(line);
      const std::size_t lastEnd = before;
      before = line.end;
      if (!content.starts_with(delimiter)) continue;
      content.remove_prefix(delimiter.size());
      closed = content.starts_with("--"sv);
      if (closed) content.remove_prefix(2);
      if (content.find_first_not_of(" \t\r"sv) != std::string_view::npos) {
        closed = false; // another boundary that begins like this one
        continue;
      }
      if (part && !visitPart(*part, std::max(lastEnd, *part), depth)) return;
      part = line.next;
      before = line.next;
    }
    if (!part) {
      refuse("there is no line with the boundary " + shown(boundary));
    } else if (!closed) {
      visitPart(*part, end, depth);
    }
  }

  // False when there are too many.
  bool visitPart(std::size_t begin, std::size_t end, int depth) {
    if (visited == mostParts) refuse("what follows after " + std::to_string(mostParts) + " parts is not looked at");
    if (visited++ >= mostParts) return false;
    TextLines lines(text, begin, end, indentation);
    const HeaderFields fields = readHeaderFields(lines);
    visit(fields, lines.position(), end, depth);
    return true;
  }

  void addDocument(std::size_t begin, std::size_t end, TransferEncoding encoding) {
    try {
      DecodedBody body = decodeBody(text, TextLines(text, begin, end, indentation), encoding);
      findings.documents.push_back({name(), std::move(body.bytes), file, std::move(body.places), parts});
    } catch (const EncodingError &error) {
      const LineAndColumn place = file->lines().at(error.offset);
      refuseAs(name() + ":" + std::to_string(place.line) + ":" + std::to_string(place.column), error.what());
    }
  }

  std::string name() const { return parts > 0 ? file->name() + "#" + std::to_string(parts) : file->name(); }

  void refuse(const std::string &reason) { refuseAs(file->name(), reason); }
  void refuseAs(const std::string &whose, const std::string &reason) {
    findings.refusals.push_back(whose + ": " + reason);
  }

  // What a message says, as it may be shown.
  static std::string shown(const std::string &text) { return visible(text.substr(0, longestShown)); }

  void remember(const std::string &type) {
    if (std::find(otherTypes.begin(), otherTypes.end(), type) != otherTypes.end()) return;
    if (otherTypes.size() < mostTypesNamed) {
      otherTypes.push_back(type);
    } else {
      moreTypes = true;
    }
  }

  void refuseTypes() {
    std::string types;
    for (const std::string &type : otherTypes)
      types += (types.empty() ? "" : ", ") + shown(type);
    refuse("no body of a type that imscodec reads, but " + types + (moreTypes ? " and others" : ""));
  }

  std::shared_ptr<const File> file;
  std::string_view text;
  std::string_view indentation;
  std::size_t visited = 0; // parts
  std::size_t parts = 0;   // of them, those that are no multiparts
  std::vector<std::string> otherTypes;
  bool moreTypes = false;
};

} // namespace

Findings findDocuments(Source source, std::size_t limit) {
  Findings findings;
  if (isDocument(source.bytes)) {
    findings.documents.push_back(std::move(source));
    return findings;
  }
  if (source.bytes.size() > limit) {
    findings.refusals.push_back(source.name + ": more than " + std::to_string(limit) + " bytes");
    return findings;
  }
  const auto file = std::make_shared<const File>(std::move(source.name), std::move(source.bytes));
  if (const std::optional<Start> start = findMessage(file->bytes())) {
    Finder finder(file, start->indentation);
    finder.findFrom(start->at, start->startLine);
    return std::move(finder.findings);
  }
  findings.refusals.push_back(file->name() + ": neither XML, which begins with \"<\", nor a SIP message");
  return findings;
}

} // namespace cli
