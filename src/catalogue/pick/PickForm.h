// The rules shared by the dialogs that pick an item of the catalogue: what can be picked, and find.
#pragma once

#include <QStringList>
#include <QTime>

#include "app/VelmoraDoc.h"
#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/pick/SearchItems.h"

/// An item by category, name and type, and the time of its entry. Texts go in and out as the user
/// sees them. The document outlives it.
class CPickForm {
  public:
    virtual ~CPickForm() = default;
    CPickForm(const CPickForm&) = delete;
    CPickForm& operator=(const CPickForm&) = delete;

    /// The rows of a picker; none after a message when there is nothing to pick.
    CPickChoices Choices(EPicker picker, int capacity = kCatalogueListCapacity);
    /// Sets the picked text and clears what depends on it; the last picker loads the item. Returns
    /// the picker that follows, or None.
    virtual EPicker Pick(EPicker picker, const QString& row) = 0;

    /// The document's last find in the catalogue.
    [[nodiscard]] CFindState& FindState() const { return m_doc.FindState(Catalogue()); }
    /// False when there are no texts for "find next".
    [[nodiscard]] virtual bool HasFindTexts() const { return FindState().HasTexts(); }
    /// Both load the next match into the form; Find starts at the first item. False after a message
    /// when there is none or it cannot be loaded; the form is then unchanged.
    bool Find(const QString& name, const QStringList& types);
    bool FindNext();

    /// The best matches among the items that may be picked; for an empty text what the profile
    /// eats.
    [[nodiscard]] CSearchItems Search(const QString& text);
    /// Prepares for the first search in steps; false when there is nothing left to do.
    bool PrepareSearch() { return m_doc.Database().Search().PrepareSome(); }
    /// The titles of the columns in which matches are shown, and the text in one of them.
    [[nodiscard]] QStringList SearchTitles() const { return ::SearchTitles(m_doc); }
    [[nodiscard]] QString SearchCell(const CFoundItem& item, int column) const {
        return ::SearchCell(m_doc, item, column);
    }
    /// Takes a match as if it had been picked field by field. False after a message when it cannot
    /// be loaded.
    bool PickFound(const CFoundItem& item);

    [[nodiscard]] QString CategoryText() const;
    [[nodiscard]] QString NameText() const { return m_name; }
    void SetNameText(const QString& text) { m_name = text; }
    [[nodiscard]] QString TypeText() const { return m_type; }
    void SetTypeText(const QString& text) { m_type = text; }

    [[nodiscard]] QTime GetTime() const { return m_time; }
    void SetTime(QTime time) { m_time = time; }

  protected:
    explicit CPickForm(CVelmoraDoc& doc) : m_doc(doc) {}

    [[nodiscard]] virtual ECatalogueKind Catalogue() const = 0;
    /// -1 when none is selected.
    [[nodiscard]] virtual qint32 CategoryId() const = 0;
    /// The kinds that may be picked and the meal that is chosen for; the text is set by the caller.
    [[nodiscard]] virtual CSearchQuery SearchQuery() const = 0;
    /// As picking the item at that position of a kind in the last picker.
    virtual bool TakeFound(ECatalogueKind kind, int position) = 0;
    /// Loads the item at that position; false after a message when it cannot be read.
    virtual bool Load(int position) = 0;

    /// Loads the item of the current category and name with `type`, empty for kinds without types.
    bool LoadOfType(const QString& type);
    [[nodiscard]] CVelmoraDoc& Doc() const { return m_doc; }
    static void ShowInformation(const QString& text);

  private:
    bool LoadFound(int position);

    CVelmoraDoc& m_doc;
    QString m_name;
    QString m_type;
    QTime m_time;
};
