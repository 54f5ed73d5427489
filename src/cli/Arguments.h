// The words of one command line, told apart by a table of what the command takes.
#pragma once

#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTime>
#include <span>

/// One option of a command.
struct COptionDescription {
    const char* name;  ///< with its dashes, "--height"
    bool takesValue;
    bool isRequired;
};

/// Parsed words. Values that cannot be read are reported once, through GetError.
class CArguments {
  public:
    /// Fails (see GetError) on an unknown, repeated, incomplete or missing option, and when the
    /// words without dashes are not exactly `wordCount`. A word after "--" is never an option.
    CArguments(const QStringList& words, std::span<const COptionDescription> options,
               int wordCount);

    /// Empty when everything was understood.
    [[nodiscard]] const QString& GetError() const { return m_error; }

    [[nodiscard]] QString Word(int index) const { return m_words.value(index); }
    [[nodiscard]] bool Has(const char* option) const;
    /// Notes an error when the option is not given, for one that only some calls need.
    void Require(const char* option);
    [[nodiscard]] QString Text(const char* option) const;
    /// ISO date; notes an error and gives an invalid date when it is none.
    QDate Date(const char* option);
    /// "HH:MM"; notes an error when it is none.
    QTime Time(const char* option);
    /// A finite number with a point; notes an error when it is none. `fallback` when not given.
    double Number(const char* option, double fallback = 0);
    /// A whole number from `low` to `high`; notes an error otherwise.
    int Index(const char* option, int low, int high, int fallback = 0);
    /// Place of the value in `choices`; notes an error when it is not among them.
    int Choice(const char* option, const QStringList& choices, int fallback = 0);
    /// Several of `choices` with commas between them, as a set of bits: 1 for the first, 2 for the
    /// second. Notes an error when one is not among them. `fallback` when not given.
    int Choices(const char* option, const QStringList& choices, int fallback);

  private:
    void Note(const QString& error);

    QStringList m_words;
    QMap<QString, QString> m_values;
    QString m_error;
};
