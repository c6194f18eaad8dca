// Replays a corpus without a fuzzing engine: each file under the folders that are named, once.

#include "Input.hpp"

#include <filesystem>
#include <fstream>
#include <iostream>

int main(int count, char** arguments) {
    std::size_t files = 0;
    for (int i = 1; i < count; ++i) {
        for (auto const& entry : std::filesystem::recursive_directory_iterator(arguments[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            std::string const bytes(std::istreambuf_iterator<char>(file), {});
            std::cout << entry.path() << '\n' << std::flush; // the last line names a finding
            LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
            ++files;
        }
    }
    return files == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
