#include "catalogue/items/CatalogueRules.h"

#include <QSet>
#include <algorithm>
#include <numeric>

#include "catalogue/items/CategoryItems.h"
#include "catalogue/items/TextLimits.h"
#include "platform/CutText.h"
#include "platform/NumberText.h"
#include "store/Step.h"
#include "store/UnitOfWork.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kMostCopies = 99;
/// "_Copy01".
constexpr int kCopySuffixLength = 7;

bool ShowExists(const QString& name) {
    ShowMessage(FormatText("Category '%s' already exists."_L1, {name}));
    return false;
}

/// Ascending or descending positions.
std::vector<int> PositionsOf(const CCatalogueRules::Entries& entries, bool descending) {
    std::vector<int> positions;
    positions.reserve(entries.size());
    for (const CCategoryListEntry& entry : entries) {
        positions.push_back(entry.position);
    }
    std::ranges::sort(positions);
    if (descending) {
        std::ranges::reverse(positions);
    }
    return positions;
}
}  // namespace

CCatalogueRules::CCatalogueRules(CDatabase& database, ECatalogueKind kind)
    : m_database(database), m_kind(KindOf(kind)), m_namesType(m_kind.Layout().namesType) {}

qint32 CCatalogueRules::AddCategory(const QString& name) {
    CCategory category;
    category.SetKind(m_kind.code);
    category.SetName(name);
    if (m_database.Categories().Find(m_kind.code, category.GetName()) >= 0) {
        ShowExists(category.GetName());
        return -1;
    }
    const CStep step(m_database.GetStore(),
                     StepName(kAdditionStep, u"category "_s + category.GetName()));
    // AddOrUpdate does not report a failed write.
    if (!m_database.Categories().AddOrUpdate(-1, category) ||
        m_database.Categories().Find(m_kind.code, category.GetId()) < 0) {
        m_database.GetStore().ShowFailure(u"Cannot create new category"_s);
        return -1;
    }
    return category.GetId();
}

bool CCatalogueRules::RenameCategory(qint32 categoryId, const QString& typed) {
    const QString name = typed.trimmed();
    const int position = m_database.Categories().Find(m_kind.code, categoryId);
    CCategory category;
    if (name.isEmpty()) {
        ShowMessage(u"Please enter category name."_s);
        return false;
    }
    if (position < 0 || !m_database.Categories().Read(position, category)) {
        return false;
    }
    const QString oldName = category.GetName();
    category.SetName(name);  // may cut it; the cut name must be unique
    if (category.GetName() == oldName) {
        return true;
    }
    if (m_database.Categories().Find(m_kind.code, category.GetName()) >= 0) {
        return ShowExists(category.GetName());
    }
    const CStep step(m_database.GetStore(), StepName(kRenameStep, u"category "_s + oldName));
    // AddOrUpdate does not report a failed write, which leaves the old name.
    const bool isRenamed =
        m_database.Categories().AddOrUpdate(position, category) &&
        m_database.Categories().NameOf(m_kind.code, categoryId) == category.GetName();
    if (!isRenamed) {
        m_database.GetStore().ShowRefusedWrite();
    }
    return isRenamed;
}

bool CCatalogueRules::DeleteCategory(qint32 categoryId) {
    const int position =
        categoryId < 0 ? kNoPosition : m_database.Categories().Find(m_kind.code, categoryId);
    if (position < 0) {
        ShowMessage(m_database.Categories().List(m_kind.code).empty()
                        ? kNoCategorySelected
                        : "Please select category to delete."_L1);
        return false;
    }
    const QString name = m_database.Categories().NameOf(m_kind.code, categoryId);
    if (!AskYesNo(FormatText(QLatin1StringView(m_kind.category.confirmDelete), {name}))) {
        return false;
    }
    CStep step(m_database.GetStore(), StepName(kDeleteStep, u"category "_s + name));
    const CPositionRange range = Items().RangeOf(categoryId).value_or(CPositionRange{});
    std::vector<int> positions(static_cast<size_t>(range.count));
    std::iota(positions.begin(), positions.end(), range.first);
    if (!step.MayGoOn(RoomFor(positions, true))) {
        return false;
    }
    const CWaitCursor wait;
    bool isDeleted = false;
    RunAsUnit(m_database.GetStore(), [&] {
        const bool isEmptied = DeleteItemsOf(categoryId);
        if (!isEmptied) {
            // The category itself is still deleted.
            ShowMessage(QString::fromLatin1(m_kind.category.cannotEmpty));
        }
        isDeleted = m_database.Categories().Delete(position);
        if (!isDeleted) {
            ShowMessage(u"Cannot delete category."_s);
        }
        return isEmptied && isDeleted;
    });
    return isDeleted;
}

qint64 CCatalogueRules::RoomFor(const std::vector<int>& positions, bool withComponents) {
    constexpr size_t kSamples = 512;
    const size_t stride = std::max<size_t>(1, positions.size() / kSamples);
    qint64 room = 0;
    qint64 samples = 0;
    for (size_t i = 0; i < positions.size(); i += stride) {
        room += Items().EstimateRoom({positions[i], 1});
        if (withComponents && HasComponents(m_kind.code)) {
            room += Items().EstimateRoom(ComponentsOf(positions[i]));
        }
        ++samples;
    }
    return samples == 0 ? 0 : room * std::ssize(positions) / samples;
}

CPositionRange CCatalogueRules::ComponentsOf(int position) {
    CComposedItem item(m_kind.code);
    if (!Items().ReadQuietly(position, item)) {
        return {};
    }
    return Items().RangeBetween(item.GetItemId(), item.GetItemId()).value_or(CPositionRange{});
}

bool CCatalogueRules::DeleteItemsOf(qint32 categoryId) {
    const std::optional<CPositionRange> range = Items().RangeOf(categoryId);
    bool areDeleted = range.has_value();
    for (int left = areDeleted ? range->count : 0; areDeleted && left > 0; --left) {
        areDeleted = m_database.DeleteItem(m_kind.code, range->first + left - 1);
    }
    return areDeleted;
}

bool CCatalogueRules::MayAddItem(qint32 categoryId) {
    if (m_database.Categories().List(m_kind.code).empty()) {
        ShowMessage(QString::fromLatin1(m_kind.category.noneForItem));
        return false;
    }
    if (categoryId < 0) {
        ShowMessage(u"Please select category."_s);
        return false;
    }
    return true;
}

bool CCatalogueRules::MayEdit(const Entries& selected) {
    return CheckSelection(m_kind.item.edit, static_cast<int>(selected.size()));
}

int CCatalogueRules::Delete(const Entries& selected) {
    const auto count = static_cast<int>(selected.size());
    if (!CheckSelection(m_kind.item.remove, count) ||
        !ConfirmFor(m_kind.item.confirmDelete, count, NamesOf(selected.front()))) {
        return 0;
    }
    CStep step(m_database.GetStore(), StepNameOf(kDeleteStep, selected));
    // Last first: a deletion changes the positions after it.
    const std::vector<int> positions = PositionsOf(selected, true);
    if (!step.MayGoOn(RoomFor(positions, true))) {
        return 0;
    }
    return ActOnEach(
        m_database.GetStore(), positions,
        [this](int position) { return m_database.DeleteItem(m_kind.code, position); },
        QString::fromLatin1(m_kind.item.cannotDelete));
}

std::vector<CCategoryEntry> CCatalogueRules::MoveTargets(const Entries& selected) {
    if (!CheckSelection(m_kind.item.move, static_cast<int>(selected.size()))) {
        return {};
    }
    std::vector<CCategoryEntry> targets = m_database.Categories().List(m_kind.code);
    if (targets.size() <= 1) {
        ShowMessage(QString::fromLatin1(m_kind.item.onlyOneCategory));
        return {};
    }
    std::erase_if(targets, [&](const CCategoryEntry& category) {
        return category.id == selected.front().categoryId;
    });
    if (targets.empty()) {
        ShowMessage(u"There are no categories to select."_s);
    }
    return targets;
}

int CCatalogueRules::Move(const Entries& selected, const CCategoryEntry& target) {
    Texts names = NamesOf(selected.front());
    names.emplace_back(target.name);
    const auto count = static_cast<int>(selected.size());
    const QString question =
        count == 1
            ? FormatText(QLatin1StringView(m_kind.item.confirmMove.one), names)
            : FormatText(QLatin1StringView(m_kind.item.confirmMove.several), {count, target.name});
    if (!AskYesNo(question)) {
        return 0;
    }
    const QString name = StepNameOf(kMoveStep, selected);
    CStep step(m_database.GetStore(), name);
    step.SetStatusText(DoneText(name, u"to "_s + target.name));
    // Moving an item to a later category changes positions after it, to an earlier category those
    // before it; in this order the items still to be moved keep their positions.
    const bool descending = target.id > selected.front().categoryId;
    const std::vector<int> positions = PositionsOf(selected, descending);
    if (!step.MayGoOn(RoomFor(positions, false))) {
        return 0;
    }
    const int moved = ActOnEach(
        m_database.GetStore(), positions,
        [&](int position) { return MoveItem(position, target.id); }, QString());
    if (moved < count) {
        const int failed = positions[static_cast<size_t>(moved)];
        Texts failedNames =
            NamesOf(*std::ranges::find(selected, failed, &CCategoryListEntry::position));
        failedNames.emplace_back(target.name);
        ShowMessage(FormatText(QLatin1StringView(m_kind.item.cannotMove), failedNames));
    }
    return moved;
}

bool CCatalogueRules::MoveItem(int position, qint32 categoryId) {
    CCatalogueItem item(m_kind.code);
    if (!Items().Read(position, item)) {
        return false;
    }
    item.SetCategoryId(categoryId);
    return Items().Write(position, item);
}

int CCatalogueRules::Duplicate(const Entries& selected) {
    if (!CheckSelection(m_kind.item.duplicate, static_cast<int>(selected.size())) ||
        !AskYesNo(FormatText(QLatin1StringView(m_kind.item.confirmDuplicate),
                             NamesOf(selected.front())))) {
        return -1;
    }
    // Menus and recipes share the wording of foods.
    const int position = selected.front().position;
    CCatalogueItem copy(m_kind.code);
    if (!Items().Read(position, copy)) {
        ShowMessage(u"Cannot load food to duplicate."_s);
        return -1;
    }
    const QString text = FreeCopyText(copy);
    if (text.isEmpty()) {
        ShowMessage(u"Cannot create unique name to duplicate food."_s);
        return -1;
    }
    const CStep step(m_database.GetStore(), StepNameOf(kDuplicateStep, selected));
    if (m_namesType) {
        copy.SetType(text);
    } else {
        copy.SetName(text);
    }
    const bool isAdded = HasComponents(m_kind.code)
                             ? m_database.Composed().AddCopy(m_kind.code, position, text)
                             : Items().Write(-1, copy);
    if (!isAdded) {
        ShowMessage(u"Cannot duplicate food."_s);
        return -1;
    }
    return m_database.Catalogue().FindItem(m_kind.code, copy.GetCategoryId(), copy.GetName(),
                                           copy.GetType());
}

/// Reads every record of the category once, whatever the number of copies.
QString CCatalogueRules::FreeCopyText(const CCatalogueItem& item) {
    QSet<QString> taken;
    ForEachItemOf(m_database, m_kind.code, item.GetCategoryId(),
                  [&](int, const QString& name, const QString& type) {
                      if (!m_namesType) {
                          taken.insert(name);
                      } else if (name == item.GetName()) {
                          taken.insert(type);
                      }
                  });
    const CCatalogueLayout& numbers = m_kind.Layout();
    const auto property = static_cast<size_t>(m_namesType ? numbers.type : numbers.name);
    // No longer than both the record and an exchange file can keep.
    const int room = std::min(numbers.layout.properties[property].capacity, kLongestText);
    const QString original =
        CutText(m_namesType ? item.GetType() : item.GetName(), room - kCopySuffixLength).toString();
    for (int copy = 1; copy <= kMostCopies; ++copy) {
        QString candidate = FormatText("%s_Copy%s"_L1, {original, TwoDigits(copy)});
        if (!taken.contains(candidate)) {
            return candidate;
        }
    }
    return {};
}

QString CCatalogueRules::RenameItems(qint32 categoryId, const QString& oldName,
                                     const QString& typed) {
    CCatalogueItem item(m_kind.code);
    item.SetName(typed.trimmed());
    QString name = item.GetName();
    if (name.isEmpty()) {
        ShowMessage(QString::fromLatin1(m_kind.rename.noNewName));
        return {};
    }
    if (name == oldName) {
        return name;
    }
    const std::vector<int> positions = PositionsOf(ItemsOfName(categoryId, oldName).entries, false);
    CStep step(m_database.GetStore(), StepName(kRenameStep, oldName));
    if (!step.MayGoOn(RoomFor(positions, false))) {
        return {};
    }
    const int renamed = ActOnEach(
        m_database.GetStore(), positions,
        [&](int position) {
            if (!Items().Read(position, item)) {
                return false;
            }
            item.SetName(name);
            return Items().Write(position, item);
        },
        QString());
    if (renamed < static_cast<int>(positions.size())) {
        ShowMessage(QString::fromLatin1(m_kind.rename.cannotRename));
        return {};
    }
    return name;
}

CCategoryList CCatalogueRules::ItemsOfName(qint32 categoryId, const QString& name) {
    CCategoryList list;
    list.leftOut = ForEachItemOf(m_database, m_kind.code, categoryId,
                                 [&](int position, const QString& found, const QString& type) {
                                     if (found == name) {
                                         list.entries.push_back({position, categoryId, name, type});
                                     }
                                 });
    std::ranges::stable_sort(list.entries, [](const auto& left, const auto& right) {
        return left.type.compare(right.type, Qt::CaseInsensitive) < 0;
    });
    return list;
}

QString CCatalogueRules::StepNameOf(QLatin1StringView command, const Entries& selected) const {
    const CCategoryListEntry& first = selected.front();
    const QString name = m_namesType ? first.name + u", "_s + first.type : first.name;
    return StepName(command, static_cast<int>(selected.size()), name,
                    QLatin1StringView(m_kind.words.many));
}

CCatalogueRules::Texts CCatalogueRules::NamesOf(const CCategoryListEntry& entry) const {
    return m_namesType ? Texts{entry.name, entry.type} : Texts{entry.name};
}
