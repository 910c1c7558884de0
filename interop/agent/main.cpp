// A SIP agent for dialog states: publishes bodies, or subscribes and prints the states as they change.
#include "DialogStates.h"
#include "Publication.h"
#include "Subscription.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using namespace agent;
using std::chrono::seconds;

constexpr char examples[] = R"(Both end when they are interrupted, or when --for says so.

Exit status: 0 all good, 1 the server would not, or did not answer, 2 wrong usage or an unreadable file.

Examples:
  imscodec-agent watch --server 127.0.0.1:5060 sip:anna@home.example
  imscodec-agent publish --server 127.0.0.1:5060 --for 10 sip:anna@home.example early.xml confirmed.xml)";

volatile std::sig_atomic_t interrupted = 0;
void interrupt(int) { interrupted = 1; }

struct Request {
  Settings settings;
  std::string resource;
  std::string package = "dialog";
  std::vector<std::string> files;
  std::string saveTo;
  int lifetime = 0;      // seconds; 0: until interrupted
  int notifications = 0; // after which to leave; 0: never
};

// Names and texts come from anybody: what could steer a terminal is not printed as it is.
std::string printable(std::string_view text) {
  std::string shown;
  for (const char byte : text) {
    const bool control = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
    shown += control ? '?' : byte;
  }
  return shown;
}

void say(const std::string &line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout); // others wait for the line
}

int fail(const std::string &line) {
  std::fprintf(stderr, "imscodec-agent: %s\n", line.c_str());
  return 1;
}

// Waits as long as the user wants it to last. False if nothing else ended it before.
bool last(Stack &stack, const Request &request, const std::function<bool()> &done) {
  constexpr seconds ever = std::chrono::hours(24 * 365);
  return stack.waitUntil([&] { return interrupted || done(); }, request.lifetime ? seconds(request.lifetime) : ever);
}

// ---- watch --------------------------------------------------------------------------------------------------------

class Watcher {
public:
  Watcher(Stack &stack, const Request &given)
      : request(given), subscription(stack, request.resource, request.package,
                                     [this](const Notification &notification) { take(notification); }) {}

  int run(Stack &stack) {
    const bool ended = last(stack, request, [this] {
      return subscription.hasEnded() || (request.notifications && seen >= request.notifications);
    });
    if (subscription.status() >= 300)
      return fail("not subscribed: " + std::to_string(subscription.status()) + " " + subscription.phrase());
    if (subscription.status() == 0) return fail("no answer from " + request.settings.server);
    if (!ended && request.notifications)
      return fail(std::to_string(seen) + " of " + std::to_string(request.notifications) + " notifications in time");
    return 0;
  }

private:
  void take(const Notification &notification) {
    ++seen;
    const std::string state(notification.state);
    if (state != subscriptionState) {
      subscriptionState = state;
      say("subscription " + printable(state) +
          (notification.reason.empty() ? "" : ", " + printable(notification.reason)));
    }
    if (notification.body.empty()) return;
    save(notification.body);
    if (notification.type == "application/dialog-info+xml") {
      show(notification.body);
    } else {
      say("a body of " + std::to_string(notification.body.size()) + " bytes, " + printable(notification.type));
    }
  }

  void show(std::string_view body) {
    const auto result = context.decode<imscodec::dialoginfo::dialog_info>(body);
    for (const imscodec::Error error : result.errors()) {
      char line[256];
      say("bad body: " + printable(error.format(line)));
    }
    const auto info = usable(result);
    if (!info) return; // what is lost with it shows as a gap before the next
    const DialogStates::News news = states.take(*info);
    say("version " + std::to_string(info->version()) + ", " + std::string(text(info->state())) + ", " +
        printable(info->entity()) + (news == DialogStates::News::old ? ": old, ignored" : ""));
    for (const auto &[id, state] : states.changes())
      say("  " + printable(id) + " " + (state ? described(*state) : "is gone"));
    if (news == DialogStates::News::gap) {
      say("  something was missed, asking for all");
      subscription.refresh();
    }
  }

  static std::string described(const DialogState &state) {
    return printable(state.state) + (state.event.empty() ? "" : ", " + state.event) +
           (state.with.empty() ? "" : ", with " + printable(state.with));
  }

  void save(std::string_view body) const {
    if (request.saveTo.empty()) return;
    const std::string name = request.saveTo + "/" + std::to_string(seen) + ".xml";
    std::ofstream file(name, std::ios::binary);
    file.write(body.data(), static_cast<std::streamsize>(body.size()));
    file.close();
    if (!file) fail(name + " cannot be written");
  }

  const Request &request;
  imscodec::Context context;
  DialogStates states;
  std::string subscriptionState;
  int seen = 0;
  Subscription subscription; // last: it calls back
};

int watch(const Request &request) {
  Stack stack(request.settings);
  if (!stack) return fail("there is no port to be had on 127.0.0.1");
  return Watcher(stack, request).run(stack);
}

// ---- publish ------------------------------------------------------------------------------------------------------

int publish(const Request &request) {
  std::vector<std::string> bodies;
  for (const std::string &name : request.files) {
    std::ifstream file(name, std::ios::binary);
    bodies.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (!file || bodies.back().empty()) {
      fail(name + " cannot be read, or is empty");
      return 2;
    }
  }
  Stack stack(request.settings);
  if (!stack) return fail("there is no port to be had on 127.0.0.1");
  Publication publication(stack, request.resource, request.package, "application/dialog-info+xml");
  for (std::size_t index = 0; index < bodies.size(); ++index) {
    if (!publication.publish(bodies[index])) {
      return fail(publication.status() == 0 ? "no answer from " + request.settings.server
                                            : request.files[index] + ": " + std::to_string(publication.status()) + " " +
                                                  publication.phrase());
    }
    say("published " + request.files[index]);
  }
  last(stack, request, [] { return false; });
  return 0;
}

// ---- The command line ---------------------------------------------------------------------------------------------

void addCommonOptions(CLI::App &command, Request &request) {
  command.add_option("--server", request.settings.server, "Where the presence server listens")
      ->required()
      ->type_name("HOST:PORT");
  command.add_option("--user", request.settings.user, "Who we are")->type_name("URI")->capture_default_str();
  command.add_option("--for", request.lifetime, "Leave after so long; 0: when interrupted")
      ->type_name("SECONDS")
      ->check(CLI::Range(0, 86400));
  command.add_flag_function(
      "--tcp", [&request](std::int64_t) { request.settings.transport = Transport::tcp; }, "Over TCP instead of UDP");
  command.add_option("RESOURCE", request.resource, "Whose state it is, a SIP URI")->required();
}

int run(int argc, char **argv) {
  CLI::App app("Publishes and watches dialog states.", "imscodec-agent");
  app.footer(examples);
  app.require_subcommand(1);
  Request request;

  CLI::App *watchCommand = app.add_subcommand("watch", "Subscribe, and print states as they change");
  addCommonOptions(*watchCommand, request);
  watchCommand->add_option("--event", request.package, "The event package")
      ->check(CLI::IsMember({"dialog", "presence"}))
      ->capture_default_str();
  watchCommand->add_option("--save", request.saveTo, "Write the bodies there, as 1.xml, 2.xml, ...")
      ->type_name("FOLDER")
      ->check(CLI::ExistingDirectory);
  watchCommand->add_option("--notifications", request.notifications, "Leave after so many")
      ->type_name("NUMBER")
      ->check(CLI::Range(1, 1000000));

  CLI::App *publishCommand = app.add_subcommand("publish", "Publish bodies one after another, and withdraw at the end");
  addCommonOptions(*publishCommand, request);
  publishCommand->add_option("FILE", request.files, "A body of application/dialog-info+xml")->required();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  std::signal(SIGINT, interrupt);
  std::signal(SIGTERM, interrupt);
  return watchCommand->parsed() ? watch(request) : publish(request);
}

} // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception &error) {
    return fail(error.what());
  }
}
