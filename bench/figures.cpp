#include "bench/figures.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
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

// Passes every run on to the console and keeps each benchmark's time per
// iteration in milliseconds.
class CapturingReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                const double seconds =
                    run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
                timesMs[run.run_name.function_name] = seconds * 1e3;
            }
        }
    }
    std::map<std::string, double> timesMs;
};

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
    benchmark::Initialize(&argc, argv);
    CapturingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    int failures = 0;
    for (const Figure& figure : Figures()) {
        const auto ours = reporter.timesMs.find(figure.ours);
        const auto reference = reporter.timesMs.find(figure.reference);
        const bool budget = figure.reference.empty();
        if (ours == reporter.timesMs.end() || (!budget && reference == reporter.timesMs.end())) {
            continue;  // filtered out of this run
        }
        const double referenceMs = budget ? figure.budgetMs : reference->second;
        const double ratio = referenceMs / ours->second;
        const bool pass = ratio >= figure.target;
        failures += pass ? 0 : 1;
        std::printf("FIGURE %s ours=%.4fms %s=%.4fms ratio=%.2f target>=%.2f %s\n",
                    figure.name.c_str(), ours->second, budget ? "budget" : "ref", referenceMs,
                    ratio, figure.target, pass ? "PASS" : "FAIL");
    }
    return failures == 0 ? 0 : 1;
}

}  // namespace wib::bench
