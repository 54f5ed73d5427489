// bench_compare ROUNDS COMMAND_A COMMAND_B: runs two shell commands in turn and prints the median
// wall-clock time and the peak memory of each, and the median of the pairwise ratios A / B. Since
// they run in turn, a noisy machine slows both alike.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {
struct CRun {
    double milliseconds = 0;
    long peakKilobytes = 0;
};

CRun RunOnce(const char* command) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", command, nullptr);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - start;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "failed: %s\n", command);
        std::exit(1);
    }
    return {elapsed.count(), usage.ru_maxrss};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: bench_compare ROUNDS COMMAND_A COMMAND_B\n");
        return 2;
    }
    const int rounds = std::atoi(argv[1]);
    // One round of each warms the caches.
    RunOnce(argv[2]);
    RunOnce(argv[3]);
    std::vector<double> timesA;
    std::vector<double> timesB;
    std::vector<double> ratios;
    long peakA = 0;
    long peakB = 0;
    for (int i = 0; i < rounds; ++i) {
        const CRun a = RunOnce(argv[2]);
        const CRun b = RunOnce(argv[3]);
        timesA.push_back(a.milliseconds);
        timesB.push_back(b.milliseconds);
        ratios.push_back(a.milliseconds / b.milliseconds);
        peakA = std::max(peakA, a.peakKilobytes);
        peakB = std::max(peakB, b.peakKilobytes);
    }
    std::printf("ratio %.2f  (%.1f ms / %.1f ms; peak %ld KB / %ld KB; %d rounds)\n",
                Median(ratios), Median(timesA), Median(timesB), peakA, peakB, rounds);
    return 0;
}
