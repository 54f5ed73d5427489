// The line layout of one kind of the catalogue. CsvImport and CsvExport need only this and the
// kind's texts (CKindExchange), so a further kind is one more layout.
#pragma once

#include <memory>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvFields.h"

/// What a line of the file turned out to be.
enum class ECsvLine {
    Item,       ///< can be stored
    Component,  ///< can be stored as part of the item before it
    Nothing,    ///< skipped without a message
    Error,      ///< skipped with a message
    End,        ///< the end marker
};

struct CCsvVerdict {
    ECsvLine line = ECsvLine::Nothing;
    const char* message = nullptr;  ///< with "%d" for the line number
    /// If not -1, the first "%d" of the message; the progress window hides while it is shown.
    int fieldCount = -1;
    bool isFatal = false;  ///< the import stops right after the line
};

/// The verdict on a line that ended after `count` fields; up to two are skipped without a message.
CCsvVerdict WrongFieldCount(int count);
/// The verdict on the first field of a line; nothing when the line may be an item's.
std::optional<CCsvVerdict> VerdictOnNumber(const std::optional<QStringView>& number);

/// The result of storing an item.
enum class EStored {
    Added,
    Replaced,
    Skipped,
    Uncounted,  ///< a component, stored or skipped with its item
    Failed,
};

/// One layout serves one import or export. It keeps the item being read or written, so that no line
/// needs allocations.
class CCsvLayout {
  public:
    CCsvLayout() = default;
    virtual ~CCsvLayout() = default;
    CCsvLayout(const CCsvLayout&) = delete;
    CCsvLayout& operator=(const CCsvLayout&) = delete;

    /// The progress window to hide while a message is shown; null for none.
    void SetProgress(CProgress* progress) { m_progress = progress; }
    /// A category is created as soon as its field is accepted, even if the line is refused later.
    virtual CCsvVerdict ReadLine(QStringView line) = 0;
    /// Stores the item of the last line.
    virtual EStored Store(EDuplicatePolicy policy) = 0;

    virtual void WriteHeader(CCsvLineWriter& line) = 0;
    /// Writes the item and its components; `number` counts the items of the run from 0. Takes the
    /// properties, or returns false and leaves them unchanged when they are not those of an item.
    virtual bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) = 0;
    /// Components of the items written that could not be read.
    [[nodiscard]] const CLeftOut& LeftOutParts() const { return m_leftOutParts; }

  protected:
    CProgress* m_progress = nullptr;
    CLeftOut m_leftOutParts;
};

/// `folder` is that of the exchange file, for category pictures; empty for an export.
std::unique_ptr<CCsvLayout> MakeCsvLayout(CDatabase& database, ECatalogueKind kind,
                                          const QString& folder);
