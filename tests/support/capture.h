// What is printed to standard output.
#pragma once

#include <functional>
#include <string>

namespace support {

// Everything that print writes to the C library's stdout stream or to the file descriptor beneath it.
std::string captureStdout(const std::function<void()> &print);

} // namespace support
