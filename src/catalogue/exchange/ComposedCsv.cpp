#include "catalogue/exchange/ComposedCsv.h"

#include "catalogue/exchange/InstructionsField.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kLongestNumber = 19;
/// Fields before the values: number, item type, category, name, food name.
constexpr int kFirstValue = 5;
/// One more than there are nutrients.
constexpr int kValuesRead = kNutrientCount + 1;

CCsvVerdict Error(const char* message) {
    return {ECsvLine::Error, message};
}

CCsvVerdict Fatal(const char* message) {
    return {ECsvLine::Error, message, -1, true};
}

bool HasLength(QStringView field, int most) {
    return !field.isEmpty() && field.size() <= most;
}
}  // namespace

CComposedCsv::CComposedCsv(CDatabase& database, ECatalogueKind kind, const QString& folder)
    : m_database(database),
      m_kind(kind),
      m_texts(KindOf(kind).exchange),
      m_categories(database, kind, folder),
      m_existing(database, kind),
      m_item(kind) {}

CCsvVerdict CComposedCsv::ReadLine(QStringView line) {
    CCsvFields fields(line);
    if (const auto verdict = VerdictOnNumber(fields.Next())) {
        return *verdict;
    }
    const CCsvVerdict verdict = ReadRecord(fields);
    if (verdict.line == ECsvLine::Error) {
        RememberRefused(line);
    }
    return verdict;
}

CCsvVerdict CComposedCsv::ReadRecord(CCsvFields& fields) {
    m_item.Clear();
    if (const auto verdict = ReadItemType(fields.Next())) {
        return *verdict;
    }
    if (const auto verdict = ReadOwnerNames(fields)) {
        return *verdict;
    }
    if (const auto verdict = ReadFoodName(fields.Next())) {
        return *verdict;
    }
    return ReadValues(fields);
}

std::optional<CCsvVerdict> CComposedCsv::ReadItemType(const std::optional<QStringView>& field) {
    if (!field) {
        return WrongFieldCount(1);
    }
    const bool isOwner = *field == QLatin1StringView(m_texts.itemType);
    if (!isOwner && *field != "Food"_L1 && *field != "Recipe"_L1) {
        return Error("Invalid item type in line %d. Skipped.");
    }
    m_isComponent = !isOwner;
    m_item.SetItemKind(*field == "Food"_L1     ? EItemKind::Food
                       : *field == "Recipe"_L1 ? EItemKind::Recipe
                                               : EItemKind::Menu);
    return std::nullopt;
}

std::optional<CCsvVerdict> CComposedCsv::ReadOwnerNames(CCsvFields& fields) {
    const std::optional<QStringView> category = fields.Next();
    if (!category) {
        return WrongFieldCount(2);
    }
    if (!HasLength(*category, kLongestText)) {
        return Fatal("Invalid category in line %d. Skipped.");
    }
    m_categoryName = category->toString();
    m_categoryId = m_categories.IdOf(m_categoryName);
    const std::optional<QStringView> name = fields.Next();
    if (!name) {
        return WrongFieldCount(3);
    }
    if (!HasLength(*name, kLongestText)) {
        return Fatal(m_texts.invalidName);
    }
    m_item.SetName(name->toString());  // cut to what a record holds
    if (m_isComponent && !FindOwner(m_categoryName, m_item.GetName())) {
        return Fatal(m_texts.noOwner);
    }
    if (m_isComponent && m_refused.contains({m_categoryName, m_item.GetName()})) {
        return CCsvVerdict{};
    }
    return std::nullopt;
}

std::optional<CCsvVerdict> CComposedCsv::ReadFoodName(const std::optional<QStringView>& field) {
    if (!field) {
        return WrongFieldCount(4);
    }
    if (m_isComponent) {
        if (!HasLength(*field, kLongestText)) {
            return Error("Invalid food type in line %d. Skipped.");
        }
        m_item.SetName(field->toString());
    }
    return std::nullopt;
}

CCsvVerdict CComposedCsv::ReadValues(CCsvFields& fields) {
    for (int value = 0; value < kValuesRead; ++value) {
        const std::optional<double> number = fields.NextNumber();
        if (!number) {
            return WrongFieldCount(kFirstValue + value);
        }
        SetValue(value, *number);
    }
    const std::optional<QStringView> serving = fields.Next();
    if (!serving) {
        return WrongFieldCount(kFirstValue + kValuesRead);
    }
    if (!HasLength(*serving, kLongestServingName)) {
        return Error("Invalid serving size in line %d. Skipped.");
    }
    m_item.SetServingName(serving->toString());
    const std::optional<QStringView> servings = fields.Next();
    if (!servings) {
        return WrongFieldCount(kFirstValue + kValuesRead + 1);
    }
    if (!HasLength(*servings, kLongestNumber)) {
        return Error("Invalid number of servings in line %d. Skipped.");
    }
    m_item.SetServingX(ImportedNumber(*servings));
    if (IsRecipes()) {
        const std::optional<QStringView> instructions = fields.Next();
        if (!instructions) {
            return WrongFieldCount(kFirstValue + kValuesRead + 2);
        }
        m_item.SetInstructions(UnescapedInstructions(*instructions));
    }
    return {m_isComponent ? ECsvLine::Component : ECsvLine::Item};
}

void CComposedCsv::SetValue(int index, double value) {
    const bool isWrong = index >= kNutrientCount;
    if (isWrong && m_progress != nullptr) {
        m_progress->Hide();
    }
    m_item.SetNutrientValue(index, value);
    if (isWrong && m_progress != nullptr) {
        m_progress->Show();
    }
}

void CComposedCsv::RememberRefused(QStringView line) {
    CCsvFields fields(line);
    (void)fields.Next();
    const auto next = [&fields] { return fields.Next().value_or(QStringView()); };
    const QStringView itemType = next();
    const QString category = next().toString();
    m_item.SetName(next().toString());
    const bool isComponent = itemType == "Food"_L1 || itemType == "Recipe"_L1;
    // A line of an unknown type is that of a menu (recipe) itself when its food name is empty.
    const bool isOwner =
        itemType == QLatin1StringView(m_texts.itemType) || (!isComponent && next().isEmpty());
    if (isOwner) {
        m_refused.insert({category, m_item.GetName()});
    }
}

bool CComposedCsv::FindOwner(const QString& category, const QString& name) {
    if (m_owner.itemId != 0 && m_owner.category == category && m_owner.name == name) {
        return true;
    }
    const int position = m_categoryId < 0 ? kNoPosition : m_existing.Find(m_categoryId, name, {});
    m_owner = {category, name, position < 0 ? 0 : ItemIdAt(position), false};
    return m_owner.itemId != 0;
}

qint32 CComposedCsv::ItemIdAt(int position) {
    CComposedItem item(m_kind);
    return m_database.Items(m_kind).ReadQuietly(position, item) ? item.GetItemId() : 0;
}

EStored CComposedCsv::Store(EDuplicatePolicy policy) {
    if (!m_isComponent) {
        return StoreOwner(policy);
    }
    const bool isKept = policy == EDuplicatePolicy::Skip && !m_taken.contains(m_owner.itemId);
    if (isKept || m_owner.isSkipped) {
        return EStored::Uncounted;
    }
    m_item.SetParentId(m_owner.itemId);
    return m_database.Items(m_kind).Write(kNoPosition, m_item) ? EStored::Uncounted
                                                               : EStored::Failed;
}

EStored CComposedCsv::StoreOwner(EDuplicatePolicy policy) {
    if (m_categoryId < 0) {
        return EStored::Failed;
    }
    // Sought even with DoNotCheck, since components look up their owner among the items noted.
    const int found = m_existing.Find(m_categoryId, m_item.GetName(), {});
    const int position = policy == EDuplicatePolicy::DoNotCheck ? kNoPosition : found;
    qint32 itemId = position < 0 ? 0 : ItemIdAt(position);
    const bool isSkipped = position >= 0 && policy == EDuplicatePolicy::Skip;
    if (!isSkipped && itemId < kFirstComposedId) {
        itemId = m_database.Composed().AllocateItemId(m_kind);  // a new item or a damaged one
    }
    m_owner = {m_categoryName, m_item.GetName(), itemId, isSkipped};
    m_refused.remove({m_categoryName, m_item.GetName()});
    if (isSkipped) {
        return EStored::Skipped;
    }
    m_taken.insert(itemId);
    m_item.SetParentId(m_categoryId);
    m_item.SetItemId(itemId);
    if ((position >= 0 && !m_database.Composed().DeleteComponents(m_kind, itemId)) ||
        !m_database.Items(m_kind).Write(position, m_item)) {
        return EStored::Failed;
    }
    if (position >= 0) {
        return EStored::Replaced;
    }
    m_existing.NoteAdded();
    return EStored::Added;
}

void CComposedCsv::WriteHeader(CCsvLineWriter& line) {
    line.Raw(m_texts.columns);
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        line.Raw(QByteArray(",").append(NutrientNamesOf(nutrient).csvName));
    }
    line.Raw(",Serving size,Number of servings");
    if (IsRecipes()) {
        line.Raw(",Instructions");
    }
    line.EndLine();
}

bool CComposedCsv::WriteItem(CCsvLineWriter& line, PropertyList& properties, int) {
    if (!m_item.SetProperties(std::move(properties))) {
        return false;
    }
    QString category = m_categories.NameOf(m_item.GetParentId());
    if (category.isEmpty()) {
        category = u"Undefined"_s;
    }
    WriteRecord(line, m_item, category, m_item);
    CComposedItem component(m_kind);
    for (const int position :
         m_database.Composed().ComponentPositions(m_kind, m_item.GetItemId(), &m_leftOutParts)) {
        if (m_database.Items(m_kind).Read(position, component)) {
            WriteRecord(line, component, category, m_item);
        } else {
            ++m_leftOutParts.damaged;
        }
    }
    return true;
}

void CComposedCsv::WriteRecord(CCsvLineWriter& line, const CComposedItem& record,
                               const QString& category, const CComposedItem& owner) {
    const bool isOwner = &record == &owner;
    line.Raw(QByteArray::number(owner.GetItemId()) + ',');
    if (isOwner) {
        line.Raw(m_texts.itemType);
        line.Raw(",");
    } else if (record.GetItemKind() == EItemKind::Food) {
        line.Raw("Food,");
    } else if (record.GetItemKind() == EItemKind::Recipe && !IsRecipes()) {
        line.Raw("Recipe,");
    } else {
        line.Raw("Undefined");  // without a comma: the format has always been so
    }
    line.Text(category);
    line.Text(owner.GetName());
    if (isOwner) {
        line.Raw(",");
    } else {
        line.Text(record.GetName());
    }
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        line.Number(record.GetNutrientValue(nutrient));
    }
    line.Text(record.GetServingName());
    line.Number(record.GetServingX());
    if (IsRecipes()) {
        line.EscapedText(isOwner ? EscapedInstructions(record.GetInstructions()) : QString());
    }
    line.EndLine(owner.GetName());
}
