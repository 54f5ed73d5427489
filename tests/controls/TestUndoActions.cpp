#include <QAction>
#include <QTest>

#include "controls/UndoActions.h"

using namespace Qt::StringLiterals;

class TestUndoActions : public QObject {
    Q_OBJECT

  private slots:
    void aMenuNamesTheStepShortly() {
        QWidget view;
        QString name;
        const auto nothing = [] {};
        CUndoActions actions({.undoName = [&name] { return name; },
                              .redoName = [] { return QString(); },
                              .undo = nothing,
                              .redo = nothing,
                              .clear = nothing},
                             &view);
        const QString apple = u"\U0001F34E"_s;  // two units
        const std::pair<QString, QString> rows[] = {
            {QString(), u"Undo"_s},
            {u"edit of Salt & pepper"_s, u"Undo edit of Salt && pepper"_s},
            {QString(32, u'a'), u"Undo "_s + QString(32, u'a')},
            {QString(33, u'a'), u"Undo "_s + QString(32, u'a') + u'\u2026'},
            {QString(30, u'a') + apple + u'b', u"Undo "_s + QString(30, u'a') + apple + u'\u2026'},
            {QString(31, u'a') + apple, u"Undo "_s + QString(31, u'a') + u'\u2026'},
        };
        for (const auto& [step, text] : rows) {
            name = step;
            actions.Refresh();
            QCOMPARE(actions.MenuTail()[1]->text(), text);
            QCOMPARE(actions.MenuTail()[2]->text(), u"Redo"_s);
        }
    }
};

QTEST_MAIN(TestUndoActions)
#include "TestUndoActions.moc"
