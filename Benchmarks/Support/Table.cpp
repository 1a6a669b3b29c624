// The main program of the benchmarks. Prints a line of a table for each operation and size: the time of ours, how many
// times as long it takes as each of the others, and what else was counted. A benchmark is called OPERATION/WHO/SIZE,
// with ours, floor or a peer for WHO; times are medians of the repetitions, of one item where a run does many.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char* ours = "ours";

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string withUnit(double nanoseconds) {
    constexpr std::array units = {"ns", "us", "ms", "s"};
    std::size_t unit = 0;
    for (; nanoseconds >= 1000 && unit + 1 < units.size(); ++unit) {
        nanoseconds /= 1000;
    }
    std::ostringstream text;
    text.precision(3);
    text << nanoseconds << ' ' << units.at(unit);
    return text.str();
}

struct Row {
    std::map<std::string, std::vector<double>> times; // by who, in nanoseconds, with all repetitions
    std::map<std::string, double> counters;           // those of ours
};

void print(const std::string& operation, const std::string& size, Row& row) {
    const double time = median(row.times[ours]);
    std::printf("%-22s %7s %10s  ", operation.c_str(), size.c_str(), withUnit(time).c_str());
    row.times.erase(ours);
    for (const auto& [who, times] : row.times) {
        std::printf(" %s %.3g", who.c_str(), time / median(times));
    }
    for (const auto& [name, value] : row.counters) {
        std::printf(" [%s %.3g]", name.c_str(), value);
    }
    std::printf("\n");
}

class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                GetErrorStream() << run.benchmark_name() << ": " << run.error_message << '\n';
            } else if (run.run_type == Run::RT_Iteration) {
                add(run);
            }
        }
    }

    void Finalize() override {
        for (auto& [operation, sizes] : rows) {
            for (auto& [lengthAndSize, row] : sizes) {
                if (row.times.contains(ours)) { // It may have failed, or been filtered out.
                    print(operation, lengthAndSize.second, row);
                }
            }
        }
    }

private:
    void add(const Run& run) {
        std::istringstream parts(run.run_name.function_name + "/" + run.run_name.args);
        std::string operation;
        std::string who;
        std::string size;
        std::getline(parts, operation, '/');
        std::getline(parts, who, '/');
        std::getline(parts, size, '/');
        Row& row = rows[operation][{size.size(), size}];
        const auto items = run.counters.find("items_per_second");
        constexpr double nanosecondsPerSecond = 1e9;
        const double seconds = items != run.counters.end()
                                   ? 1 / items->second
                                   : run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        row.times[who].push_back(seconds * nanosecondsPerSecond);
        for (const auto& [name, counter] : run.counters) {
            if (who == ours && !name.ends_with("_per_second")) {
                row.counters[name] = counter;
            }
        }
    }

    // By operation, and then by size, the shorter numbers first.
    std::map<std::string, std::map<std::pair<std::size_t, std::string>, Row>> rows;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
