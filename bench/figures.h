// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib::bench {

// One figure of `make bench`: our benchmark against a reference measured in
// the same run. The ratio printed is reference time / our time, so bigger is
// better for us, and it passes at `target` or above.
void RegisterFigure(const std::string& figure, const std::string& ours,
                    const std::string& reference, double target);

// A figure measured against a fixed time budget instead of a reference run:
// ratio = budget / our time.
void RegisterBudgetFigure(const std::string& figure, const std::string& ours, double budgetMs,
                          double target);

// Each side of a figure is the median of this many repetitions at least.
inline constexpr int kMinRepetitions = 5;

// Runs every registered benchmark kMinRepetitions times (honouring the usual
// --benchmark_* flags), then prints one line per figure, with the rate of a
// benchmark that counts the bytes it moves:
//   FIGURE undo_save_1080p ours=0.41ms ref=0.39ms ratio=0.95 target>=0.80 PASS
// A figure whose benchmarks did not report (one failed or ran fewer times)
// fails; one with a benchmark that a --benchmark_filter left out is not printed.
int RunAndReport(int argc, char** argv);

}  // namespace wib::bench
