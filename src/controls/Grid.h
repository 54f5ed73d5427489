// A report-style list whose cells are edited in place.
#pragma once

#include <QHash>
#include <QStringList>
#include <QTreeView>
#include <optional>

class CInPlaceControl;
class QLineEdit;
class QStandardItemModel;

/// Which cells of a grid open which editor. Further columns open none and show their texts in grey.
enum class EGridKind {
    Values,   ///< column 1 opens an edit box
    Choices,  ///< column 0 opens a list of the grid's choices; column 1 an edit box, if there are
              ///< two rows or more
    Checks,   ///< column 0 has a check box and opens an edit box
};

/// The grid keeps texts and check marks and nothing else; its owner decides in LabelEditEnded
/// whether a new text stays (SetCellText) or not. At most one in-place control exists at a time.
///
/// The columns after the first hold numbers: no letters are typed into them.
///
/// Keys: the arrows move the current cell; F2, Return or typing open its editor, or the row's
/// first one when it has none; Space toggles a check box. In an editor Tab goes on to the next
/// cell that has one and leaves the grid after the last.
class CGrid : public QTreeView {
    Q_OBJECT
  public:
    CGrid(EGridKind kind, const QStringList& columnTitles, const QString& accessibleName,
          QWidget* parent = nullptr);

    /// Cancels an open editor. New rows are empty and unchecked.
    void SetRowCount(int rows);
    [[nodiscard]] int RowCount() const;
    [[nodiscard]] QString CellText(int row, int column) const;
    void SetCellText(int row, int column, const QString& text);
    /// Limits what is typed into a column, in UTF-16 units; a longer text that is there stays
    /// whole.
    void SetMaxLength(int column, int length) { m_maxLengths.insert(column, length); }
    /// The choices of EGridKind::Choices.
    void SetChoices(const QStringList& choices) { m_choices = choices; }
    /// Also fits the columns to their texts, unless the user has dragged them.
    void SetColumnShown(int column, bool isShown);
    /// Only of EGridKind::Checks.
    [[nodiscard]] bool IsChecked(int row) const;
    void SetChecked(int row, bool checked);

    /// Opens the editor that belongs to the cell, as a click on it does; false when it has none
    /// or its column is too narrow. The row becomes the current one in any case.
    bool OpenCell(int row, int column);
    [[nodiscard]] bool IsEditing() const { return m_control != nullptr; }
    [[nodiscard]] bool IsEdited(const QModelIndex& cell) const {
        return IsEditing() && m_editedCell == cell;
    }
    /// Ends an in-place edit so that its text reaches the owner; false when there was none.
    bool EndEditing();
    /// Ends an in-place edit without its text.
    void CancelEditing();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    /// No text when the edit was cancelled.
    void LabelEditEnded(int row, int column, const std::optional<QString>& text);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// Whether the names are as wide as the values leave room for in so many pixels.
    [[nodiscard]] bool AreNamesFitted(int width) const;
    void FitNames();
    [[nodiscard]] int ValueWidth(int column) const;
    /// Of the title and of the widest text.
    [[nodiscard]] int TextsWidth(int column) const;
    void ShowRowName(int row);
    /// For a screen reader.
    [[nodiscard]] QString EditorName(const QModelIndex& index) const;
    [[nodiscard]] bool HasEditor(int row, int column) const;
    /// `initial` replaces the cell's text in the editor.
    bool Open(int row, int column, const std::optional<QString>& initial);
    /// Creates the editor over the cell as m_control and returns its line edit.
    QLineEdit* CreateEditor(const QModelIndex& index, const QString& text);
    bool OpenCurrent(const std::optional<QString>& initial);
    void OpenNext(int row, int column, bool forward);
    void ScrollToCell(int row, int column);
    [[nodiscard]] QRect CellRect(int row, int column) const;
    [[nodiscard]] QSize SizeForRows(int rows) const;

    EGridKind m_kind;
    QStandardItemModel* m_model;
    CInPlaceControl* m_control = nullptr;
    QPersistentModelIndex m_editedCell;
    QHash<int, int> m_maxLengths;  ///< by column
    QStringList m_choices;
    bool m_checkedAtPress = false;
};
