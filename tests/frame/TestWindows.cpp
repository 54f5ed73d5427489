// What each view shows and offers, and each dialog that its commands open.
#include "FrameFixture.h"

#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>
#include <QToolTip>

#include "controls/Dialog.h"
#include "diary/weight/WeightGraph.h"
#include "support/DataRows.h"
#include "support/Drawing.h"
#include "support/Portrait.h"
#include "support/SeenText.h"

namespace {
/// What stands below the content of a dialog.
const QString kOkAndCancel = u"(6,0,6,6 ~0 ( ~0 ok=[OK]!? w+24 cancel=[Cancel]? w+24)))"_s;
/// Versions of the libraries and of this program, the age today, and the folder of the volume.
const QRegularExpression kPassing(u"\\d+(\\.\\d+){2}|v\\d+\\.\\d+|\\d+(?= ys)|/\\S+(?=/v\\.db)"_s);
const QRegularExpression kNewOrEdit(u"^(New|Edit) (?=food)"_s);
const QRegularExpression kOfEveryDiary(u"^(Open|Report|Pref|User|Target|Purge|About|Backgr)"_s);
}  // namespace

class TestWindows : public CFrameTest {
    Q_OBJECT

  private slots:
    void viewsAndTheirDialogsShowWhatTheyShould_data() {
        AddRows<int>({{"diet", kSwitchToDiet},
                      {"weight", kSwitchToWeight},
                      {"exercises", kSwitchToExercises},
                      {"foods", kSwitchToFoods},
                      {"recipes", kSwitchToRecipes},
                      {"exlib", kSwitchToExlib}});
    }
    void viewsAndTheirDialogsShowWhatTheyShould() {
        const auto& [command] = DataRow<int>();
        const QByteArray name = QTest::currentDataTag();
        CShownFrame frame(*m_doc, command, {900, 700});
        // The bar of days is the same in all of them.
        const QWidget* parts = frame.ActiveView()->findChild<QSplitter*>();
        parts = command == kSwitchToDiet ? frame.ActiveView() : parts;
        Compare(CPortrait::Of(*parts), name, name);
        Compare(Commands(frame), name + " commands", "diet commands");
        for (auto* list : frame.ActiveView()->findChildren<CReportList*>()) {
            list->SelectRow(0);
        }
        const bool isLikeDiet = command == kSwitchToWeight || command == kSwitchToExercises;
        for (auto* action : frame.ActiveView()->findChildren<QAction*>()) {
            const bool isShared = isLikeDiet && kOfEveryDiary.match(action->text()).hasMatch();
            if (kAsking.match(action->text()).hasMatch() && !isShared) {
                const QString dialog = DialogOf(*action);
                Compare(dialog, name + ": " + action->text().toLatin1(),
                        dialog.section(u" ("_s, 0, 0).remove(kNewOrEdit).toLatin1());
            }
        }
    }

    void aGraphDrawsItsData_data() {
        AddRows<int, EWeightUnit, EGraphSpan>({
            {"weight graph", kSwitchToWeight, EWeightUnit::Kilograms, EGraphSpan::All},
            {"weight graph in pounds", kSwitchToWeight, EWeightUnit::Stones, EGraphSpan::Month},
            {"exercises graph", kSwitchToExercises, {}, {}},
            {"exercises graph in kJ", kSwitchToExercises, {}, {}},
        });
    }
    void aGraphDrawsItsData() {
        const auto& [command, weightUnit, span] = DataRow<int, EWeightUnit, EGraphSpan>();
        const QByteArray name = QTest::currentDataTag();
        CPreferences& preferences = m_doc->Settings().preferences;
        preferences.weightUnit = weightUnit;
        preferences.energyUnit = name.endsWith("kJ") ? EEnergyUnit::KJ : EEnergyUnit::Kcal;
        m_doc->weightGraphSpan = static_cast<int>(span);
        for (const auto& [day, kg] : {std::pair(-40, 90.0), {-20, 82}, {-10, 84}}) {
            QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay.addDays(day), QTime(12, 0), kg)));
        }
        AddDone(u"Row"_s, kDay.addDays(-2), QTime(8, 0), 10, 500);
        AddEntry(u"Feast"_s, QTime(12, 0), 2, 2600);
        CTargets& targets = m_doc->Settings().targets;
        targets.startDate = kDay.addDays(-100);
        targets.goalDate = kDay.addDays(100);
        targets.startWeightKg = 100;
        targets.goalWeightKg = 60;
        targets.nutrients[kEnergyIndex] = 2000;
        CShownFrame frame(*m_doc, command, {900, 700});
        QCoreApplication::processEvents();  // lays the view out
        auto* graph = Find<QWidget>(*frame.ActiveView(), "graph");
        QStringList tips;
        for (int i = 0; i < graph->width() * graph->height() / 16; ++i) {
            const QPoint place = QPoint(i / (graph->height() / 4), i % (graph->height() / 4)) * 4;
            QHelpEvent help(QEvent::ToolTip, place, graph->mapToGlobal(place));
            QApplication::sendEvent(graph, &help);
            tips.append(QToolTip::text());
        }
        tips.removeDuplicates();
        QCOMPARE(tips.join(u"; "_s).remove(QRegularExpression(u"^; "_s)),
                 graph->accessibleDescription());
        Compare(CDrawing(*graph).Text() + u" says "_s + graph->accessibleDescription(), name,
                command == kSwitchToWeight ? "weight graph" : "exercises graph");
    }

    void init() { FillEveryView(); }

  private:
    /// Of what is like another, only how many words it has and those that the first has not.
    void Compare(const QString& shown, const QByteArray& name, const QByteArray& like) {
        QStringList words = shown.simplified().split(u' ');
        if (const QStringList first = m_first.value(like); !first.isEmpty()) {
            const qsizetype count = words.size();
            words.removeIf([&](const QString& word) { return first.contains(word); });
            words.prepend(u"like '%1', %2 words:"_s.arg(QLatin1StringView(like)).arg(count));
        } else {
            m_first.insert(like, words);
        }
        m_seen.Compare(QString::fromUtf8(name), CSeenText::Wrapped(words.join(u' ')));
    }
    /// It also has to fit into the smallest screen.
    static QString DialogOf(QAction& command) {
        QString shown;
        OnDialog<CDialog>([&](CDialog& dialog) {
            shown = CPortrait::Of(dialog);
            dialog.resize(240, 320);
            QCoreApplication::processEvents();
            QCOMPARE(Find<QScrollArea>(dialog, "content")->horizontalScrollBar()->maximum(), 0);
        });
        command.trigger();
        return shown.replace(kPassing, u"#"_s).replace(kOkAndCancel, u"OK Cancel"_s);
    }
    /// The menus of the command bar, those that pop up, and the tool buttons. A shortcut may work
    /// "here", in its list alone, or "within" the view.
    static QString Commands(CDietFrame& frame) {
        QStringList texts;
        for (const QAction* menu : frame.menuBar()->actions()) {
            emit menu->menu()->aboutToShow();
            texts.append(menu->text() + u": "_s + CommandsOf(menu->menu()->actions()));
        }
        for (auto* widget : frame.ActiveView()->findChildren<QWidget*>()) {
            if (widget->contextMenuPolicy() == Qt::CustomContextMenu) {
                QTimer::singleShot(0, widget, [&texts, widget] {
                    auto* menu = QApplication::activePopupWidget();
                    texts.append(widget->objectName() + u": "_s +
                                 CommandsOf(menu->actions(), false));
                    menu->close();
                });
                emit widget->customContextMenuRequested({});
            }
        }
        QString buttons;
        for (const QAction* action : Find<QToolBar>(frame, "commands")->actions()) {
            buttons += action->isSeparator()
                           ? u"- "_s
                           : action->toolTip() + CPortrait::InkOf(action->icon()) +
                                 (action->isChecked() ? u"^; "_s : u"; "_s);
        }
        return texts.join(u' ') + u" buttons: "_s + buttons;
    }
    static QString CommandsOf(const QList<QAction*>& actions, bool withKeys = true) {
        QString texts;
        for (const QAction* action : actions) {
            const QString keys = QKeySequence::listToString(action->shortcuts());
            const auto reach = action->shortcutContext();
            texts += action->isSeparator() ? u"-"_s : action->text();
            texts += withKeys && !keys.isEmpty() ? u'<' + keys + u'>' : QString();
            texts += !withKeys || reach == Qt::WindowShortcut ? QString()
                     : reach == Qt::WidgetShortcut            ? u" here"_s
                                                              : u" within"_s;
            texts += action->isCheckable() ? u" on/off; "_s : u"; "_s;
        }
        return texts;
    }

    CSeenText m_seen{VELMORA_WINDOWS};
    QMap<QByteArray, QStringList> m_first;
};

QTEST_MAIN(TestWindows)
#include "TestWindows.moc"
