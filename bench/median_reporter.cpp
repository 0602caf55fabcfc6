#include "median_reporter.h"

#include <cmath>
#include <cstdio>
#include <unistd.h>

MedianReporter::MedianReporter(Clock clock)
    : ConsoleReporter(isatty(fileno(stdout)) ? OO_ColorTabular : OO_Tabular), clock_(clock)
{
}

void MedianReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
        const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        if (single || median) {
            times_[run.run_name.function_name] =
                clock_ == Clock::wall ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

double MedianReporter::time(const std::string& functionName) const
{
    const auto found = times_.find(functionName);
    return found == times_.end() ? NAN : found->second;
}
