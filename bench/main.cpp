// Runs the benchmarks and prints, for each pair "jw32/NAME" and "plain/NAME", the ratio of the
// times.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// Shows every run as usual and keeps the medians for the table of ratios.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            if (run.aggregate_name == "median") {
                medians_[run.run_name.str()] = run.GetAdjustedRealTime();
            }
        }
    }

    void Finalize() override {
        std::printf("\n%-40s %12s %12s %8s\n", "ratio (median time)", "jw32", "plain", "ratio");
        for (const auto& [name, time] : medians_) {
            if (name.rfind("jw32/", 0) != 0) continue;
            const auto plain = medians_.find("plain/" + name.substr(5));
            if (plain == medians_.end()) continue;
            std::printf("%-40s %12.1f %12.1f %8.2f\n", name.substr(5).c_str(), time, plain->second,
                        time / plain->second);
        }
    }

  private:
    std::map<std::string, double> medians_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
