// Runs a fuzz target over the files of the folders that it is given, without a fuzzer: how the tests replay
// the stored inputs with any compiler.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** folders) {
    std::size_t inputs = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folders[i])) {
            if (!entry.is_regular_file()) {
                continue;
            }
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                          std::istreambuf_iterator<char>()};
            // A copy of the exact size, so that a sanitizer sees a read past its end.
            std::vector<std::uint8_t> input(bytes.size());
            std::transform(bytes.begin(), bytes.end(), input.begin(),
                           [](char c) { return static_cast<std::uint8_t>(c); });
            LLVMFuzzerTestOneInput(input.data(), input.size());
            ++inputs;
        }
    }
    std::printf("%zu inputs\n", inputs);
    return inputs == 0 ? 1 : 0; // A corpus that has gone missing must not pass.
}
