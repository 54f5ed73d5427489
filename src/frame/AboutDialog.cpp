#include "frame/AboutDialog.h"

#include <sqlite3.h>

#include <QDir>
#include <QFontInfo>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CAboutDialog::CAboutDialog(const QString& backupFolder, QWidget* parent)
    : CDialog(u"About Velmora"_s, parent) {
    QLabel* title = AddText(u"Velmora "_s + QStringLiteral(VELMORA_VERSION), u"title"_s);
    QFont large = title->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.5);
    large.setBold(true);
    title->setFont(large);
    AddText(
        u"A personal diet diary: meals, weights and exercise, day by day, against your own "
        "targets."_s,
        u"purpose"_s);
    AddText(u"Backups are in:\n"_s + QDir::toNativeSeparators(backupFolder), u"backups"_s);
    AddText(
        u"Built with:\n"
        "Qt %1, GNU Lesser General Public License version 3\n"
        "SQLite %2, public domain"_s.arg(QString::fromLatin1(qVersion()),
                                         QString::fromLatin1(sqlite3_libversion())),
        u"libraries"_s);
    Content()->addStretch();
    for (auto* text : findChildren<QLabel*>()) {
        text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    HideCancel();
    SetPreferredSize(360, 240);
}
