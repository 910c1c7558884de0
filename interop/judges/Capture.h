// SIP messages in a file as if they had been captured on their way.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace judges {

// Each message is a datagram from and to the port of SIP. False if the file cannot be written.
bool writeCapture(const std::filesystem::path &name, const std::vector<std::string> &messages);

} // namespace judges
