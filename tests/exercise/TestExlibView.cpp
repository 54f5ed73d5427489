// The exercise library's window and its dialogs over a real catalogue.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QTreeView>

#include "controls/PickList.h"
#include "controls/ReportList.h"
#include "exercise/ExlibEditDialog.h"
#include "exercise/ExlibMainView.h"
#include "support/CatalogueTest.h"
#include "support/Clicks.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kExercises = ECatalogueKind::Exercises;

QLineEdit* Field(const QWidget& dialog, const char* name) {
    return Find<QComboBox>(dialog, name)->lineEdit();
}
}  // namespace

class TestExlibView : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void energyStandsBehindNameAndType() {
        Open();
        QCOMPARE(Listed(), u"Row, hard, |Run, fast, 12.50 kcal/min|Run, slow, 8.00"_s);
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        m_tree->expandAll();
        m_tree->setCurrentIndex(m_tree->model()->index(1, 0, m_tree->model()->index(0, 0)));
        QCOMPARE(Listed(), u"Run, fast, 52.25 kJ/min|Run, slow, 8.00"_s);  // 12.5 x 4.18
        for (const int width : {240, 700}) {
            m_view->resize(width, 320);
            const std::vector<int> widths = m_list->GetColumnWidths();
            QVERIFY(widths[2] > m_list->fontMetrics().horizontalAdvance(u"00.00 kJ/min"_s));
            QVERIFY(widths[0] > 50 && widths[1] > 50);
        }
    }

    void aNewExerciseTakesTheSelectedName() {
        Open();
        m_list->SelectRow(1);
        OnDialog<CExlibEditDialog>([](CExlibEditDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Edit exlib"_s);
            QCOMPARE(Field(dialog, "name")->text(), u"Run"_s);
            QTest::keyClicks(Field(dialog, "type"), u"uphill"_s);
            QTest::keyClicks(Find<QLineEdit>(dialog, "energy"), u"9"_s);
            Press(dialog, "ok");
        });
        Trigger("New exercise");
        QCOMPARE(
            Listed(),
            u"Row, hard, |Run, fast, 12.50 kcal/min|Run, slow, 8.00|Run, uphill, 9.00 kcal/min"_s);
        QCOMPARE(m_list->SelectedRows(), std::vector<int>{3});
    }

    void aToggledRatingStartsFromNothing() {
        Open();
        m_list->SelectRow(2);
        OnDialog<CExlibEditDialog>([this](CExlibEditDialog& dialog) {
            auto* energy = Find<QLineEdit>(dialog, "energy");
            auto* met = Find<QCheckBox>(dialog, "met");
            QVERIFY(met->isChecked());
            QCOMPARE(energy->text() + Find<QLabel>(dialog, "unit")->text(), u"8.00"_s);
            QTest::keyClick(met, Qt::Key_Space);
            QCOMPARE(energy->text() + Find<QLabel>(dialog, "unit")->text(), u"kcal/min"_s);
            Press(dialog, "ok");
            QCOMPARE(m_messages->Said(), u"Please enter exercise energy value"_s);
            QTest::keyClicks(energy, u"7.5"_s);
            QTest::keyClick(energy, Qt::Key_Return);
        });
        Trigger("Edit exercise");
        QCOMPARE(Listed().section(u'|', 2), u"Run, slow, 7.50 kcal/min"_s);
    }

    void namesAndTypesCanBePicked() {
        Open();
        m_list->SelectRow(0);
        OnDialog<CExlibEditDialog>([this](CExlibEditDialog& dialog) {
            auto* list = Find<CPickList>(dialog, "pickList");
            auto* rows = Find<CReportList>(dialog, "pickListRows");
            QTest::keyClick(Find<QComboBox>(dialog, "name"), Qt::Key_Down);
            QTest::keyClick(rows, Qt::Key_Down);
            QTest::keyClick(rows, Qt::Key_Return);
            QCOMPARE(Field(dialog, "name")->text(), u"Run"_s);
            QCOMPARE(Field(dialog, "type")->text(), u"hard"_s);
            QTest::keyClick(Find<QComboBox>(dialog, "type"), Qt::Key_Down);
            for (const char* button : {"ok", "cancel"}) {
                QVERIFY(list->IsOpen());
                Press(dialog, button);
                QVERIFY(!list->IsOpen() && dialog.isVisible());
                QTest::keyClick(Find<QComboBox>(dialog, "type"), Qt::Key_Down);
            }
            QTest::keyClick(rows, Qt::Key_S);
            QTest::keyClick(rows, Qt::Key_Return);
            Press(dialog, "ok");
            QCOMPARE(m_messages->Said(),
                     u"Exercise 'Run, slow' already exists in category 'Sport'."_s);
        });
        Trigger("Edit exercise");
    }

    void theTreesOwnMenuAndTheWindowsSettings() {
        Open();
        QTimer::singleShot(0, [] {
            auto* menu = QApplication::activePopupWidget();
            QStringList texts;
            for (const QAction* action : menu->actions()) {
                texts.append(action->text());
            }
            menu->close();
            QVERIFY(texts.contains(u"Delete category"_s));
        });
        emit m_tree->customContextMenuRequested({});
        (void)m_view->CommandBar();
        OnDialog<CExlibPreferencesDialog>([](CExlibPreferencesDialog& dialog) {
            QTest::keyClick(Find<QCheckBox>(dialog, "namesInTree"), Qt::Key_Space);
            dialog.accept();
        });
        Trigger("Preferences");
        QVERIFY(!m_tree->model()->hasChildren(m_tree->model()->index(0, 0)));
        m_doc->CatalogueState(kExercises).splitterPerMille = 600;
        m_view->StoreLayout();
        Reopen();
        const CExlibViewSettings stored = CExlibViewSettings::Load(Database());
        QCOMPARE(stored.splitterPerMille, 600);
        QVERIFY(!stored.namesInTree);
    }

    void init() { MakeVolume(); }
    void cleanup() {
        m_view.reset();
        DropVolume();
    }

  private:
    void Open() {
        const qint32 sport = AddCategory(Database(), u"Sport"_s, kExercises);
        const std::tuple<const char*, const char*, double, double> exercises[] = {
            {"Run", "slow", 0, 8}, {"Run", "fast", 12.5, 0}, {"Row", "hard", 0, 0}};
        for (const auto& [name, type, rate, met] : exercises) {
            CExerciseItem item;
            item.SetCategoryId(sport);
            item.SetName(QString::fromLatin1(name));
            item.SetType(QString::fromLatin1(type));
            item.SetEnergyRateKcalPerMinute(rate);
            item.SetMet(met);
            QVERIFY(Database().Exlib().Write(-1, item));
        }
        m_view = std::make_unique<CExlibMainView>(*m_doc, nullptr);
        m_tree = Find<QTreeView>(*m_view, "categories");
        m_list = Find<CReportList>(*m_view, "items");
        m_view->resize(600, 400);
        Show(*m_view);
    }
    void Trigger(const char* command) { Find<QAction>(*m_view, command)->trigger(); }
    /// Cells with ", " between them, a row between two '|'.
    QString Listed() const {
        QStringList rows;
        for (int row = 0; row < m_list->RowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < 3; ++column) {
                cells.append(m_list->model()->index(row, column).data().toString());
            }
            rows.append(cells.join(u", "_s));
        }
        return rows.join(u'|');
    }

    std::unique_ptr<CExlibMainView> m_view;
    QTreeView* m_tree = nullptr;
    CReportList* m_list = nullptr;
};

QTEST_MAIN(TestExlibView)
#include "TestExlibView.moc"
