#include "catalogue/exchange/FoodsCsv.h"

#include "platform/Messages.h"
#include "store/records/NutrientTable.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kTextFields = 4;     ///< number, category, name, type
constexpr int kFewestFields = 59;  ///< through the name of serving 1

CCsvVerdict Error(const char* message) {
    return {ECsvLine::Error, message};
}
}  // namespace

CFoodsCsv::CFoodsCsv(CDatabase& database, const QString& folder)
    : CTypedItemsCsv(database, ECatalogueKind::Foods, folder) {}

CCsvVerdict CFoodsCsv::ReadLine(QStringView line) {
    CCsvFields fields(line);
    if (const auto verdict = VerdictOnNumber(fields.Next())) {
        return *verdict;
    }
    const std::optional<QStringView> category = fields.Next();
    if (!category || category->isEmpty()) {
        return {};
    }
    m_food.SetCategoryId(CategoryIdOf(*category));
    const std::optional<QStringView> name = fields.Next();
    if (!name) {
        return WrongFieldCount(2);
    }
    if (name->isEmpty()) {
        return Error(Texts().invalidName);
    }
    const std::optional<QStringView> type = fields.Next();
    if (!type) {
        return WrongFieldCount(3);
    }
    if (type->isEmpty()) {
        return Error(Texts().invalidType);
    }
    int count = kTextFields + ReadNumbers(fields);
    count += ReadServings(fields);
    if (count < kFewestFields) {
        return WrongFieldCount(count);
    }
    m_food.SetName(CutImportedText(*name));
    m_food.SetType(CutImportedText(*type));
    return {ECsvLine::Item};
}

int CFoodsCsv::ReadNumbers(CCsvFields& fields) {
    int count = 0;
    NutrientValues values{};
    for (double& value : values) {
        const std::optional<double> number = fields.NextNumber();
        count += number ? 1 : 0;
        value = number.value_or(0);
    }
    m_food.SetNutrientValues(values);
    return count;
}

int CFoodsCsv::ReadServings(CCsvFields& fields) {
    int count = 0;
    for (int serving = 0; serving < kServingCount; ++serving) {
        const std::optional<QStringView> name = fields.Next();
        const std::optional<double> weight = name ? fields.NextNumber() : std::nullopt;
        count += (name ? 1 : 0) + (weight ? 1 : 0);
        // Serving 1 has been read, and its weight has decided the mode.
        const bool taken = (serving == 0 || m_food.IsWeighed()) && name && !name->isEmpty() &&
                           name->size() <= kLongestServingName;
        if (taken) {
            m_food.SetServingName(serving, name->toString());
        } else {
            m_food.SetServingName(serving, serving == 0 ? u"one serving"_s : QString());
        }
        m_food.SetServingWeight(serving, taken && weight ? *weight : 0);
    }
    return count;
}

void CFoodsCsv::WriteHeader(CCsvLineWriter& line) {
    line.Raw(Texts().columns);
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        line.Raw(QByteArray(",").append(NutrientNamesOf(nutrient).csvName));
    }
    for (int serving = 1; serving <= kServingCount; ++serving) {
        const QByteArray number = QByteArray::number(serving);
        line.Raw(",Serving size " + number + ",Serving weight " + number);
    }
    line.EndLine();
}

bool CFoodsCsv::WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) {
    if (!m_food.SetProperties(std::move(properties))) {
        return false;
    }
    line.Raw(QByteArray::number(number).rightJustified(4, '0') + ',');
    const qint32 categoryId = m_food.GetCategoryId();
    const QString category = CategoryNameOf(categoryId);
    line.Text(category.isEmpty()
                  ? FormatText("Undefined (UID=%d, IDX=%d)"_L1, {categoryId, kNoPosition})
                  : category);
    line.Text(m_food.GetName());
    line.Text(m_food.GetType());
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        line.Number(m_food.GetNutrientValue(nutrient));
    }
    for (int serving = 0; serving < kServingCount; ++serving) {
        const QString& name = m_food.GetServingNameW(serving);
        line.Text(name);
        line.Number(name.isEmpty() ? 0 : m_food.GetServingWeight(serving));
    }
    line.EndLine(m_food.GetName());
    return true;
}
