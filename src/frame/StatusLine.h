// The status line at the bottom of the window, which says what was done.
#pragma once

#include <QStatusBar>
#include <QTimer>

class QLabel;

/// A text stays until the next one. In a small window the line takes room only for a while after a
/// text came.
class CStatusLine : public QStatusBar {
    Q_OBJECT
  public:
    explicit CStatusLine(QWidget* parent);

    /// Shows the text, and announces it to a screen reader; an empty one clears the line.
    void SetText(const QString& text);
    void SetSmall(bool isSmall);

  private:
    void ShowOrHide();

    QLabel* m_text;
    QTimer m_shown;  ///< runs while a text is new
    bool m_isSmall = false;
};
