// Runs a target over the files of the directories given, without the fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv)
{
    unsigned inputs = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto &file : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream stream(file.path(), std::ios::binary);
            const std::vector<char> read{std::istreambuf_iterator<char>(stream), {}};
            const std::vector<uint8_t> bytes(read.begin(), read.end()); // of the exact size, for AddressSanitizer
            std::printf("%s\n", file.path().c_str());
            std::fflush(stdout); // names the input when the target stops the program
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
            ++inputs;
        }
    }
    std::printf("%u inputs\n", inputs);
    return inputs == 0;
}
