// Bodies in files.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace filters {

inline std::string contents(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The files of a folder whose names begin so, in order.
inline std::vector<std::filesystem::path> filesIn(const std::filesystem::path &folder, const std::string &beginning) {
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file() && entry.path().filename().string().starts_with(beginning))
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

} // namespace filters
