#include "bench_support.h"

#include <map>

namespace bench {

namespace {

std::map<std::string, double>& rawTimes() {
    static std::map<std::string, double> times;
    return times;
}

} // namespace

double nsPerIteration(std::chrono::steady_clock::time_point start, const benchmark::State& state) {
    const auto ns = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
    return state.iterations() > 0 ? ns / static_cast<double>(state.iterations()) : 0.0;
}

void rememberRaw(const std::string& name, double ns) {
    rawTimes()[name] = ns;
}

void reportRatio(benchmark::State& state, const std::string& name, double ns) {
    const auto raw = rawTimes().find(name);
    if (raw != rawTimes().end() && raw->second > 0)
        state.counters["ratio_to_raw"] = ns / raw->second;
}

QString desktopConnectionText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
           QStringLiteral(";");
}

} // namespace bench
