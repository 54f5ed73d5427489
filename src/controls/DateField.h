// A date field in which a date is typed freely.
#pragma once

#include <QDateEdit>

/// Shows the date as QDateEdit does, with its calendar and steps. What is typed is read by
/// TypedDate when the field is left or Return is pressed; a text that is not understood restores
/// the date and shows a hint under the field.
class CDateField : public QDateEdit {
    Q_OBJECT
  public:
    CDateField(QDate date, const QString& shownFormat, QWidget* parent = nullptr);

    /// Reads what was typed. False when it was not understood: the date is restored and the hint
    /// is shown.
    bool TakeTyped();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
    [[nodiscard]] QDateTime dateTimeFromText(const QString& text) const override;

  private:
    [[nodiscard]] std::optional<QDate> Typed(const QString& text) const;
    [[nodiscard]] bool IsTyped() const;
    void SelectWhatTypingReplaces();

    /// A key, not the pointer, has selected what is selected: the first character that is typed
    /// replaces the whole date, not only the selected part of it.
    bool m_replacesAll = true;
};
