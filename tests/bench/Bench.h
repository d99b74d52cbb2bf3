// bench/Bench.h: measuring, and a table of what was measured against its target.
//
// Shapes  Times are nanoseconds a call; a result is the median of several rounds, or the shortest where other work on
//         the machine would decide. Where there is a baseline, its rounds and the measured ones take turns within the
//         same run, and the ratio is that of the two results.
//         The CSV has one line a result: name,value,unit,ratio,target,met - empty where there is
//         none, the name in quotation marks.
// Use     Each program prints its table, adds its CSV lines to the file that is its first argument, and ends with 1
//         when a target was missed. Run them through scripts/bench.sh: it pins program and wineserver to one processor,
//         without which every registry or file call is timed with a hand-over between two of them.
#pragma once
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace Bench {

inline constexpr double none = -1;

// What the optimiser must take for read and written here.
inline void Touch() { asm volatile("" ::: "memory"); }

template <class Work>
double NanosecondsPerCall(int calls, Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i) {
        work();
        Touch();
    }
    const std::chrono::duration<double, std::nano> passed = std::chrono::steady_clock::now() - start;
    return passed.count() / calls;
}

inline double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Medians {
    double baseline;
    double measured;
    [[nodiscard]] double Ratio() const { return measured / baseline; }
};
using Minima = Medians;

// `prepare` is called before each round, untimed.
template <class Prepare, class Baseline, class Measured>
Medians TakeTurns(int rounds, int calls, Prepare&& prepare, Baseline&& baseline, Measured&& measured) {
    std::vector<double> baselines;
    std::vector<double> measurements;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        baselines.push_back(NanosecondsPerCall(calls, baseline));
        prepare();
        measurements.push_back(NanosecondsPerCall(calls, measured));
    }
    return {Median(baselines), Median(measurements)};
}

template <class Prepare, class Baseline, class Measured>
Minima TakeTurnsForMinima(int rounds, int calls, Prepare&& prepare, Baseline&& baseline, Measured&& measured) {
    Minima minima{1e30, 1e30};
    for (int round = 0; round < rounds; ++round) {
        prepare();
        minima.baseline = std::min(minima.baseline, NanosecondsPerCall(calls, baseline));
        prepare();
        minima.measured = std::min(minima.measured, NanosecondsPerCall(calls, measured));
    }
    return minima;
}

template <class Work>
double MedianOf(int rounds, int calls, Work&& work) {
    std::vector<double> values;
    for (int round = 0; round < rounds; ++round) values.push_back(NanosecondsPerCall(calls, work));
    return Median(values);
}

class Report {
  public:
    // The target, where there is one, is the highest value allowed.
    void Add(const std::string& name, double nanoseconds, double target = none) {
        lines_.push_back({name, nanoseconds, none, target, target == none || nanoseconds <= target});
    }
    // The target, where there is one, is the highest ratio allowed.
    void Add(const std::string& name, const Medians& medians, double target = none) {
        const bool met = target == none || medians.Ratio() <= target;
        lines_.push_back({name, medians.measured, medians.Ratio(), target, met});
    }

    // A number of calls or of bytes, not a time. The target, where there is one, is the highest count allowed.
    void AddCount(const std::string& name, int count, double target = none) {
        lines_.push_back({name, double(count), none, target, target == none || count <= target, "count"});
    }

    // The program's exit code.
    [[nodiscard]] int Finish(int argc, char** argv) const {
        std::printf("%-66s %12s %8s %8s %s\n", "", "ns or count", "ratio", "target", "met");
        for (const Line& line : lines_) {
            std::printf("%-66s %12s %8s %8s %s\n", line.name.c_str(), Number(line.value).c_str(),
                        Number(line.ratio).c_str(), Number(line.target).c_str(), Met(line));
        }
        if (argc > 1 && !AddCsv(argv[1])) return 2;
        return std::all_of(lines_.begin(), lines_.end(), [](const Line& line) { return line.met; }) ? 0 : 1;
    }

  private:
    struct Line {
        std::string name;
        double value;
        double ratio;
        double target;
        bool met;
        const char* unit = "ns";
    };

    static std::string Number(double value) {
        if (value == none) return {};
        char text[32];
        std::snprintf(text, sizeof text, "%.2f", value);
        return text;
    }
    static const char* Met(const Line& line) { return line.target == none ? "" : line.met ? "yes" : "no"; }

    [[nodiscard]] bool AddCsv(const char* path) const {
        std::FILE* file = std::fopen(path, "a");
        if (file == nullptr) return false;
        for (const Line& line : lines_) {
            std::fprintf(file, "\"%s\",%s,%s,%s,%s,%s\n", line.name.c_str(), Number(line.value).c_str(), line.unit,
                         Number(line.ratio).c_str(), Number(line.target).c_str(), Met(line));
        }
        return std::fclose(file) == 0;
    }

    std::vector<Line> lines_;
};

}  // namespace Bench
