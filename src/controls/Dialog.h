// The frame every dialog of the program stands in: a content that scrolls on small screens, and a
// row of buttons that is always in sight.
#pragma once

#include <QDialog>
#include <functional>
#include <utility>

class QDialogButtonBox;
class QFormLayout;
class QHBoxLayout;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

/// Derived dialogs put their fields into Content() and decide in Confirm. The dialog opens at its
/// preferred size, or as its content asks for, and no larger than the screen; it fills a small one.
class CDialog : public QDialog {
    Q_OBJECT
  public:
    CDialog(const QString& title, QWidget* parent);
    ~CDialog() override;

    /// Closes an overlay and nothing else while there is one. Otherwise ends an in-place edit
    /// anywhere inside, so that a pending text reaches its owner; then asks Confirm and closes
    /// with OK when it agrees.
    void accept() override;
    /// What OK does with what Confirm took over, such as storing it; false keeps the dialog open.
    void SetOnConfirmed(std::function<bool()> store) { m_store = std::move(store); }
    int exec() override;
    /// Closes an overlay and nothing else while there is one. Otherwise drops an in-place edit
    /// and closes with Cancel.
    void reject() override;

  protected:
    /// The scrolling part. Spans the dialog's width.
    QVBoxLayout* Content() { return m_content; }
    /// A form of labelled rows at the end of the content; each field added through it becomes its
    /// label's buddy.
    QFormLayout* AddForm();
    /// Extra button at the left of OK and Cancel.
    QPushButton* AddButton(const QString& text);
    /// Where a pick list lies over the content and leaves the buttons in sight: its parent.
    [[nodiscard]] QWidget* OverlayParent() const;
    /// Closes what OK and Cancel have to close before the dialog itself, such as a pick list;
    /// false when nothing was open.
    virtual bool CloseOverlay() { return false; }
    /// Reads the fields and applies the rules; false keeps the dialog open.
    virtual bool Confirm() { return true; }
    /// Logical pixels.
    void SetPreferredSize(int width, int height);

    void showEvent(QShowEvent* event) override;
    /// The wheel turns the field that has the focus, and scrolls the content elsewhere.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void OrderTabs();
    void WatchWheel();
    void ShowFocusWidget(QWidget* focus);

    QScrollArea* m_scroll;
    QVBoxLayout* m_content;
    QHBoxLayout* m_buttonRow;
    QDialogButtonBox* m_buttons;
    QList<QPushButton*> m_extraButtons;
    QSize m_preferredSize;
    std::function<bool()> m_store;
};
