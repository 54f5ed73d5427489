#include "frame/AboutDialog.h"

#include <sqlite3.h>

#include <QDir>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CAboutDialog::CAboutDialog(const QString& backupFolder, QWidget* parent)
    : CDialog(u"About Velmora"_s, parent) {
    const auto addText = [this](const QString& text, const QString& name) {
        auto* label = new QLabel(text);
        label->setObjectName(name);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        Content()->addWidget(label);
        return label;
    };
    QLabel* title = addText(u"Velmora "_s + QStringLiteral(VELMORA_VERSION), u"title"_s);
    QFont large = title->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.5);
    large.setBold(true);
    title->setFont(large);
    addText(
        u"A personal diet diary: meals, weights and exercise, day by day, against your own "
        "targets."_s,
        u"purpose"_s);
    addText(u"Backups are in:\n"_s + QDir::toNativeSeparators(backupFolder), u"backups"_s);
    addText(
        u"Built with:\n"
        "Qt %1, GNU Lesser General Public License version 3\n"
        "SQLite %2, public domain"_s.arg(QString::fromLatin1(qVersion()),
                                         QString::fromLatin1(sqlite3_libversion())),
        u"libraries"_s);
    Content()->addStretch();
    // There is nothing to cancel.
    findChild<QPushButton*>(u"cancel"_s)->hide();
    SetPreferredSize(360, 240);
}
