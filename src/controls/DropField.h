// An editable combo box in which Down opens the list.
#pragma once

#include <QComboBox>

/// A plain combo box would change its text to the next item, unseen.
class CDropField : public QComboBox {
    Q_OBJECT
  public:
    using QComboBox::QComboBox;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};
