// A combo box without a list of its own: its arrow and keys request the dialog's pick list.
#pragma once

#include <QComboBox>

class CPickField : public QComboBox {
    Q_OBJECT
  public:
    CPickField(bool isEditable, const QString& accessibleName, QWidget* parent = nullptr);

    /// Limits what is typed, in UTF-16 units. A longer text passed to SetText is shown whole.
    void SetMaxLength(int length);
    void SetText(const QString& text);
    [[nodiscard]] QString GetText() const { return currentText(); }

    void showPopup() override { emit PickRequested(); }

  signals:
    /// The arrow was pressed, or Down, Alt+Down or F4.
    void PickRequested();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    int m_maxLength = 0;  ///< 0: none
};
