// Every document of the library, read and written through the C++ layer.
#include "Catalogue.h"
#include "bodies.h"
#include "context.h"
#include "drivers.h"
#include "imscodec.hpp"

#include <gtest/gtest.h>
#include <string>

using namespace imscodec;

namespace {

struct Case {
  const char *name; // as the drivers of the C interface have it
  void (*run)(const std::string &written);
};

// What the layer writes is what the C interface writes, and it gives back all that it takes.
template <class T, const char *body> void run(const std::string &written) {
  Context context;
  const support::HeapBalance balance(context.get());
  auto read = context.decode<T>(body);
  ASSERT_TRUE(read) << read.statusText();
  EXPECT_TRUE(read.errors().empty());

  const auto encoded = context.encode<T>(*read);
  ASSERT_TRUE(encoded) << encoded.statusText();
  EXPECT_EQ(written, *encoded);

  const std::string again(*encoded);
  const auto same = context.decodeInPlace<T>(again.c_str(), again.size());
  ASSERT_TRUE(same) << same.statusText();
  const auto encodedAgain = context.encode<T>(*same);
  ASSERT_TRUE(encodedAgain);
  EXPECT_EQ(again, *encodedAgain);
}

// A document of a record has a validator, one of a single value has none.
template <class T, const char *body> void check(const std::string &written) {
  run<T, body>(written);
  Context context;
  const int expected = requires { typename T::Raw; }
  ? STATUS_OK : STATUS_NOT_SUPPORTED;
  EXPECT_EQ(expected, context.validate<T>(body).status());
}

#define CASE(type, element)                                                                                            \
  { #element, check < type, bodyOf_##element> }

constexpr Case cases[] = {
    CASE(iscomposing::isComposing, tns_isComposing),
    CASE(dialoginfo::dialog_info, tns_dialog_info),
    CASE(dialoginfo::dialog, tns_dialog),
    CASE(dialoginfo::state, tns_state),
    CASE(ruleset::ruleset, cp_ruleset),
    CASE(filterset::filter_set, filter_set),
    CASE(pocsettings::poc_settings, poc_settings),
    CASE(imcn::ims_3gpp, ims_3gpp),
    CASE(imcn::type, type),
    CASE(imcn::action, action),
    CASE(debugevent::debuginfo, tns_debuginfo),
    CASE(debugevent::debugconfig, tns_debugconfig),
    CASE(debugevent::session, tns_session),
    CASE(debugevent::start_trigger, tns_start_trigger),
    CASE(debugevent::stop_trigger, tns_stop_trigger),
    CASE(debugevent::control, tns_control),
    CASE(debugevent::time, tns_time),
    CASE(debugevent::from, tns_from),
    CASE(debugevent::to, tns_to),
    CASE(debugevent::method, tns_method),
    CASE(debugevent::icsi, tns_icsi),
    CASE(debugevent::iari, tns_iari),
    CASE(debugevent::debug_id, tns_debug_id),
    CASE(debugevent::time_period, tns_time_period),
    CASE(debugevent::reason, tns_reason),
    CASE(debugevent::interface, tns_interface),
    CASE(debugevent::depth, tns_depth),
};

std::string writtenByC(std::string_view name) {
  for (const auto drivers : {library::imsDrivers(), library::debugDrivers()})
    for (const library::Driver &driver : drivers)
      if (driver.name == name) {
        const support::Context ctx;
        return driver.run(ctx).output;
      }
  ADD_FAILURE() << "no driver for " << name;
  return {};
}

TEST(CppDocuments, AreReadAndWrittenAsByC) {
  const ims::DocumentRange all = ims::allDocuments();
  EXPECT_EQ(std::size(cases), static_cast<size_t>(all.end() - all.begin()));
  for (const Case &each : cases) {
    SCOPED_TRACE(each.name);
    each.run(writtenByC(each.name));
  }
}

TEST(CppDocuments, OfOneValueGiveThatValue) {
  Context context;
  EXPECT_EQ("sip:a@example.net", **context.decode<debugevent::from>(bodyOf_tns_from));
  const auto bytes = context.decode<debugevent::debug_id>(bodyOf_tns_debug_id);
  ASSERT_TRUE(bytes);
  ASSERT_EQ(3u, (**bytes).size());
  EXPECT_EQ(0x7E, (**bytes)[2]);
  EXPECT_EQ(debugevent::depth::minimum, *context.decode<debugevent::depth>(bodyOf_tns_depth));
}

TEST(CppDocuments, OfOneValueAreWrittenFromIt) {
  Context context;
  const auto ends = [](std::string_view text, std::string_view end) { return text.ends_with(end); };
  EXPECT_PRED2(ends, *context.encode<debugevent::method>("INVITE"), ">INVITE</method>");
  EXPECT_PRED2(ends, *context.encode<debugevent::reason>(debugevent::reason::session_end), ">session_end</reason>");
  const std::uint8_t bytes[] = {0xAB, 0x01};
  EXPECT_PRED2(ends, *context.encode<debugevent::debug_id>(bytes), "01</debug-id>");
  EXPECT_EQ(STATUS_INVALID_UTF8, context.encode<imcn::type>(std::string_view("a\0b", 3)).status());
}

} // namespace
