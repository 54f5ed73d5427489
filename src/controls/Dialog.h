// The base of every dialog: content that scrolls on small screens, and a row of buttons that is
// always visible.
#pragma once

#include <QDialog>
#include <functional>
#include <utility>

class QDialogButtonBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

/// Derived dialogs put their fields into Content() and apply their rules in Confirm. A dialog opens
/// at its preferred size, or else at that of its content, limited to the screen; it fills a small
/// screen.
class CDialog : public QDialog {
    Q_OBJECT
  public:
    CDialog(const QString& title, QWidget* parent);
    ~CDialog() override;

    /// If an overlay is open, only closes that. Otherwise ends any in-place edit, so that its text
    /// reaches its owner, then calls Confirm and closes with OK when it returns true.
    void accept() override;
    /// What OK does after Confirm, such as storing the result; false keeps the dialog open.
    void SetOnConfirmed(std::function<bool()> store) { m_store = std::move(store); }
    int exec() override;
    /// If an overlay is open, only closes that. Otherwise cancels any in-place edit and closes with
    /// Cancel.
    void reject() override;

  protected:
    /// The scrolling part. Spans the dialog's width.
    QVBoxLayout* Content() { return m_content; }
    /// A form of labelled rows at the end of the content; each field added through it becomes its
    /// label's buddy.
    QFormLayout* AddForm();
    /// A text that wraps, at the end of the content.
    QLabel* AddText(const QString& text, const QString& objectName);
    /// For a dialog that only shows something. Escape still closes it.
    void HideCancel();
    /// Extra button at the left of OK and Cancel.
    QPushButton* AddButton(const QString& text);
    /// Parent for an overlay such as a pick list, which covers the content but not the buttons.
    [[nodiscard]] QWidget* OverlayParent() const;
    /// Closes the overlay; false when none was open.
    virtual bool CloseOverlay() { return false; }
    /// Reads the fields and applies the rules; false keeps the dialog open.
    virtual bool Confirm() { return true; }
    /// Logical pixels; the dialog gets wider when its content is, as it is with a large font.
    void SetPreferredSize(int width, int height);

    void showEvent(QShowEvent* event) override;
    /// The wheel changes a field only when it has the focus; otherwise it scrolls the content.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QMargins FrameMargins() const;
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
