#include "Capture.h"

#include <cstdint>
#include <fstream>

namespace judges {

namespace {

// Numbers of the file are in the order that its first number tells, here the least byte first; those of packets are
// the other way round.
void addLittle(std::string &bytes, std::uint32_t number) {
  for (unsigned shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(number >> shift & 0xff);
}

void addBig(std::string &bytes, std::size_t number) {
  bytes += static_cast<char>(number >> 8 & 0xff);
  bytes += static_cast<char>(number & 0xff);
}

constexpr std::uint32_t port = 5060;
constexpr std::size_t udpHeader = 8;
constexpr std::size_t ipHeader = 20;

std::string packetOf(const std::string &message) {
  std::string packet("\x45\x00", 2); // version 4, a header of five words
  addBig(packet, ipHeader + udpHeader + message.size());
  packet.append("\x00\x00\x40\x00\x40\x11", 6); // not in pieces; lives 64 hops; holds UDP
  addBig(packet, 0);                            // no checksum
  packet.append("\x7f\x00\x00\x01\x7f\x00\x00\x01", 8);
  addBig(packet, port);
  addBig(packet, port);
  addBig(packet, udpHeader + message.size());
  addBig(packet, 0); // no checksum
  return packet + message;
}

} // namespace

bool writeCapture(const std::filesystem::path &name, const std::vector<std::string> &messages) {
  constexpr std::uint32_t magic = 0xa1b2c3d4;
  constexpr std::uint32_t versions = 2 | 4 << 16;
  constexpr std::uint32_t longest = 262144;
  constexpr std::uint32_t rawIp = 101;
  std::string bytes;
  for (const std::uint32_t number : {magic, versions, 0u, 0u, longest, rawIp})
    addLittle(bytes, number);
  std::uint32_t second = 0;
  for (const std::string &message : messages) {
    const std::string packet = packetOf(message);
    const auto size = static_cast<std::uint32_t>(packet.size());
    for (const std::uint32_t number : {second++, 0u, size, size})
      addLittle(bytes, number);
    bytes += packet;
  }
  std::ofstream file(name, std::ios::binary);
  file << bytes;
  return static_cast<bool>(file.flush());
}

} // namespace judges
