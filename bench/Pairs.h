// Two things run in turn on the same volume, and a person who says Yes.
#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "platform/Messages.h"

/// Answers every question with Yes and shows only failures.
class CYes : public CMessageSeam {
  public:
    void Show(const CMessage& message) override {
        if (message.icon != EMessageIcon::Result) {
            std::fprintf(stderr, "%s\n", qPrintable(message.text));
        }
    }
    bool AskYesNo(const QString& /*text*/, EAnswer /*proposed*/) override { return true; }
    QString ChooseFileToOpen(const CFileChoice& /*choice*/) override { return {}; }
    QString ChooseFileToSave(const CFileChoice& /*choice*/) override { return {}; }
    std::unique_ptr<CProgress> CreateProgress(const QString& /*caption*/) override {
        class CNone : public CProgress {
            void SetStatus(const QString& /*text*/) override {}
            void SetRange(qint64 /*lower*/, qint64 /*upper*/, qint64 /*step*/) override {}
            void SetPosition(qint64 /*position*/) override {}
            void Step() override {}
            void Show() override {}
            void Hide() override {}
            void Pump() override {}
            [[nodiscard]] bool IsCancelled() const override { return false; }
        };
        return std::make_unique<CNone>();
    }
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
