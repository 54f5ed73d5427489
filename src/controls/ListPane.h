// A list with a line under it for what the list does not show.
#pragma once

#include <QWidget>

class QAbstractItemView;
class QLabel;
class QVBoxLayout;

class CListPane : public QWidget {
    Q_OBJECT
  public:
    explicit CListPane(QWidget* parent = nullptr);

    /// Takes the list over, which is as large as the pane while there is nothing to say.
    void SetList(QAbstractItemView* list);
    /// The line "listNote", wrapped where it is long; an empty text hides it.
    void SetNote(const QString& text);

  private:
    QVBoxLayout* m_layout;
    QLabel* m_note;
};
