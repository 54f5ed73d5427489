#include "catalogue/share/ShareItems.h"

#include <QHash>
#include <algorithm>
#include <map>

#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/ChosenFood.h"
#include "catalogue/share/ShareTexts.h"
#include "catalogue/share/ShareWriter.h"
#include "catalogue/share/SharedRecord.h"
#include "platform/CutText.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kExtension = ".velmora"_L1;

/// An item of the volume. Nothing is written to the volume meanwhile, so positions stay valid.
struct CPlace {
    ECatalogueKind kind = ECatalogueKind::Foods;
    int position = kNoPosition;
    bool operator==(const CPlace& other) const = default;
};
size_t qHash(const CPlace& place, size_t seed = 0) {
    return qHashMulti(seed, static_cast<int>(place.kind), place.position);
}

/// Numbers of items that are not in the file.
constexpr int kUnderWay = 0;  ///< the components come first
constexpr int kLeftOut = -1;

class CShareRun {
  public:
    explicit CShareRun(CDatabase& database) : m_database(database) {}
    bool Run(const CShareRequest& request, const QString& path);

  private:
    struct CComponent {
        int position = kNoPosition;
        CPlace target;  ///< what it was made of, see TargetOf
    };
    /// A menu or recipe whose components are being looked at.
    struct COpenItem {
        CPlace place;
        std::vector<CComponent> components;
        std::size_t next = 0;
    };

    bool AddItems(const CShareRequest& request);
    bool GoesOn();
    void Add(const CPlace& place);
    void Open(std::vector<COpenItem>& open, const CPlace& place);
    void Close(const COpenItem& open);
    CPlace TargetOf(const CComposedItem& component);
    int PositionOfRecipe(qint32 itemId);
    int CategoryNumber(ECatalogueKind kind, qint32 id);
    bool Write(const QString& path);
    [[nodiscard]] QString LeftOutText() const;

    CDatabase& m_database;
    CShareWriter m_writer;
    std::unique_ptr<CProgress> m_progress;
    QHash<CPlace, int> m_numbers;
    QHash<qint32, int> m_recipes;  ///< positions by identifier; filled at the first use
    // Numbers of categories, by identifier and by name.
    std::map<std::pair<ECatalogueKind, qint32>, int> m_categories;
    std::map<std::pair<ECatalogueKind, QString>, int> m_categoriesByName;
    CKindCounts m_counts{};
    CLeftOut m_leftOut;
    CLeftOut m_leftOutParts;
    int m_withoutSource = 0;  ///< components without the item they were made of
};

bool CShareRun::Run(const CShareRequest& request, const QString& path) {
    if (!AddItems(request)) {
        return false;
    }
    if (m_writer.Contents().items == 0 && !m_writer.HasFailed()) {
        ShowMessage({FormatText("There are no %s to share."_L1,
                                {QString::fromLatin1(KindOf(request.kind).words.many)}),
                     EMessageIcon::Plain, LeftOutText()});
        return false;
    }
    if (!Write(path)) {
        return false;
    }
    ShowMessage({u"Shared %1."_s.arg(CountsText(m_counts)), EMessageIcon::Result, LeftOutText()});
    return !m_leftOut.IsDamage() && !m_leftOutParts.IsDamage();
}

QString CShareRun::LeftOutText() const {
    QString sourceless;
    if (m_withoutSource > 0) {
        sourceless =
            CountText(m_withoutSource, kComponentWords) +
            (m_withoutSource == 1 ? u" comes without the food or recipe it was made of."_s
                                  : u" come without the food or recipe they were made of."_s);
    }
    return JoinSentences({DamageText(m_leftOut, kItemWords),
                          DamageText(m_leftOutParts, kComponentWords), sourceless});
}

/// False after a message when the user has cancelled.
bool CShareRun::AddItems(const CShareRequest& request) {
    m_progress = CreateProgress(u"Velmora: Share"_s);
    m_progress->SetStatus(
        FormatText("Sharing %s..."_L1, {QString::fromLatin1(KindOf(request.kind).words.many)}));
    m_progress->SetRange(0, static_cast<qint64>(request.positions.size()), 1);
    m_progress->Show();
    for (const int position : request.positions) {
        Add({request.kind, position});
        m_progress->Step();
        if (!GoesOn()) {
            break;
        }
    }
    const bool isCancelled = m_progress->IsCancelled();
    m_progress.reset();
    if (isCancelled) {
        ShowMessage(u"Sharing cancelled. No file was written."_s);
    }
    return !isCancelled;
}

/// False when the user has cancelled, or the file cannot be made any more.
bool CShareRun::GoesOn() {
    m_progress->Pump();
    return !m_progress->IsCancelled() && !m_writer.HasFailed();
}

/// Without recursion: recipes may contain each other as deep as they like.
void CShareRun::Add(const CPlace& place) {
    std::vector<COpenItem> open;
    if (!m_numbers.contains(place)) {
        Open(open, place);
    }
    while (!open.empty() && GoesOn()) {
        COpenItem& top = open.back();
        if (top.next == top.components.size()) {
            Close(top);
            open.pop_back();
            continue;
        }
        CComponent& component = top.components[top.next++];
        CComposedItem item(top.place.kind);
        if (m_database.Items(top.place.kind).ReadQuietly(component.position, item)) {
            component.target = TargetOf(item);
            const CPlace target = component.target;  // Open moves the components
            if (target.position >= 0 && !m_numbers.contains(target)) {
                Open(open, target);
            }
        }
    }
}

void CShareRun::Open(std::vector<COpenItem>& open, const CPlace& place) {
    CCatalogueItem item(place.kind);
    const bool isSound = m_database.Items(place.kind).ReadQuietly(place.position, item) &&
                         !IsPastLastItem(item.GetProperties()) &&
                         IsShareableItem(place.kind, item.GetProperties());
    m_numbers.insert(place, isSound ? kUnderWay : kLeftOut);
    if (!isSound) {
        ++m_leftOut.damaged;
        return;
    }
    open.push_back({.place = place, .components = {}});
    if (HasComponents(place.kind)) {
        CComposedItem composed(place.kind);
        PropertyList properties = item.GetProperties();
        (void)composed.SetProperties(std::move(properties));  // of the same layout
        for (const int position : m_database.Composed().ComponentPositions(
                 place.kind, composed.GetItemId(), &m_leftOutParts)) {
            open.back().components.push_back({position, {}});
        }
    }
}

/// Writes the item, now that everything it is made of has been written.
void CShareRun::Close(const COpenItem& open) {
    const ECatalogueKind kind = open.place.kind;
    CCatalogueItem item(kind);
    if (!m_database.Items(kind).ReadQuietly(open.place.position, item)) {
        // It was sound when it was opened: the disk has failed since.
        m_numbers[open.place] = kLeftOut;
        ++m_leftOut.damaged;
        return;
    }
    PropertyList properties = item.GetProperties();
    PlaceItem(kind, properties, 0, 0);
    m_numbers[open.place] =
        m_writer.AddItem(CategoryNumber(kind, item.GetCategoryId()), properties);
    ++m_counts.at(static_cast<std::size_t>(kind));
    for (const CComponent& component : open.components) {
        if (!GoesOn()) {
            return;
        }
        CComposedItem part(kind);
        if (!m_database.Items(kind).ReadQuietly(component.position, part) ||
            !IsShareableComponent(kind, part.GetProperties())) {
            ++m_leftOutParts.damaged;
            continue;
        }
        const CPlace& target = component.target;
        // Only a damaged recipe is made of itself.
        const int known = target == open.place ? kLeftOut : m_numbers.value(target, kLeftOut);
        properties = part.GetProperties();
        PlaceComponent(properties, 0, 0);
        m_writer.AddComponent(std::max(known, 0), properties);
        m_withoutSource += known > 0 ? 0 : 1;
    }
}

/// The item that a component was made of; position -1 when the catalogue no longer has it.
CPlace CShareRun::TargetOf(const CComposedItem& component) {
    const CComponentSource source = SourceOfComponent(
        m_database, component, [this](qint32 itemId) { return PositionOfRecipe(itemId); });
    return {source.kind, source.position};
}

int CShareRun::PositionOfRecipe(qint32 itemId) {
    if (m_recipes.isEmpty()) {
        CRecipeItem recipe;
        const int count = m_database.Catalogue().CountItems(ECatalogueKind::Recipes);
        for (int position = 0; position < count; ++position) {
            if (m_database.Recipes().ReadQuietly(position, recipe) &&
                !m_recipes.contains(recipe.GetItemId())) {
                m_recipes.insert(recipe.GetItemId(), position);
            }
        }
    }
    return m_recipes.value(itemId, kNoPosition);
}

int CShareRun::CategoryNumber(ECatalogueKind kind, qint32 id) {
    int& number = m_categories[{kind, id}];
    if (number != 0) {
        return number;
    }
    CCategory category;
    CCategories& categories = m_database.Categories();
    if (!categories.ReadQuietly(categories.Find(kind, id), category) ||
        !IsShareableCategory(category.GetProperties())) {
        category.Clear();
        category.SetKind(kind);
        category.SetName(u"Undefined"_s);
    }
    category.SetId(0);
    int& sameName = m_categoriesByName[{kind, category.GetName()}];
    if (sameName == 0) {
        sameName = m_writer.AddCategory(category.GetProperties());
    }
    number = sameName;
    return number;
}

bool CShareRun::Write(const QString& path) {
    constexpr qsizetype kPiece = 1 << 20;
    QByteArrayView bytes;
    if (const EPlatformError error = m_writer.Finish(bytes); error != kErrorSuccess) {
        ShowMessage(ShareRefusalText(error, path));
        return false;
    }
    CTextFile file;
    bool isWritten = !m_database.IsVolume(path) && file.Create(path, CTextFile::EReaders::ByUmask);
    for (; isWritten && !bytes.isEmpty(); bytes = bytes.sliced(std::min(kPiece, bytes.size()))) {
        file.WriteBytes(bytes.first(std::min(kPiece, bytes.size())));
    }
    isWritten = isWritten && file.Close();
    if (!isWritten) {
        ShowMessage(u"Cannot create file."_s);
    }
    return isWritten;
}
}  // namespace

bool ShareItems(CDatabase& database, const CShareRequest& request, const QString& path) {
    return CShareRun(database).Run(request, path);
}

CFileChoice ShareFileChoice(const QString& title, const QString& initialName) {
    return {title, kExtension, u"Velmora share file (*%1)"_s.arg(kExtension), initialName};
}

QString ProposedShareName(CDatabase& database, const CShareRequest& request) {
    // 180 bytes at most: file systems take 255.
    constexpr qsizetype kLongestName = 60;
    CCatalogueItem item(request.kind);
    QString name;
    if (request.positions.size() == 1 &&
        database.Items(request.kind).ReadQuietly(request.positions.front(), item)) {
        name = item.GetName();
    }
    for (QChar& character : name) {
        if (!character.isLetterOrNumber() && !character.isMark()) {
            character = u' ';
        }
    }
    name = CutText(name.simplified(), kLongestName).trimmed().toString();
    return (name.isEmpty() ? QString::fromLatin1(KindOf(request.kind).words.many) : name) +
           kExtension;
}
