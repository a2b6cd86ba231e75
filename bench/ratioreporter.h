#pragma once
// Google Benchmark's console report, followed by the ratios the goals are stated
// in: each benchmark's time per iteration over that of its raw-SQLite twin.
//
//   RatioReporter reporter({{"StatusChange engine/raw", "EngineStatusChange", "RawStatusChange"}});
//   benchmark::RunSpecifiedBenchmarks(&reporter);

#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    struct Ratio
    {
        std::string label;     // printed as "ratio <label>: ..."
        std::string numerator; // benchmark names
        std::string denominator;
    };

    explicit RatioReporter(std::vector<Ratio> ratios) : ConsoleReporter(OO_Tabular), m_ratios(std::move(ratios))
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && run.iterations > 0) {
                m_times[run.benchmark_name()] = {run.real_accumulated_time / double(run.iterations),
                                                 run.cpu_accumulated_time / double(run.iterations)};
            }
        }
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        for (const Ratio& ratio : m_ratios) {
            const auto top = m_times.find(ratio.numerator);
            const auto bottom = m_times.find(ratio.denominator);
            if (top == m_times.end() || bottom == m_times.end()) {
                continue;
            }
            std::printf("ratio %s: %.2f (cpu time %.2f)\n", ratio.label.c_str(), top->second.real / bottom->second.real,
                        top->second.cpu / bottom->second.cpu);
        }
    }

private:
    struct Times
    {
        double real = 0; // per iteration
        double cpu = 0;
    };
    std::vector<Ratio> m_ratios;
    std::map<std::string, Times> m_times;
};
