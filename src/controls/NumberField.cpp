#include "controls/NumberField.h"

#include <QValidator>
#include <algorithm>

namespace {

class CNoLetters : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& text, int& /*position*/) const override {
        return HasLetter(text) ? Invalid : Acceptable;
    }
};

}  // namespace

bool HasLetter(QStringView text) {
    return std::ranges::any_of(text, [](QChar character) { return character.isLetter(); });
}

QLineEdit* CreateNumberField(const QString& objectName, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(objectName);
    field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    field->setValidator(new CNoLetters(field));
    return field;
}
