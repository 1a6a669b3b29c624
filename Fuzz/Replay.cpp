// Stands in for the fuzzer where a target is built as a test: gives it each file of a directory, once.

#include "Require.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

// What a target throws ends the test.
int main(int /*count*/, char** arguments) { // NOLINT(bugprone-exception-escape)
    int replayed = 0;
    for (const auto& file : std::filesystem::directory_iterator(arguments[1])) {
        std::cout << file.path() << std::endl; // the last one shown is the one that failed
        std::ifstream stream(file.path(), std::ios_base::binary);
        const std::vector<orv::fuzz::Byte> input(std::istreambuf_iterator<char>(stream), {});
        LLVMFuzzerTestOneInput(input.data(), input.size());
        ++replayed;
    }
    return replayed > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
