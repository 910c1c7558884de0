// What every rival that decodes into records, or encodes from them, is made of. A rival is checked before it may be
// measured: what it reads must be what our decoder reads, and what it writes our decoder must read as the same.
#pragma once

#include "records.h"
#include "workloads.h"

#include <stdexcept>
#include <string>

namespace bench {

// The record of a document that our decoder reads, as a record of the rivals. Its texts are in storage.
template <class Record>
void readByCodec(const Document &document, std::string_view body, Arena &storage, Record &record);

// Calls with an empty record of the type that belongs to a document.
template <class Call> std::unique_ptr<Workload> withRecordOf(const Document &document, Call call) {
  switch (document.name.front()) {
  case 'a': return call(IsComposing());
  case 'b':
  case 'd': return call(DialogInfo());
  case 'c': return call(RuleSet());
  case 'e': return call(PocSettings());
  case 'f': return call(FilterSet());
  case 'g': return call(Alternative());
  case 'h': return call(DebugInfo());
  default: throw std::logic_error("a document without a record");
  }
}

template <class Record> void requireSame(const Document &document, const Record &found) {
  Arena storage;
  Record expected;
  readByCodec(document, document.body, storage, expected);
  if (!(found == expected)) throw std::runtime_error("the rival does not read what the codec reads");
}

// Parser has read(body, storage, record), which throws for what it does not expect.
template <class Parser, class Record> class RivalDecode final : public Workload {
public:
  explicit RivalDecode(const Document &measured) : document(measured) {
    run();
    requireSame(document, record);
  }
  void run() override {
    storage.clear();
    record = Record();
    parser.read(document.body, storage, record);
  }
  size_t bytes() const override { return document.body.size(); }

private:
  const Document &document;
  Arena storage;
  Parser parser;
  Record record;
};

template <class Parser> std::unique_ptr<Workload> makeRivalDecode(const Document &document) {
  return withRecordOf(
      document, [&]<class Record>(const Record &) { return std::make_unique<RivalDecode<Parser, Record>>(document); });
}

// Writer has write(record), whose result is what was written, as a view of storage that it uses again.
template <class Writer, class Record> class RivalEncode final : public Workload {
public:
  explicit RivalEncode(const Document &measured) {
    readByCodec(measured, measured.body, storage, record);
    run();
    Arena again;
    Record written;
    readByCodec(measured, output, again, written);
    if (!(written == record)) throw std::runtime_error("the rival does not write what it was given");
  }
  void run() override { output = writer.write(record); }
  size_t bytes() const override { return output.size(); }

private:
  Arena storage;
  Record record;
  Writer writer;
  std::string_view output;
};

template <class Writer> std::unique_ptr<Workload> makeRivalEncode(const Document &document) {
  return withRecordOf(
      document, [&]<class Record>(const Record &) { return std::make_unique<RivalEncode<Writer, Record>>(document); });
}

// ---- Values ---------------------------------------------------------------------------------------------------

[[noreturn]] inline void refuse(const char *what) { throw std::runtime_error(what); }

inline bool is(const char *name, const char *expected) { return std::strcmp(name, expected) == 0; }

template <class Number> Number numberFrom(Text text);
extern template uint32_t numberFrom<uint32_t>(Text);
extern template uint16_t numberFrom<uint16_t>(Text);
extern template double numberFrom<double>(Text);
bool boolFrom(Text text);
Text bytesFrom(Text digits, Arena &storage);

// The texts of an enumeration, in the order of its codes.
template <class Enum> struct TextsOf;
template <> struct TextsOf<StateEvent> {
  static constexpr Text texts[] = {"cancelled", "rejected", "replaced", "local-bye", "remote-bye", "error", "timeout"};
};
template <> struct TextsOf<Direction> { static constexpr Text texts[] = {"initiator", "recipient"}; };
template <> struct TextsOf<Extent> { static constexpr Text texts[] = {"full", "partial"}; };
template <> struct TextsOf<AnswerMode> { static constexpr Text texts[] = {"automatic", "manual"}; };
template <> struct TextsOf<SelectionType> { static constexpr Text texts[] = {"xpath", "namespace"}; };
template <> struct TextsOf<StopReason> { static constexpr Text texts[] = {"dialog_established", "session_end"}; };
template <> struct TextsOf<Depth> { static constexpr Text texts[] = {"maximum", "minimum"}; };

template <class Enum> Enum codeFrom(Text text) {
  uint8_t code = 0;
  for (Text candidate : TextsOf<Enum>::texts) {
    if (candidate == text) return static_cast<Enum>(code);
    ++code;
  }
  refuse("no value of the enumeration");
}
template <class Enum> Text textOf(Enum code) { return TextsOf<Enum>::texts[static_cast<size_t>(code)]; }

} // namespace bench
