// How long annotate takes to open a model, small and large: rows are named OPERATION/WHO/SIZE. Absolute times depend on
// the machine; what counts are the ratios within one run, of ours to the two that only read the bytes.
//
// - ours: Model::read, the objects and their index included.
// - ifstream_get: every byte by std::ifstream::get, as a plain loop over the characters of the file does.
// - read_only: the file by large blocks, the least that any reading of it takes.
//
// peak_over_file is how much more memory the process had at most during one opening than before it, over the size of
// the file. The large model is a smaller one repeated, with new instance numbers and new GlobalIds. The file system's
// cache holds it. Memory is told to a page, and the smallest blocks that are read are larger than the small model.

#include "Annotate/Model.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <malloc.h>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace annotate {

namespace {

std::size_t openModel(const std::filesystem::path& path) {
    return Model::read(path).getObjects().size();
}

std::size_t getBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::size_t sum = 0;
    for (char byte = 0; file.get(byte);) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

std::size_t readBlocks(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(256UL * 1024);
    std::size_t size = 0;
    do {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        size += static_cast<std::size_t>(file.gcount());
    } while (file);
    return size;
}

/// The kilobytes that the line of the process's status tells.
double status(const std::string& name) {
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        if (word == name) {
            double kilobytes = 0;
            file >> kilobytes;
            return kilobytes;
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

using Operation = std::size_t (*)(const std::filesystem::path& path);

double peakBytes(Operation operation, const std::filesystem::path& path) {
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5; // forgets the peak so far
    const double before = status("VmRSS:");
    operation(path);
    return (status("VmHWM:") - before) * 1024;
}

/// Appends the statements with instance numbers and GlobalIds that no other copy has. Copies have numbers below 10,000.
void appendCopy(std::string& text, const std::string& statements, std::size_t copy) {
    constexpr std::size_t numbersOfCopy = 1'000'000;
    constexpr std::size_t quotedGlobalIdSize = 24;
    for (std::size_t place = 0; place < statements.size();) {
        std::size_t size = 1;
        if (statements[place] == '#') {
            size = statements.find_first_not_of("0123456789", place + 1) - place;
            text += '#' + std::to_string(copy * numbersOfCopy + std::stoull(statements.substr(place + 1, size - 1)));
        } else if (statements[place] == '\'') {
            size = statements.find('\'', place + 1) + 1 - place;
            text.append(statements, place, size);
            if (size == quotedGlobalIdSize && statements[place - 1] == '(') {
                text.replace(text.size() - size + 2, 4, std::to_string(10'000 + copy), 1, 4);
            }
        } else {
            text += statements[place];
        }
        place += size;
    }
}

void writeRepeated(const std::filesystem::path& path, const std::string& model, std::size_t size) {
    const std::size_t begin = model.find("DATA;") + 5;
    const std::size_t end = model.rfind("ENDSEC;");
    const std::string statements = model.substr(begin, end - begin);
    std::ofstream file(path, std::ios::binary);
    file << model.substr(0, begin);
    std::string text;
    std::size_t written = 0;
    for (std::size_t copy = 0; written < size; ++copy) {
        text.clear();
        appendCopy(text, statements, copy);
        file << text;
        written += text.size();
    }
    file << model.substr(end);
}

/// The largest of the models in ORV_REAL_MODELS, or the one that comes with the example if there are none.
std::filesystem::path findModel() {
    std::filesystem::path largest = HOUSE;
    const char* const models = std::getenv("ORV_REAL_MODELS");
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(models == nullptr ? "" : models, error)) {
        if (entry.path().extension() == ".ifc" && entry.file_size() > std::filesystem::file_size(largest)) {
            largest = entry.path();
        }
    }
    return largest;
}

std::filesystem::path smallModel() {
    return HOUSE;
}

/// Written at the first call, and removed at the end of the process.
std::filesystem::path largeModel() {
    static const orv::tests::TemporaryDirectory directory;
    static const std::filesystem::path path = [] {
        std::filesystem::path written = directory / "Large.ifc";
        writeRepeated(written, orv::tests::contentOf(findModel()), 200'000'000);
        return written;
    }();
    return path;
}

void run(benchmark::State& state, Operation operation, std::filesystem::path (*model)()) {
    const std::filesystem::path path = model();
    const auto size = static_cast<double>(std::filesystem::file_size(path));
    state.counters["peak_over_file"] = peakBytes(operation, path) / size;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(operation(path));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
}

BENCHMARK_CAPTURE(run, small, openModel, smallModel)->Name("openModel/ours/40kB");
BENCHMARK_CAPTURE(run, small, getBytes, smallModel)->Name("openModel/ifstream_get/40kB");
BENCHMARK_CAPTURE(run, small, readBlocks, smallModel)->Name("openModel/read_only/40kB");
BENCHMARK_CAPTURE(run, large, openModel, largeModel)->Name("openModel/ours/200MB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, large, getBytes, largeModel)
    ->Name("openModel/ifstream_get/200MB")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, large, readBlocks, largeModel)->Name("openModel/read_only/200MB")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace annotate
