// Two things run in turn on the same volume, and a person who says Yes.
#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "cli/ConsoleMessages.h"

/// Answers every question with Yes and shows only failures.
class CYes : public CConsoleMessages {
  public:
    void Show(const CMessage& message) override {
        if (message.icon != EMessageIcon::Result) {
            CConsoleMessages::Show(message);
        }
    }
    bool AskYesNo(const QString& /*text*/, EAnswer /*proposed*/) override { return true; }
};

inline double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

inline double Microseconds(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1000;
}

/// Prints the median of the ratios and both median times. `restore` runs, untimed, after each of
/// the two.
inline void Compare(
    const char* name, int rounds, const std::function<void()>& command,
    const std::function<void()>& bare, const std::function<void()>& restore = [] {}) {
    std::vector<double> commands;
    std::vector<double> bares;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        commands.push_back(Microseconds(command));
        restore();
        bares.push_back(Microseconds(bare));
        restore();
        ratios.push_back(commands.back() / bares.back());
    }
    std::printf("%-44s %5.2f   %9.0f / %.0f us\n", name, Median(ratios), Median(commands),
                Median(bares));
}
