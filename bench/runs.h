// SPDX-License-Identifier: GPL-2.0-or-later
// Programs run from start to end, and what they cost.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvelin::bench {

constexpr int rounds = 7;

struct Cost {
  double milliseconds = 0;
  double megabytes = 0;  // peak memory of the process
};

/// Runs a program to its end with its output thrown away. One that fails ends the benchmark.
Cost run(const std::vector<std::string>& words);

/// The quickest of several runs of each, taken in turn so that all see the same machine.
std::vector<Cost> best_of(const std::vector<std::function<Cost()>>& works, int count = rounds);

/// A line with the ratio to a base.
void report(const std::string& name, const Cost& cost, const Cost& base,
            const std::string& base_name, double limit);

}  // namespace corvelin::bench
