// The words of one command line, parsed by the table of the command's options.
#pragma once

#include <QMap>
#include <span>
#include <vector>

#include "cli/OptionValues.h"

/// The constructor parses and checks all words and keeps the first error.
class CArguments {
  public:
    /// Accepts `options` and kCommonOptions; a value is the next word or follows "=". Errors (see
    /// GetError): an option that is unknown, missing, repeated or lacks its value, a value that
    /// cannot be read, and any other number of plain words than `expected` names ("OLD NEW"). A
    /// word after "--" is never an option.
    CArguments(const QStringList& words, std::span<const COption> options, const char* expected);

    /// Empty when there is no error.
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
    /// The values of a repeatable choice that follow `marker` on the line, without another of the
    /// command's dates between them.
    [[nodiscard]] std::vector<int> ChoicesAfter(const char* option, const char* marker) const;

  private:
    [[nodiscard]] const COption& Row(const char* option) const;
    void TakeOption(const QStringList& words, qsizetype& at);
    void TakeValue(const COption& option, const QString& value);
    void CheckOptions();
    void CheckWords(const char* expected);
    /// Keeps the first error only.
    void SetError(const QString& error);

    std::span<const COption> m_options;
    QStringList m_words;
    QMap<QString, QStringList> m_values;
    QList<std::pair<QString, QString>> m_inOrder;  ///< options and values as given
    QString m_error;
};

/// Index of the first word from `from` on that is neither an option nor the value of one; -1 when
/// there is none, or when an unknown option comes first.
qsizetype FindWord(const QStringList& words, qsizetype from, std::span<const COption> options);
