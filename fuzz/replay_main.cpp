// Runs a fuzz target on each file of the folders named: the corpus as a test, with any compiler.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream stream(entry.path(), std::ios::binary);
      const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
      // Named before it runs, so that a crash tells its input.
      std::printf("%s\n", entry.path().filename().c_str());
      std::fflush(stdout);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%d inputs\n", count);
  // A folder that is empty or misnamed must not pass for a test.
  return count > 0 ? 0 : 1;
}
