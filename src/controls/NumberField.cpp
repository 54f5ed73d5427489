#include "controls/NumberField.h"

#include <QValidator>
#include <algorithm>

namespace {

class CNoLetters : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& text, int& /*position*/) const override {
        const bool hasLetter =
            std::ranges::any_of(text, [](QChar character) { return character.isLetter(); });
        return hasLetter ? Invalid : Acceptable;
    }
};

}  // namespace

QLineEdit* CreateNumberField(const QString& objectName, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(objectName);
    field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    field->setValidator(new CNoLetters(field));
    return field;
}
