#include "indent.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace cli {

namespace {

enum class Piece {
  startTag,
  emptyTag,
  endTag,
  text,
  other // declaration, comment, processing instruction
};

struct Token {
  Piece piece;
  std::string_view text;
  bool fixed = false; // of a start tag: what is inside stays as it is
};

// The end of a tag: a ">" outside of attribute values.
std::size_t endOfTag(std::string_view text) {
  char quote = '\0';
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (quote != '\0') {
      if (c == quote) quote = '\0';
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return at + 1;
    }
  }
  return std::string_view::npos;
}

std::size_t endAfter(std::string_view text, std::string_view terminator) {
  const std::size_t at = text.find(terminator);
  return at == std::string_view::npos ? at : at + terminator.size();
}

// The first token of what is left of a document; nothing if it has no end.
std::optional<Token> firstToken(std::string_view text) {
  Piece piece = Piece::text;
  std::size_t length = text.find('<');
  if (length != 0) return Token{piece, text.substr(0, length)};
  if (text.starts_with("<![CDATA[")) {
    length = endAfter(text, "]]>");
  } else if (text.starts_with("<!--")) {
    piece = Piece::other;
    length = endAfter(text, "-->");
  } else if (text.starts_with("<?")) {
    piece = Piece::other;
    length = endAfter(text, "?>");
  } else {
    piece = text.starts_with("</") ? Piece::endTag : Piece::startTag;
    length = endOfTag(text);
    if (length != std::string_view::npos && length >= 2 && text[length - 2] == '/') piece = Piece::emptyTag;
  }
  if (length == std::string_view::npos) return std::nullopt;
  return Token{piece, text.substr(0, length)};
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

// Splits a document, and marks the elements that hold text. Nothing if its tags do not match up.
std::optional<std::vector<Token>> split(std::string_view document) {
  std::vector<Token> tokens;
  std::vector<std::size_t> open; // start tags
  while (!document.empty()) {
    std::optional<Token> token = firstToken(document);
    if (!token) return std::nullopt;
    document.remove_prefix(token->text.size());
    switch (token->piece) {
    case Piece::startTag:
      token->fixed =
          token->text.find("xml:space") != std::string_view::npos || (!open.empty() && tokens[open.back()].fixed);
      open.push_back(tokens.size());
      break;
    case Piece::endTag:
      if (open.empty()) return std::nullopt;
      open.pop_back();
      break;
    case Piece::text:
      if (!open.empty()) {
        tokens[open.back()].fixed = true;
      } else if (isBlank(token->text)) {
        continue; // between the root and what stands around it
      } else {
        return std::nullopt;
      }
      break;
    case Piece::emptyTag:
    case Piece::other: break;
    }
    tokens.push_back(*token);
  }
  if (!open.empty()) return std::nullopt;
  return tokens;
}

class Writer {
public:
  void write(const Token &token, const Token *next) {
    if (token.piece == Piece::endTag) {
      const bool wasFixed = fixed.back();
      fixed.pop_back();
      if (!wasFixed) newLine();
    } else if (!isInside()) {
      newLine();
    }
    result += token.text;
    if (token.piece == Piece::startTag) fixed.push_back(token.fixed || (next && next->piece == Piece::endTag));
  }

  std::string finish() { return result + "\n"; }

private:
  // Whether the innermost open element takes no white space.
  bool isInside() const { return !fixed.empty() && fixed.back(); }

  void newLine() {
    if (!result.empty()) result += '\n';
    result.append(2 * fixed.size(), ' ');
  }

  std::string result;
  std::vector<bool> fixed; // of the open elements
};

} // namespace

std::string indent(const std::string &document) {
  const std::optional<std::vector<Token>> tokens = split(document);
  if (!tokens) return document;
  Writer writer;
  for (std::size_t i = 0; i < tokens->size(); ++i)
    writer.write((*tokens)[i], i + 1 < tokens->size() ? &(*tokens)[i + 1] : nullptr);
  return writer.finish();
}

} // namespace cli
