#include "Sipp.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace carrier {

namespace {

std::string contentOf(const std::filesystem::path &name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

Sipp::Sipp(const std::filesystem::path &given, Transport transport, const std::vector<std::string> &arguments)
    : folder(given) {
  std::vector<std::string> words = {"sipp",
                                    "-i",
                                    "127.0.0.1",
                                    "-ci",
                                    "127.0.0.1",
                                    "-mi",
                                    "127.0.0.1",
                                    "-nostdin",
                                    "-default_behaviors",
                                    "all,-bye",
                                    "-trace_err",
                                    "-error_file",
                                    "errors",
                                    "-recv_timeout",
                                    "10000",
                                    "-t",
                                    transport == Transport::udp ? "u1" : "t1"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char *> pointers;
  for (std::string &word : words)
    pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const std::string output = (folder / "output").string();

  process = fork();
  if (process < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (process > 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (file >= 0 && dup2(file, STDOUT_FILENO) >= 0 && dup2(file, STDERR_FILENO) >= 0 && chdir(folder.c_str()) == 0)
    execvp(pointers[0], pointers.data());
  _exit(127);
}

Sipp::~Sipp() {
  if (!isRunning()) return;
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

bool Sipp::isRunning() {
  if (process < 0) return false;
  int status = 0;
  if (waitpid(process, &status, WNOHANG) == 0) return true;
  process = -1;
  exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return false;
}

bool Sipp::ends(std::chrono::milliseconds patience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (isRunning()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

std::string Sipp::said() const {
  constexpr std::size_t enough = 4000;
  const std::string output = contentOf(folder / "output");
  return contentOf(folder / "errors").substr(0, enough) + "\n" +
         output.substr(output.size() > enough ? output.size() - enough : 0);
}

} // namespace carrier
