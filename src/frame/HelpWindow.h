// The help page in a window of the program, for desktops without a program that shows it.
#pragma once

#include <QImage>
#include <QTextBrowser>
#include <QUrl>
#include <map>

#include "controls/Dialog.h"

/// A page whose pictures are never wider than it. Links are followed with Tab and Return, and Alt
/// with Left and Right go back and forward.
class CHelpPage : public QTextBrowser {
    Q_OBJECT
  public:
    using QTextBrowser::QTextBrowser;

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QImage Fitted(const QImage& picture) const;

    std::map<QUrl, QImage> m_pictures;  ///< in their own size
};

/// Stays open beside its parent; Escape closes it.
class CHelpWindow : public CDialog {
    Q_OBJECT
  public:
    /// Shows the page in the parent's help window, which is created when there is none.
    static void Open(const QString& path, QWidget* parent);

  private:
    CHelpWindow(const QString& path, QWidget* parent);
};
