// The exercise library's window and its dialogs over a real catalogue.
#include "catalogue/view/CatalogueViewFixture.h"
#include "exercise/ExerciseFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include "catalogue/items/ExlibEditDialog.h"
#include "catalogue/view/ExlibMainView.h"
#include "catalogue/view/ExlibPreferencesDialog.h"

namespace {
QLineEdit* Field(const QWidget& dialog, const char* name) {
    return Find<QComboBox>(dialog, name)->lineEdit();
}
}  // namespace

class TestExlibView : public CCatalogueViewTest {
    Q_OBJECT

  private slots:
    void energyStandsBehindNameAndType() {
        QCOMPARE(Listed(), u"Row, hard, |Run, fast, 12.50 kcal/min|Run, slow, 8.00"_s);
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        m_tree->setCurrentIndex(Node(0, 1));
        QCOMPARE(Listed(), u"Run, fast, 52.25 kJ/min|Run, slow, 8.00"_s);  // 12.5 x 4.18
        for (const int width : {240, 700}) {
            m_view->resize(width, 320);
            const std::vector<int> widths = m_list->GetColumnWidths();
            QCOMPARE(widths[2], m_list->fontMetrics().horizontalAdvance(u"00.00 kcal/min"_s) + 12);
            QVERIFY(widths[0] > 50 && widths[1] > 50);
            QCOMPARE(widths[0] + widths[1] + widths[2], m_list->viewport()->width());
        }
    }

    void aNewExerciseTakesTheSelectedName() {
        m_list->SelectRow(1);
        OnDialog<CExlibEditDialog>([](CExlibEditDialog& dialog) {
            QTest::keyClicks(Field(dialog, "type"), u"uphill"_s);
            QTest::keyClicks(Find<QLineEdit>(dialog, "energy"), u"9"_s);
            Press(dialog, "ok");
        });
        Trigger("New exercise");
        QCOMPARE(Listed().section(u'|', 2), u"Run, slow, 8.00|Run, uphill, 9.00 kcal/min"_s);
        QCOMPARE(Selected(), u"Run, uphill, 9.00 kcal/min"_s);
    }

    void aToggledRatingStartsFromNothing() {
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
        m_list->SelectRow(0);
        OnDialog<CExlibEditDialog>([](CExlibEditDialog& dialog) {
            auto* rows = Find<CReportList>(dialog, "pickListRows");
            QTest::keyClick(Find<QComboBox>(dialog, "name"), Qt::Key_Down);
            Press(dialog, "cancel");
            QVERIFY(dialog.isVisible());  // only the list has closed
            QString picked;
            for (const auto& [field, key] :
                 {std::pair("name", Qt::Key_Down), {"type", Qt::Key_S}}) {
                QTest::keyClick(Find<QComboBox>(dialog, field), Qt::Key_Down);
                QTest::keyClick(rows, key);
                QTest::keyClick(rows, Qt::Key_Return);
                picked +=
                    Field(dialog, "name")->text() + u',' + Field(dialog, "type")->text() + u' ';
            }
            QCOMPARE(picked, u"Run,hard Run,slow "_s);
        });
        Trigger("Edit exercise");
    }

    void theWindowsSettingsAreKept() {
        (void)m_view->CommandBar();
        OnDialog<CExlibPreferencesDialog>([](CExlibPreferencesDialog& dialog) {
            QTest::keyClick(Find<QCheckBox>(dialog, "namesInTree"), Qt::Key_Space);
            dialog.accept();
        });
        Trigger("Preferences");
        QVERIFY(!m_tree->model()->hasChildren(Node(0)));
        m_doc->CatalogueState(kExercises).splitterPerMille = 600;
        m_view->StoreLayout();
        Reopen();
        const CCatalogueViewSettings stored = CCatalogueViewSettings::Load(Database(), kExercises);
        QCOMPARE(stored.splitterPerMille, 600);
        QVERIFY(!stored.namesInTree);
    }

    void init() {
        MakeVolume();
        const qint32 sport = AddCategory(Database(), u"Sport"_s, kExercises);
        AddToLibrary(Database(), sport, u"Run"_s, u"slow"_s, 0, 8);
        AddToLibrary(Database(), sport, u"Run"_s, u"fast"_s, 12.5, 8);  // the rate comes first
        AddToLibrary(Database(), sport, u"Row"_s, u"hard"_s, 0, 0);
        Open<CExlibMainView>();
    }
    void cleanup() { Close(); }
};

QTEST_MAIN(TestExlibView)
#include "TestExlibView.moc"
