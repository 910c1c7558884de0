// Workloads of code that is generated from a schema. A binding belongs to one kind of document:
//   Record                   the record of the rivals that it is compared as
//   decode(body)             into the objects of the generated code, which stay until the next call
//   encode()                 from those objects; the result is what was written
//   convert(storage, record)
#pragma once

#include "rival.h"

namespace bench {

template <class Binding> class BoundDecode final : public Workload {
public:
  explicit BoundDecode(const Document &measured) : document(measured) {
    run();
    Arena storage;
    typename Binding::Record record;
    binding.convert(storage, record);
    requireSame(document, record);
  }
  void run() override { binding.decode(document.body); }
  size_t bytes() const override { return document.body.size(); }

private:
  const Document &document;
  Binding binding;
};

template <class Binding> class BoundEncode final : public Workload {
public:
  explicit BoundEncode(const Document &measured) {
    binding.decode(measured.body);
    run();
    Arena storage;
    typename Binding::Record record;
    readByCodec(measured, output, storage, record);
    requireSame(measured, record);
  }
  void run() override { output = binding.encode(); }
  size_t bytes() const override { return output.size(); }

private:
  Binding binding;
  std::string_view output;
};

} // namespace bench
