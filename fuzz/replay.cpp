// Runs a fuzzer's function on files and on the files of folders, without the fuzzing library.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

int runs = 0;

void run(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
  // A failing execution names its input.
  std::fprintf(stderr, "%s\n", path.c_str());
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
  ++runs;
}

} // namespace

int main(int argc, char **argv) {
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::is_directory(argv[i])) {
      run(argv[i]);
      continue;
    }
    for (const auto &entry : std::filesystem::recursive_directory_iterator(argv[i]))
      if (entry.is_regular_file()) run(entry.path());
  }
  std::printf("%d inputs\n", runs);
  return runs > 0 ? 0 : 1;
}
