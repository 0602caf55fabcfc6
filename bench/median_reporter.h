#pragma once
// MedianReporter: Google Benchmark's console report that also keeps, per
// benchmark function, the time of its single run or the median of its
// repetitions, in the benchmark's unit, for a summary table that a subclass
// prints after the report (Finalize).

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

class MedianReporter : public benchmark::ConsoleReporter {
public:
    // Wall time for a run that owns the core; CPU time where the machine may
    // be shared, since wall time then includes other processes' turns.
    enum class Clock { wall, cpu };

    explicit MedianReporter(Clock clock);

    void ReportRuns(const std::vector<Run>& runs) override;

protected:
    // NaN for a function that did not run (a peer not built, a filter).
    double time(const std::string& functionName) const;
    const std::map<std::string, double>& times() const { return times_; }

private:
    Clock clock_;
    std::map<std::string, double> times_;
};
