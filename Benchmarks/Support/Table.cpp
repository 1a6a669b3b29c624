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

/// In nanoseconds, with the repetitions of each.
using Times = std::vector<std::pair<std::string, std::vector<double>>>;

std::vector<double>& timesOf(Times& times, const std::string& who) {
    const auto known = std::find_if(times.begin(), times.end(), [&](const auto& each) { return each.first == who; });
    return known == times.end() ? times.emplace_back(who, std::vector<double>()).second : known->second;
}

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
    std::string operation;
    std::string size;
    Times times;
    std::map<std::string, double> counters; // those of ours
};

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
        for (Row& row : rows) {
            if (timesOf(row.times, "ours").empty()) {
                continue; // It failed, or was filtered out.
            }
            const double ours = median(timesOf(row.times, "ours"));
            std::printf("%-28s %8s %10s  ", row.operation.c_str(), row.size.c_str(), withUnit(ours).c_str());
            for (const auto& [who, times] : row.times) {
                if (who != "ours") {
                    std::printf(" %s %.3g", who.c_str(), ours / median(times));
                }
            }
            for (const auto& [name, value] : row.counters) {
                std::printf(" [%s %.3g]", name.c_str(), value);
            }
            std::printf("\n");
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
        Row& row = rowOf(operation, size);
        const auto items = run.counters.find("items_per_second");
        constexpr double nanosecondsPerSecond = 1e9;
        const double seconds = items != run.counters.end()
                                   ? 1 / items->second
                                   : run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        timesOf(row.times, who).push_back(seconds * nanosecondsPerSecond);
        for (const auto& [name, counter] : run.counters) {
            if (who == "ours" && !name.ends_with("_per_second")) {
                row.counters[name] = counter;
            }
        }
    }

    Row& rowOf(const std::string& operation, const std::string& size) {
        const auto known = std::find_if(rows.begin(), rows.end(),
                                        [&](const Row& row) { return row.operation == operation && row.size == size; });
        return known == rows.end() ? rows.emplace_back(Row{operation, size, {}, {}}) : *known;
    }

    std::vector<Row> rows;
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
