// Runs the benchmarks and prints one table: the median of each "jw32/NAME", beside "plain/NAME" and
// with their ratio where there is such a pair.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// Keeps the medians for the table. The runs themselves are for the file of --benchmark_out.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& run : runs) {
            // Names may carry more than the benchmark's own words: "/iterations:1" and the like.
            const auto name = run.run_name.function_name + (run.run_name.args.empty() ? "" : "/") +
                              run.run_name.args;
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
                failed_ = true;
            }
            if (run.aggregate_name == "median") medians_[name] = nanoseconds(run);
        }
    }

    void Finalize() override {
        std::printf("%-40s %12s %12s %8s\n", "median time in ns", "jw32", "plain", "ratio");
        for (const auto& [name, time] : medians_) {
            if (name.rfind("jw32/", 0) != 0) continue;
            std::printf("%-40s %12.1f", name.c_str() + 5, time);
            const auto plain = medians_.find("plain/" + name.substr(5));
            if (plain == medians_.end()) {
                std::printf("\n");
            } else {
                std::printf(" %12.1f %8.2f\n", plain->second, time / plain->second);
            }
        }
    }

    bool failed() const { return failed_; }

  private:
    static double nanoseconds(const Run& run) {
        return run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    }

    std::map<std::string, double> medians_;
    bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.failed() ? 1 : 0;
}
