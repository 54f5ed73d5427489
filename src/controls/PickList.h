// The one-column list that covers the lower part of a dialog while a category, a name or a type
// is picked.
#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

class CListPane;
class CReportList;

/// The content of a pick list; `note` is the line under the rows, if any.
struct CPickRows {
    QString header;
    QStringList rows;
    QString note = {};
};

/// Hidden until Open, then covers its parent below a given widget and takes the focus. A click or
/// Return picks, Escape and Tab close, typing finds a row by its beginning. Closing gives the focus
/// back to where it was.
class CPickList : public QWidget {
    Q_OBJECT
  public:
    /// `parent` is CDialog::OverlayParent in a dialog.
    explicit CPickList(QWidget* parent);

    /// Shows the rows over everything below `above` and selects the row `current`, if there is one.
    /// Opening an open list replaces its content.
    void Open(QWidget* above, const CPickRows& content, const QString& current);
    [[nodiscard]] bool IsOpen() const;
    void Close();

  signals:
    /// The list is closed when this is emitted.
    void Picked(const QString& row);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Pick(const QModelIndex& index);
    void Place();

    CReportList* m_list;
    CListPane* m_pane;
    QPointer<QWidget> m_above;
    QPointer<QWidget> m_focusBefore;
};
