// A chat client on the loopback interface, for its composing indications: does what the lines of its standard input
// say, and prints a line for what happens.
//
//   client PORT FOLDER      where its messages go on 127.0.0.1, and where it keeps its state
//
//   compose URI   the user types          ready PORT      once, where it takes messages
//   send URI      the user has typed      composing URI   somebody types
//   tell                                  stopped URI     and does so no longer
//                                         message URI     and has sent it
//                                         told            all that happened before was printed
//
// Goes when its input ends.
#include <linphone/core.h>

#include <cstdio>
#include <iostream>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace {

// Nothing but what lies on this machine, and waits that a test can sit out.
constexpr char configuration[] = R"([sip]
bind_address=127.0.0.1
sip_port=-1
sip_tcp_port=0
sip_tls_port=0
use_ipv6=0
composing_idle_timeout=3
composing_refresh_timeout=2
composing_remote_refresh_timeout=5
[net]
dns_srv_enabled=0
dns_search_enabled=0
)";

void print(const char *what, LinphoneChatRoom *room) {
  char *uri = linphone_address_as_string_uri_only(linphone_chat_room_get_peer_address(room));
  std::printf("%s %s\n", what, uri);
  bctbx_free(uri);
}

void composingReceived(LinphoneCore *, LinphoneChatRoom *room) {
  print(linphone_chat_room_is_remote_composing(room) ? "composing" : "stopped", room);
}

void messageReceived(LinphoneCore *, LinphoneChatRoom *room, LinphoneChatMessage *) { print("message", room); }

class Client {
public:
  Client(const std::string &port, const std::string &place) : factory(linphone_factory_get()) {
    const std::string folder = place + "/"; // to which it appends names of files
    linphone_factory_set_config_dir(factory, folder.c_str());
    linphone_factory_set_data_dir(factory, folder.c_str());
    linphone_factory_set_download_dir(factory, folder.c_str());
    LinphoneConfig *config = linphone_factory_create_config_from_string(factory, configuration);
    core = linphone_factory_create_core_with_config_3(factory, config, nullptr);
    linphone_config_unref(config);

    LinphoneCoreCbs *callbacks = linphone_factory_create_core_cbs(factory);
    linphone_core_cbs_set_is_composing_received(callbacks, composingReceived);
    linphone_core_cbs_set_message_received(callbacks, messageReceived);
    linphone_core_add_callbacks(core, callbacks);
    linphone_core_cbs_unref(callbacks);

    linphone_core_set_network_reachable(core, TRUE); // it need not look for a network
    linphone_core_start(core);
    self = linphone_factory_create_address(factory, "sip:linphone@home.example");
    sendAllTo("sip:127.0.0.1:" + port + ";transport=udp");
  }

  ~Client() {
    linphone_address_unref(self);
    linphone_core_stop(core);
    linphone_core_unref(core);
  }
  Client(const Client &) = delete;
  Client &operator=(const Client &) = delete;

  void work() { linphone_core_iterate(core); }

  int port() const {
    LinphoneTransports *used = linphone_core_get_transports_used(core);
    const int udp = linphone_transports_get_udp_port(used);
    linphone_transports_unref(used);
    return udp;
  }

  bool obey(const std::string &line) {
    const std::size_t space = line.find(' ');
    const std::string command = line.substr(0, space);
    if (command == "tell") return std::puts("told") >= 0;
    LinphoneChatRoom *room = space == line.npos ? nullptr : roomWith(line.c_str() + space + 1);
    if (!room) return false;
    if (command == "compose") {
      linphone_chat_room_compose(room);
    } else if (command == "send") {
      LinphoneChatMessage *message = linphone_chat_room_create_message_from_utf8(room, "Good evening.");
      linphone_chat_message_send(message);
      linphone_chat_message_unref(message);
    }
    linphone_chat_room_unref(room);
    return command == "compose" || command == "send";
  }

private:
  // A room knows its peer without a port, so that requests need a route.
  void sendAllTo(const std::string &uri) {
    LinphoneAddress *server = linphone_factory_create_address(factory, uri.c_str());
    bctbx_list_t *routes = bctbx_list_append(nullptr, server);
    LinphoneAccountParams *params = linphone_account_params_new(core);
    linphone_account_params_set_identity_address(params, self);
    linphone_account_params_set_server_address(params, server);
    linphone_account_params_set_routes_addresses(params, routes);
    linphone_account_params_set_register_enabled(params, FALSE);
    LinphoneAccount *account = linphone_core_create_account(core, params);
    linphone_core_add_account(core, account);
    linphone_core_set_default_account(core, account);
    linphone_account_unref(account);
    linphone_account_params_unref(params);
    bctbx_list_free(routes);
    linphone_address_unref(server);
  }

  LinphoneChatRoom *roomWith(const char *uri) {
    LinphoneAddress *peer = linphone_factory_create_address(factory, uri);
    if (!peer) return nullptr;
    bctbx_list_t *peers = bctbx_list_append(nullptr, peer);
    LinphoneChatRoomParams *params = linphone_core_create_default_chat_room_params(core);
    linphone_chat_room_params_set_backend(params, LinphoneChatRoomBackendBasic);
    LinphoneChatRoom *room = linphone_core_create_chat_room_6(core, params, self, peers);
    linphone_chat_room_params_unref(params);
    bctbx_list_free(peers);
    linphone_address_unref(peer);
    return room;
  }

  LinphoneFactory *factory;
  LinphoneCore *core = nullptr;
  LinphoneAddress *self = nullptr;
};

} // namespace

int main(int argc, char **argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s PORT FOLDER\n", argv[0]);
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  linphone_logging_service_set_log_level(linphone_logging_service_get(), LinphoneLogLevelFatal);
  std::ios::sync_with_stdio(false); // so that the stream knows the lines that it has read ahead
  Client client(argv[1], argv[2]);
  if (client.port() <= 0) {
    std::fprintf(stderr, "there is no port for messages\n");
    return 1;
  }
  std::printf("ready %d\n", client.port());
  for (std::string line;;) {
    client.work();
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (std::cin.rdbuf()->in_avail() <= 0 && poll(&input, 1, 20) <= 0) continue;
    if (!std::getline(std::cin, line)) return 0;
    if (!client.obey(line)) {
      std::fprintf(stderr, "cannot do this: %s\n", line.c_str());
      return 1;
    }
  }
}
