// The two editors that open over a cell of a grid: CInPlaceCellEdit and CInPlaceList.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QStringList>
#include <functional>
#include <optional>

class QTreeView;

/// The cell that an editor covers, and what it calls when it ends.
struct CInPlaceCell {
    QTreeView* list;  ///< becomes the editor's parent and gets the focus back
    int row;
    int column;
    QRect rect;  ///< the cell in the list's viewport
    Qt::Alignment alignment;
    /// Called once when the editor ends, with the text, or nothing when it was cancelled.
    std::function<void(int row, int column, const std::optional<QString>& text)> ended;
    /// Called after `ended` when Tab or Shift+Tab ended the editor.
    std::function<void(int row, int column, bool forward)> tabbed;
};

/// What both editors share: Return commits, Escape cancels, Tab and loss of focus commit. Return
/// and Escape give the focus back to the list. After it has called `ended`, an editor deletes
/// itself.
class CInPlaceControl {
  public:
    virtual ~CInPlaceControl() = default;

    void Commit() { Finish(false); }
    void Cancel() { Finish(true); }
    /// Moves the editor over the cell at `cell`.
    virtual void Place(const QRect& cell) = 0;

  protected:
    CInPlaceControl(QWidget* self, CInPlaceCell cell);

    [[nodiscard]] virtual QString Text() const = 0;
    /// Shows itself and takes the focus.
    void Start(const QRect& cell);
    /// True when the key ended the editor.
    bool HandleKey(const QKeyEvent* event);
    void HandleFocusOut(const QFocusEvent* event);
    void HandleTab(bool forward);
    /// Grows to show a text of this width in logical pixels, up to the list's client area.
    void Widen(int neededWidth);

    const CInPlaceCell m_cell;

  private:
    void Finish(bool cancelled);
    void End();

    QWidget* m_self;
    bool m_cancelled = false;
    bool m_ended = false;
};

enum class ETyped { Text, Number };

/// An edit box over a cell. For a number letters cannot be typed; a text that is pasted may have
/// some, since its leading number counts.
class CInPlaceCellEdit : public QLineEdit, public CInPlaceControl {
    Q_OBJECT
  public:
    CInPlaceCellEdit(const CInPlaceCell& cell, const QString& text, ETyped typed);

    void Place(const QRect& cell) override;

  protected:
    [[nodiscard]] QString Text() const override { return text(); }
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    [[nodiscard]] bool IsRefused(const QString& typed) const;

    ETyped m_typed;
};

/// An editable drop-down list over a cell: a choice replaces the text, typing is free.
class CInPlaceList : public QComboBox, public CInPlaceControl {
    Q_OBJECT
  public:
    /// `selected` is an index into `choices`, -1 for none of them.
    CInPlaceList(const CInPlaceCell& cell, const QStringList& choices, int selected,
                 const QString& text);

    void Place(const QRect& cell) override;

  protected:
    [[nodiscard]] QString Text() const override { return currentText(); }
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
};

enum class EInPlaceEnd { Commit, Cancel };

/// Ends every editor inside `window`; false when there was none.
bool EndInPlaceControls(QWidget* window, EInPlaceEnd how);
