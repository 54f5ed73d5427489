// A list with a line under it that says what the list does not show.
#pragma once

#include <QWidget>

class QAbstractItemView;
class QLabel;
class QVBoxLayout;

class CListPane : public QWidget {
    Q_OBJECT
  public:
    explicit CListPane(QWidget* parent = nullptr);

    /// Takes ownership of the list, which fills the pane while there is no note.
    void SetList(QAbstractItemView* list);
    /// Sets the line under the list, wrapped when it is long; an empty text hides it.
    void SetNote(const QString& text);

  private:
    QVBoxLayout* m_layout;
    QLabel* m_note;
};
