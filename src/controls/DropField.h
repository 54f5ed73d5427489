// An editable combo box in which Down opens the list.
#pragma once

#include <QComboBox>

/// In a plain combo box Down would change the text to the next item, unseen.
class CDropField : public QComboBox {
    Q_OBJECT
  public:
    using QComboBox::QComboBox;

    void showPopup() override;

  signals:
    /// The list is about to open; items may still be added.
    void Opening();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};
