// Runs a fuzz target on files and folders of files, so that what fuzzing once found stays found
// without the fuzzer.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int replayed = 0;

void replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++replayed;
}

}  // namespace

int main(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        if (!std::filesystem::is_directory(argv[index])) {
            replay(argv[index]);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[index]))
            replay(entry.path());
    }
    std::cout << replayed << " inputs\n";
    return replayed > 0 ? 0 : 1;
}
