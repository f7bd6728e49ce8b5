// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/figures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <vector>

namespace wib::bench {

namespace {

struct Figure {
    std::string name;
    std::string ours;
    std::string reference;  // empty for a budget figure
    double target;
    double budgetMs = 0;
};

std::vector<Figure>& Figures() {
    static std::vector<Figure> figures;
    return figures;
}

// What one benchmark reported, for each repetition: the time per iteration in
// milliseconds, and the bytes it moved per second where it counts them.
struct Measured {
    std::vector<double> timesMs;
    std::vector<double> bytesPerSecond;
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// Passes every run on to the console and keeps each repetition of each
// benchmark.
class CapturingReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) {
                continue;
            }
            if (run.error_occurred) {
                failed.insert(run.run_name.function_name);
                continue;
            }
            Measured& one = measured[run.run_name.function_name];
            const double seconds =
                run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            one.timesMs.push_back(seconds * 1e3);
            if (const auto bytes = run.counters.find("bytes_per_second");
                bytes != run.counters.end()) {
                one.bytesPerSecond.push_back(bytes->second.value);
            }
        }
    }
    std::map<std::string, Measured> measured;
    std::set<std::string> failed;
};

// Whether the command line picks benchmarks: a figure with a benchmark it
// left out is then not reported at all.
bool Filtered(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--benchmark_filter", 18) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

void RegisterFigure(const std::string& figure, const std::string& ours,
                    const std::string& reference, double target) {
    Figures().push_back({figure, ours, reference, target});
}

void RegisterBudgetFigure(const std::string& figure, const std::string& ours, double budgetMs,
                          double target) {
    Figures().push_back({figure, ours, {}, target, budgetMs});
}

int RunAndReport(int argc, char** argv) {
    const bool filtered = Filtered(argc, argv);
    // Five repetitions unless the command line asks for another count.
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=" + std::to_string(kMinRepetitions);
    arguments.insert(arguments.begin() + 1, repetitions.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    CapturingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    int failures = 0;
    for (const Figure& figure : Figures()) {
        const bool budget = figure.reference.empty();
        const auto ours = reporter.measured.find(figure.ours);
        const auto reference = reporter.measured.find(figure.reference);
        const auto complete = [&reporter](auto found) {
            return found != reporter.measured.end() &&
                   found->second.timesMs.size() >= static_cast<std::size_t>(kMinRepetitions);
        };
        if (!complete(ours) || (!budget && !complete(reference))) {
            const auto ran = [&reporter](const std::string& name) {
                return reporter.measured.contains(name) || reporter.failed.contains(name);
            };
            if (filtered && (!ran(figure.ours) || (!budget && !ran(figure.reference)))) {
                continue;
            }
            ++failures;
            std::printf("FIGURE %s did not report %d repetitions of %s%s%s FAIL\n",
                        figure.name.c_str(), kMinRepetitions, figure.ours.c_str(),
                        budget ? "" : " and ", figure.reference.c_str());
            continue;
        }
        const double oursMs = Median(ours->second.timesMs);
        const double referenceMs = budget ? figure.budgetMs : Median(reference->second.timesMs);
        const double ratio = referenceMs / oursMs;
        const bool pass = ratio >= figure.target;
        failures += pass ? 0 : 1;
        std::string rate;
        if (!ours->second.bytesPerSecond.empty()) {
            char text[48];
            std::snprintf(text, sizeof text, " ours=%.2fGB/s",
                          Median(ours->second.bytesPerSecond) / 1e9);
            rate = text;
        }
        std::printf("FIGURE %s ours=%.4gms %s=%.4gms ratio=%.2f target>=%.2f%s %s\n",
                    figure.name.c_str(), oursMs, budget ? "budget" : "ref", referenceMs, ratio,
                    figure.target, rate.c_str(), pass ? "PASS" : "FAIL");
    }
    return failures == 0 ? 0 : 1;
}

}  // namespace wib::bench
