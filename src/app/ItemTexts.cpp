#include "app/ItemTexts.h"

QString NameAndType(const QString& name, const QString& type) {
    return type.isEmpty() ? name : name + u',' + type;
}

QString ServingText(const QString& amount, const QString& serving) {
    return amount + u'x' + serving;
}
