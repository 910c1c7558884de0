// What the tests of the records of dialog state, and of writing them, share.
#pragma once

#include "builder.h"
#include "context.h"
#include "errors.h"
#include "output.h"
#include "parts.h"
#include "types.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace dialogs {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::allBits;
using support::bytesOf;
using support::Functions;
using support::Part;
using support::Parts;
using support::patterned;
using support::present;
using support::printed;
using support::Record;
using support::replaced;
using support::setPresence;

template <typename Test> void forEachDocument(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Document<T>::root);
    test.template operator()<T>();
  };
  run.template operator()<tns__dialog_info>();
  run.template operator()<tns__dialog>();
  run.template operator()<tns__state>();
}

// Puts members into records.
class Builder : public support::Builder {
public:
  using support::Builder::Builder;

  void declare(RtxNsDeclList &list, const char *prefix, const char *uri);
  void hop(tns__dialog_route_set &record, std::string_view uri, bool cdata = false) {
    addText(record.tns_hop, uri, cdata);
  }
  void param(tns_participant_target &record, std::string_view name, std::string_view value);
  tns__dialog *dialog(tns__dialog_info &record); // an initialised one; null if there is no storage

  // Every member present, each with a value of its own.
  void complete(tns__state &record);
  void complete(tns__dialog_replaces &record);
  void complete(tns_nameaddr &record);
  void complete(tns__dialog_route_set &record);
  void complete(tns_participant_target_param &record);
  void complete(tns_participant_target &record);
  void complete(tns_sessd &record);
  void complete(tns_participant &record);
  void complete(tns__dialog &record);
  void complete(tns__dialog_info &record); // of two dialogs, the second with nothing but an id
};

template <typename T> struct CompleteRecord : Record<T> {
  explicit CompleteRecord(RuntimeContext *context) : Record<T>(context) { Builder(context).complete(**this); }
};

// What the document function writes, without the XML declaration.
template <typename T> std::string encodedDocument(RuntimeContext *ctx, const T *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [=](RuntimeContext *c) { return Document<T>::encode(c, record); }));
}

} // namespace dialogs
