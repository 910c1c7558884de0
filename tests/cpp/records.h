// The documents that are records, by their types in the C++ layer.
#pragma once

#include "bodies.h"
#include "imscodec.hpp"

#include <gtest/gtest.h>

namespace records {

// A context of the C++ layer over one that somebody else frees.
class Borrowed {
public:
  explicit Borrowed(RuntimeContext *ctx) : context(ctx) {}
  ~Borrowed() { static_cast<void>(context.release()); }
  Borrowed(const Borrowed &) = delete;
  Borrowed &operator=(const Borrowed &) = delete;

  imscodec::Context context;
};

// Calls test<View>(root, body) for each of them.
template <class Test> void forEachDocument(const Test &test) {
  using namespace imscodec;
  const auto run = [&]<class View>(const char *root, const char *body) {
    SCOPED_TRACE(root);
    test.template operator()<View>(root, body);
  };
  run.template operator()<iscomposing::isComposing>("isComposing", bodyOf_tns_isComposing);
  run.template operator()<dialoginfo::dialog_info>("dialog-info", bodyOf_tns_dialog_info);
  run.template operator()<dialoginfo::dialog>("dialog", bodyOf_tns_dialog);
  run.template operator()<dialoginfo::state>("state", bodyOf_tns_state);
  run.template operator()<ruleset::ruleset>("ruleset", bodyOf_cp_ruleset);
  run.template operator()<filterset::filter_set>("filter-set", bodyOf_filter_set);
  run.template operator()<pocsettings::poc_settings>("poc-settings", bodyOf_poc_settings);
  run.template operator()<imcn::ims_3gpp>("ims-3gpp", bodyOf_ims_3gpp);
  run.template operator()<debugevent::debuginfo>("debuginfo", bodyOf_tns_debuginfo);
  run.template operator()<debugevent::debugconfig>("debugconfig", bodyOf_tns_debugconfig);
  run.template operator()<debugevent::session>("session", bodyOf_tns_session);
  run.template operator()<debugevent::start_trigger>("start-trigger", bodyOf_tns_start_trigger);
  run.template operator()<debugevent::stop_trigger>("stop-trigger", bodyOf_tns_stop_trigger);
  run.template operator()<debugevent::control>("control", bodyOf_tns_control);
}

} // namespace records
