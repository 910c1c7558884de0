#include "workloads.h"

#include "resultSize.h"
#include "rtx.h"

#include <stdexcept>
#include <string>

namespace bench {

namespace {

void require(bool condition, const char *what) {
  if (!condition) throw std::runtime_error(what);
}

// Storage for any record of a document.
class Record {
public:
  explicit Record(const Document &document) : words(document.recordSize / sizeof(max_align_t) + 1) {}
  void *get() { return words.data(); }

private:
  std::vector<max_align_t> words;
};

class ContextWorkload : public Workload {
public:
  explicit ContextWorkload(const Document &measured) : document(measured), context(rtxContextCreate(nullptr)) {
    require(context != nullptr, "no context");
  }
  ~ContextWorkload() override { rtxContextFree(context); }

  size_t bytes() const override { return document.body.size(); }

  Storage storage() override {
    RtxHeapStats stats = {};
    rtxHeapStats(context, &stats);
    return {.systemCalls = stats.systemCalls, .peak = stats.peakUsed, .result = 0};
  }

protected:
  // What a host does with each message that arrives.
  void takeMessage() {
    rtxContextReset(context);
    rtxSetInputZ(context, document.body.data(), document.body.size());
  }

  const Document &document;
  RuntimeContext *context;
};

// ---- Reader ---------------------------------------------------------------------------------------------------

int ignoreStart(void *count, const char *, const char *, const char *const *) {
  ++*static_cast<unsigned *>(count);
  return 0;
}
int ignoreEnd(void *, const char *, const char *) { return 0; }
int ignoreText(void *, const char *, size_t) { return 0; }

class Reader : public ContextWorkload {
public:
  explicit Reader(const Document &measured) : ContextWorkload(measured) {
    run();
    require(elements == document.elements, "the reader did not see every element");
  }
  void run() override {
    takeMessage();
    RtSaxReader *reader = rtSaxCCreateXmlReader(context, &elements, ignoreStart, ignoreEnd, ignoreText);
    require(reader && rtSaxCParse(reader) == 0, "the reader failed");
    rtSaxCReleaseReader(reader);
  }

private:
  unsigned elements = 0;
};

// ---- Exported functions ---------------------------------------------------------------------------------------

class Decode : public ContextWorkload {
public:
  explicit Decode(const Document &measured) : ContextWorkload(measured), record(measured) {}

  void run() override {
    takeMessage();
    require(document.decode(context, record.get()) == 0, "decoding failed");
  }

  Storage storage() override {
    run();
    Storage storage = ContextWorkload::storage();
    storage.peak += document.recordSize;
    storage.result = resultSize(*document.type, record.get());
    return storage;
  }

protected:
  Record record;
};

class Release : public Decode {
public:
  using Decode::Decode;

  void run() override {
    Decode::run();
    document.release(context, record.get());
  }

  Storage storage() override { return ContextWorkload::storage(); }
};

class Validate : public ContextWorkload {
public:
  using ContextWorkload::ContextWorkload;

  void run() override {
    takeMessage();
    require(document.validate(context) == 0, "validating failed");
  }
};

class Encode : public ContextWorkload {
public:
  explicit Encode(const Document &measured) : ContextWorkload(measured), record(measured) {
    takeMessage();
    require(document.decode(context, record.get()) == 0, "there is nothing to encode");
    run();
    checkOutput();
  }
  void run() override {
    rtxSetOutputDynamic(context);
    require(document.encode(context, record.get()) == 0, "encoding failed");
    output = rtxGetOutput(context, &length);
  }
  size_t bytes() const override { return length; }

private:
  // What was written must be read as a record that is written in the same way.
  void checkOutput() {
    std::string first(output, length);
    Record again(document);
    rtxSetInput(context, first.data(), first.size());
    require(document.decode(context, again.get()) == 0, "the output cannot be read");
    std::swap(record, again);
    run();
    require(first == std::string_view(output, length), "the output does not say what the record says");
  }

  Record record;
  const char *output = nullptr;
  size_t length = 0;
};

class FirstUse : public Workload {
public:
  explicit FirstUse(const Document &measured) : document(measured), record(measured) {}

  void run() override {
    RuntimeContext *context = rtxContextCreate(nullptr);
    require(context != nullptr, "no context");
    rtxSetInputZ(context, document.body.data(), document.body.size());
    require(document.decode(context, record.get()) == 0, "decoding failed");
    rtxContextFree(context);
  }
  size_t bytes() const override { return document.body.size(); }

private:
  const Document &document;
  Record record;
};

} // namespace

std::unique_ptr<Workload> makeReader(const Document &document) { return std::make_unique<Reader>(document); }
std::unique_ptr<Workload> makeDecode(const Document &document) { return std::make_unique<Decode>(document); }
std::unique_ptr<Workload> makeRelease(const Document &document) { return std::make_unique<Release>(document); }
std::unique_ptr<Workload> makeValidate(const Document &document) { return std::make_unique<Validate>(document); }
std::unique_ptr<Workload> makeEncode(const Document &document) { return std::make_unique<Encode>(document); }
std::unique_ptr<Workload> makeFirstUse(const Document &document) { return std::make_unique<FirstUse>(document); }

const std::vector<NamedWorkload> &allWorkloads() {
  static const std::vector<NamedWorkload> workloads = {
      {"floor", makeFloor},
      {"reader", makeReader},
      {"decode", makeDecode},
      {"release", makeRelease},
      {"validate", makeValidate},
      {"encode", makeEncode},
      {"first-use", makeFirstUse},
      {"host-c", makeHostInC, false, "abd"},
      {"host-cpp", makeHostInCpp, false, "abd"},
  };
  return workloads;
}

} // namespace bench
