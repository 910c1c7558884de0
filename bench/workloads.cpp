#include "workloads.h"

#include "IsComposing/QxXmlIsComposing.h"
#include "bodies.h"
#include "rtx.h"

#include <stdexcept>
#include <string>

namespace bench {

namespace {

constexpr uint32_t refresh = 1200; // of the body

void require(bool condition, const char *what) {
  if (!condition) throw std::runtime_error(what);
}

class ContextWorkload : public Workload {
public:
  ContextWorkload() : context(rtxContextCreate(nullptr)) { require(context != nullptr, "no context"); }
  ~ContextWorkload() override { rtxContextFree(context); }

  size_t bytes() const override { return composingBody.size(); }

  unsigned long long systemCalls() const override {
    RtxHeapStats stats = {};
    rtxHeapStats(context, &stats);
    return stats.systemCalls;
  }

protected:
  void setInput() { rtxSetInputZ(context, composingBody.data(), composingBody.size()); }

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
  Reader() {
    run();
    require(elements == 4, "the reader did not see every element");
  }
  void run() override {
    setInput();
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
  void run() override {
    setInput();
    tns__isComposing record;
    require(QxXmlD_tns_isComposing(context, &record) == 0 && record.tns_refresh == refresh, "decoding failed");
    QxMemFree_tns__isComposing(context, &record);
  }
};

class Validate : public ContextWorkload {
public:
  void run() override {
    setInput();
    require(QxXmlV_tns_isComposing(context) == 0, "validating failed");
  }
};

class Encode : public ContextWorkload {
public:
  Encode() {
    setInput();
    require(QxXmlD_tns_isComposing(context, &record) == 0, "there is nothing to encode");
    run();
    require(length > 0, "nothing was encoded");
  }
  void run() override {
    rtxSetOutputDynamic(context);
    require(QxXmlE_tns_isComposing(context, &record) == 0, "encoding failed");
    rtxGetOutput(context, &length);
  }
  size_t bytes() const override { return length; }

private:
  tns__isComposing record;
  size_t length = 0;
};

class FirstUse : public Workload {
public:
  void run() override {
    RuntimeContext *context = rtxContextCreate(nullptr);
    require(context != nullptr, "no context");
    rtxSetInputZ(context, composingBody.data(), composingBody.size());
    tns__isComposing record;
    require(QxXmlD_tns_isComposing(context, &record) == 0, "decoding failed");
    rtxContextFree(context);
  }
  size_t bytes() const override { return composingBody.size(); }
};

} // namespace

std::unique_ptr<Workload> makeReader() { return std::make_unique<Reader>(); }
std::unique_ptr<Workload> makeDecode() { return std::make_unique<Decode>(); }
std::unique_ptr<Workload> makeValidate() { return std::make_unique<Validate>(); }
std::unique_ptr<Workload> makeEncode() { return std::make_unique<Encode>(); }
std::unique_ptr<Workload> makeFirstUse() { return std::make_unique<FirstUse>(); }

const std::vector<NamedWorkload> &allWorkloads() {
  static const std::vector<NamedWorkload> workloads = {
      {"floor", makeFloor},       {"reader", makeReader}, {"decode", makeDecode},
      {"validate", makeValidate}, {"encode", makeEncode}, {"first-use", makeFirstUse},
  };
  return workloads;
}

} // namespace bench
