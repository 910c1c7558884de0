#include "server.h"

#include "DialogStates.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace kamailio {

using namespace agent;

namespace {

std::string environment(const char *name) {
  const char *value = std::getenv(name);
  return value ? value : "";
}

std::string summary(const std::string &body) {
  if (body.empty()) return "nothing";
  imscodec::Context context;
  const auto result = context.decode<imscodec::dialoginfo::dialog_info>(body);
  const auto info = usable(result);
  if (!info) return "unreadable";
  std::string line = std::to_string(info->version()) + " " + std::string(text(info->state()));
  for (const imscodec::dialoginfo::dialog call : info->dialog())
    line.append(" ").append(call.id()).append("=").append(call.state().value());
  return line;
}

} // namespace

Settings settingsFor(Transport transport) {
  Settings settings;
  settings.server = "127.0.0.1:" + environment("SERVER_PORT");
  settings.transport = transport;
  return settings;
}

void record(const std::string &name, std::string_view text) {
  std::ofstream file(environment("SERVER_FOLDER") + "/" + name, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
}

Watcher::Watcher(const std::string &resource, Transport transport)
    : stack(settingsFor(transport)), subscription(stack, resource, "dialog", [this](const Notification &notification) {
        EXPECT_EQ(notification.state, "active");
        EXPECT_TRUE(notification.body.empty() || notification.type == "application/dialog-info+xml");
        bodies.emplace_back(notification.body);
      }) {
  EXPECT_TRUE(waitFor(1));
}

bool Watcher::waitFor(std::size_t notifications) {
  return stack.waitUntil([&] { return bodies.size() >= notifications; }, std::chrono::seconds(10));
}

Lines summaries(const Watcher &watcher) {
  Lines lines;
  for (const std::string &body : watcher.bodies)
    lines.push_back(summary(body));
  return lines;
}

} // namespace kamailio
