#include "catalogue/exchange/ExlibCsv.h"

using namespace Qt::StringLiterals;

namespace {
CCsvVerdict Error(const char* message) {
    return {ECsvLine::Error, message};
}
}  // namespace

CCsvVerdict CExlibCsv::ReadLine(QStringView line) {
    CCsvFields fields(line);
    const std::optional<QStringView> number = fields.Next();
    // The number itself may be empty.
    if (number && !number->isEmpty()) {
        if (const auto verdict = VerdictOnNumber(number)) {
            return *verdict;
        }
    }
    const std::optional<QStringView> category = fields.Next();
    if (!category) {
        return {};
    }
    if (category->isEmpty()) {
        return Error("Invalid category name in line %d. Skipped.");
    }
    m_exercise.SetCategoryId(CategoryIdOf(*category));
    const QStringView name = fields.Next().value_or(QStringView());
    if (name.isEmpty()) {
        return Error(Texts().invalidName);
    }
    const QStringView type = fields.Next().value_or(QStringView());
    if (type.isEmpty()) {
        return Error(Texts().invalidType);
    }
    m_exercise.SetName(CutImportedText(name));
    m_exercise.SetType(CutImportedText(type));
    m_exercise.SetMet(fields.NextNumber().value_or(0));
    m_exercise.SetEnergyRateKcalPerMinute(fields.NextNumber().value_or(0));
    return {ECsvLine::Item};
}

void CExlibCsv::WriteHeader(CCsvLineWriter& line) {
    line.Raw(Texts().columns);
    line.Raw(",Energy (MET),Energy (kcal/min)");
    line.EndLine();
}

bool CExlibCsv::WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) {
    if (!m_exercise.SetProperties(std::move(properties))) {
        return false;
    }
    const QString category = CategoryNameOf(m_exercise.GetCategoryId());
    line.Raw(QByteArray::number(number).rightJustified(4, '0') + ',');
    line.Text(category.isEmpty() ? u"Undefined"_s : category);
    line.Text(m_exercise.GetName());
    line.Text(m_exercise.GetType());
    line.Number(m_exercise.GetMet());
    line.Number(m_exercise.GetEnergyRateKcalPerMinute());
    line.EndLine(m_exercise.GetName());
    return true;
}
