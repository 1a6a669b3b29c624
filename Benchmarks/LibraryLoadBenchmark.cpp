// What loading a library costs a process, dynamic initialisers included, against an empty library of the same
// dependencies. Each is loaded once in a process of its own that has loaded the dependencies before.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Seconds; negative if either can't be loaded.
double timeLoad(const char* dependencies, const char* library) {
    if (dlopen(dependencies, RTLD_NOW) == nullptr) {
        return -1;
    }
    const auto start = std::chrono::steady_clock::now();
    const bool isLoaded = dlopen(library, RTLD_NOW) != nullptr;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return isLoaded ? elapsed.count() : -1;
}

/// The same in a new process.
double timeFirstLoad(const char* dependencies, const char* library) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return -1;
    }
    const pid_t child = fork();
    if (child == 0) {
        const double seconds = timeLoad(dependencies, library);
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    close(ends[1]);
    double seconds = -1;
    if (read(ends[0], &seconds, sizeof seconds) != sizeof seconds) {
        seconds = -1;
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return seconds;
}

void load(benchmark::State& state, const char* dependencies, const char* library) {
    for ([[maybe_unused]] const auto iteration : state) {
        const double seconds = timeFirstLoad(dependencies, library);
        if (seconds < 0) {
            state.SkipWithError("the library can't be loaded");
        }
        state.SetIterationTime(seconds);
    }
}

void eachOnce(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1)->UseManualTime()->Iterations(500)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(load, classes, CLASSES_DEPENDENCIES, CLASSES)->Name("loadFoundationClasses/ours")->Apply(eachOnce);
BENCHMARK_CAPTURE(load, none, CLASSES_DEPENDENCIES, CLASSES_EMPTY)
    ->Name("loadFoundationClasses/floor")
    ->Apply(eachOnce);
BENCHMARK_CAPTURE(load, mapping, MAPPING_DEPENDENCIES, MAPPING)->Name("loadIfcVersionMapping/ours")->Apply(eachOnce);
BENCHMARK_CAPTURE(load, none, MAPPING_DEPENDENCIES, MAPPING_EMPTY)
    ->Name("loadIfcVersionMapping/floor")
    ->Apply(eachOnce);

} // namespace
