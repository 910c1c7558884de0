// One HTTP request to a server on the loopback interface.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace agent {

struct HttpRequest {
  std::string server; // ADDRESS:PORT
  std::string method;
  std::string path;
  std::string type; // of the body; empty without one
  std::string_view body;
};

struct HttpResponse {
  int status = 0;
  std::string body;
};

// Nothing if there was no answer within some seconds, or none that can be read.
std::optional<HttpResponse> ask(const HttpRequest &request);

} // namespace agent
