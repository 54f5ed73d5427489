// The words of one command line, told apart by a table of what the command takes.
#pragma once

#include <QMap>
#include <span>
#include <vector>

#include "cli/OptionValues.h"

/// Parsed words: everything is checked when they are parsed, and the first fault is kept.
class CArguments {
  public:
    /// Besides `options` those of every command are known; a value follows its option as the next
    /// word or after "=". Refused (see GetError) are an unknown, incomplete or missing option, one
    /// that is given twice, a value that cannot be read, and words without dashes that are not as
    /// many as `expected` names ("OLD NEW"). A word after "--" is never an option.
    CArguments(const QStringList& words, std::span<const COption> options, const char* expected);

    /// Empty when everything was understood.
    [[nodiscard]] const QString& GetError() const { return m_error; }

    [[nodiscard]] QString Word(int index) const { return m_words.value(index); }
    [[nodiscard]] bool Has(const char* option) const;

    // The value of an option of that kind; `fallback` when it is not given.
    [[nodiscard]] QString Text(const char* option, const QString& fallback = {}) const;
    [[nodiscard]] QDate Date(const char* option, QDate fallback = {}) const;
    [[nodiscard]] QTime Time(const char* option) const;
    [[nodiscard]] double Number(const char* option, double fallback = 0) const;
    [[nodiscard]] int Whole(const char* option, int fallback = 0) const;
    [[nodiscard]] int Choice(const char* option, int fallback = 0) const;
    [[nodiscard]] int Choices(const char* option, int fallback) const;
    [[nodiscard]] NutrientSet Nutrients(const char* option, NutrientSet fallback) const;
    /// In the order given.
    [[nodiscard]] std::vector<CNutrientTarget> Targets(const char* option) const;

  private:
    [[nodiscard]] const COption& Row(const char* option) const;
    void TakeOption(const QStringList& words, qsizetype& at);
    void TakeValue(const COption& option, const QString& value);
    void CheckOptions();
    void CheckWords(const char* expected);
    void Note(const QString& error);

    std::span<const COption> m_options;
    QStringList m_words;
    QMap<QString, QStringList> m_values;
    QString m_error;
};

/// Index of the first word from `from` on that is neither an option nor the value of one; -1 when
/// there is none, or when an option before it is unknown.
qsizetype FindWord(const QStringList& words, qsizetype from, std::span<const COption> options);
