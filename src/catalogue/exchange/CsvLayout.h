// What one kind of the catalogue adds to the exchange: its lines and what they mean. The runs of
// CsvImport and CsvExport know nothing else of a kind but its words and manners (CKindExchange),
// so a further kind is one more layout.
#pragma once

#include <memory>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvFields.h"

/// What a line of the file turned out to be.
enum class ECsvLine {
    Item,       ///< fit to be stored
    Component,  ///< fit to be stored with the item before it
    Nothing,    ///< skipped without a word
    Error,      ///< skipped with a message
    End,        ///< the end marker
};

struct CCsvVerdict {
    ECsvLine line = ECsvLine::Nothing;
    const char* message = nullptr;  ///< with "%d" for the line number
    int fieldCount = -1;            ///< where given, "%d" for it comes first and the progress hides
    bool isFatal = false;           ///< the import stops right after the line
};

/// The verdict on a line that ended after `count` fields: too short to be worth a word, or not.
CCsvVerdict WrongFieldCount(int count);
/// The verdict on the first field of a line; nothing when the line may hold an item.
std::optional<CCsvVerdict> VerdictOnNumber(const std::optional<QStringView>& number);

/// What storing an item came to.
enum class EStored {
    Added,
    Replaced,
    Skipped,
    Uncounted,  ///< a component, stored or dropped with what it belongs to
    Failed,
};

/// One layout serves one run. It holds the item that is being read or written, so that nothing is
/// allocated for every line.
class CCsvLayout {
  public:
    CCsvLayout() = default;
    virtual ~CCsvLayout() = default;
    CCsvLayout(const CCsvLayout&) = delete;
    CCsvLayout& operator=(const CCsvLayout&) = delete;

    /// Shown while the layout reads; null where there is none.
    void SetProgress(CProgress* progress) { m_progress = progress; }
    /// A category is created as soon as its field is accepted, whatever becomes of the line.
    virtual CCsvVerdict ReadLine(QStringView line) = 0;
    /// Stores the item of the last line.
    virtual EStored Store(EExisting existing) = 0;

    virtual void WriteHeader(CCsvLineWriter& line) = 0;
    /// Writes the item with what belongs to it. Takes the properties over. False when they are no
    /// item of the kind: nothing is written then and they stay as they were. `number` counts the
    /// items of the run from 0.
    virtual bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) = 0;
    /// Parts of the items written that could not be read.
    [[nodiscard]] const CLeftOut& LeftOutParts() const { return m_leftOutParts; }

  protected:
    CProgress* m_progress = nullptr;
    CLeftOut m_leftOutParts;
};

/// `folder` holds the exchange file and the category pictures beside it; empty for an export.
std::unique_ptr<CCsvLayout> MakeCsvLayout(CDatabase& database, ECatalogueKind kind,
                                          const QString& folder);
