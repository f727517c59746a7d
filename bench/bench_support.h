#pragma once

#include <QString>

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

// What every benchmark program of this folder shares: each raw benchmark runs
// first and keeps its time per iteration; the program's benchmark beside it
// reports its own time as a ratio to it.
namespace bench {

// Nanoseconds per iteration of the loop that began at start.
double nsPerIteration(std::chrono::steady_clock::time_point start, const benchmark::State& state);

// Keeps the time of a raw benchmark under a name.
void rememberRaw(const std::string& name, double ns);
// Sets counters["ratio_to_raw"] of a program benchmark against the raw one of that name.
void reportRatio(benchmark::State& state, const std::string& name, double ns);

// The connection text of a desktop database file.
QString desktopConnectionText(const QString& file);

} // namespace bench
