// What the windows of the catalogue show of damage, pictures and an empty volume.
#include <QAbstractItemModelTester>
#include <QAction>
#include <QBuffer>
#include <QImage>
#include <QRadioButton>
#include <QTreeView>
#include <QtEndian>

#include "catalogue/pick/FindItems.h"
#include "catalogue/view/CategoryTreeModel.h"
#include "catalogue/view/ComposedMainView.h"
#include "catalogue/view/FoodsMainView.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"
#include "support/ComposedSamples.h"

class TestFoodsMainView : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void whatTheListLeavesOutIsSaidUnderIt() {
        Fill();
        AddPears(1030);
        Damage(Database().Foods(), 0);
        Damage(Database().Foods(), 5);
        Open();
        QCOMPARE(NoteOf(*m_view), u"1 damaged food is left out."_s);
        m_tree->setCurrentIndex(Node(1));
        // An apple and 1,030 pears.
        QCOMPARE(NoteOf(*m_view), u"Showing 1024 of 1031 foods. 1 damaged food is left out."_s);
        QCOMPARE(Find<CReportList>(*m_view, "items")->RowCount(), 1024);
        m_tree->setCurrentIndex(Node(1, 1));
        QCOMPARE(NoteOf(*m_view), u"1 damaged food is left out."_s);
        Find<QAction>(*m_view, "New category")->trigger();
        QCOMPARE(NoteOf(*m_view), QString());
    }

    void theFilterReadsNothingButWhatItFinds() {
        Fill();
        AddPears(10100);
        Open();
        m_tree->setCurrentIndex(Node(1));
        auto* filter = Find<QLineEdit>(*m_view, "filter");
        auto* list = Find<CReportList>(*m_view, "items");
        const auto* hint = Find<QLabel>(*m_view, "emptyHint");
        // The index takes more than one step.
        QTest::keyClicks(filter, u"p"_s);
        QVERIFY(hint->isVisible());
        QCOMPARE(hint->text() + NoteOf(*m_view), u"Searching..."_s);
        QTest::keyClicks(filter, u"ear"_s);
        QTRY_COMPARE(NoteOf(*m_view), u"Showing 1024 of 10100 foods."_s);
        QVERIFY(!hint->isVisible());
        const std::tuple<QString, QString, QString> rows[] = {
            {u"unripe"_s, u"Pear 0"_s, QString()},
            {u"unrpie"_s, u"Pear 0"_s, u"Similar words:"_s},
            {u"raw plum"_s, u"Apple"_s, u"Nothing has all these words."_s},
            {u"milk"_s, QString(), QString()},
        };
        for (const auto& [text, first, note] : rows) {
            Replace(filter, text);
            QCOMPARE(list->model()->index(0, 0).data().toString(), first);
            QCOMPARE(NoteOf(*m_view), note);
            QCOMPARE(hint->isVisible(), first.isEmpty());
        }
        QCOMPARE(hint->text(), u"Nothing found in this category."_s);
        // In a list that is shown whole, near words are said too.
        m_tree->setCurrentIndex(Node(0));
        QCOMPARE(list->RowCount(), 2);
        Replace(filter, u"buter"_s);
        QCOMPARE(list->model()->index(0, 0).data().toString(), u"Butter"_s);
        QCOMPARE(NoteOf(*m_view), u"Similar words:"_s);
        // They are those of the category; there may be none of the name.
        m_tree->setCurrentIndex(Node(0, 1));
        QCOMPARE(hint->text(), u"Nothing found under this name."_s);
        QCOMPARE(NoteOf(*m_view), QString());
        m_tree->setCurrentIndex(Node(0));
        filter->clear();
        QCOMPARE(list->RowCount(), 3);
        QCOMPARE(NoteOf(*m_view), QString());
    }

    void theTreesModelIsSound() {
        Fill();
        CCategoryTreeModel model(Database(), kFoods, true, nullptr);
        model.Reload(true);
        const QAbstractItemModelTester sound(&model,
                                             QAbstractItemModelTester::FailureReportingMode::Fatal);
        QCOMPARE(model.IndexOf(1, u"Milk"_s).row(), 1);  // reads the names
        model.Reload(false);
        model.Reload(false);
    }

    void anItemThatIsGoneIsNotOpened() {
        AddComposed(Database(), kMenus, AddCategory(Database(), u"Week"_s, kMenus), u"Stew"_s);
        CMenusMainView view(*m_doc, nullptr);
        Show(view);
        Find<CReportList>(view, "items")->SelectRow(0);
        QVERIFY(Database().Menus().Delete(0));
        Find<QAction>(view, "Edit menu")->trigger();
        QCOMPARE(m_messages->Said(), u"Cannot update menu."_s);
    }

    void theSplitIsKept() {
        Open();
        m_doc->CatalogueState(kFoods).splitterPerMille = 600;
        m_view->StoreLayout();
        QCOMPARE(CCatalogueViewSettings::Load(Database(), kFoods).splitterPerMille, 600);
    }

    void findNextFollowsItsLastMatchWhereverItMoves() {
        Fill();
        CFindState& find = m_doc->FindState(kFoods);
        find.name = u"milk"_s;
        QCOMPARE(FindFirst(Database(), kFoods, find), 0);
        // A food before it pushes it on.
        QVERIFY(Database().Foods().Write(-1, MakeFood(0, u"Milk"_s, u"first"_s)));
        QCOMPARE(FindNext(Database(), kFoods, find), 3);
    }

    void storedPicturesBecomeIcons() {
        // Up to 16 colours, a pixel takes half a byte.
        const auto blockOf = [](QSize size, int colors = 2) {
            QByteArray file;
            QBuffer buffer(&file);
            QImage picture(size, QImage::Format_Indexed8);
            QList<QRgb> table(colors, qRgb(0, 255, 0));
            table.front() = qRgb(255, 0, 0);
            picture.setColorTable(table);
            picture.fill(1);
            picture.save(&buffer, "BMP");
            return file.sliced(14) + QByteArray(14, '\0');
        };
        const QByteArray block = blockOf({5, 3});
        // A few bytes that claim to be a compressed picture of 1,200 x 1,000.
        QByteArray huge = block;
        qToLittleEndian<qint32>(1200, huge.data() + 4);
        qToLittleEndian<qint32>(1000, huge.data() + 8);
        qToLittleEndian<qint32>(2, huge.data() + 16);
        // Three lines of four bytes and the zeros at the end give way to the mark of its end.
        huge = huge.chopped(3 * 4 + 14) + QByteArray("\0\1", 2);
        const std::pair<QByteArray, QSize> rows[] = {
            {block, {5, 3}},
            {blockOf({300, 150}), {256, 128}},
            {blockOf({1200, 1000}, 17), {256, 213}},
            {block.first(20), {}},
            {QByteArray(200, '\xff'), {}},
            {huge, {}},
        };
        for (const auto& [stored, size] : rows) {
            CCategory category;
            category.SetKind(kFoods);
            category.SetName(QString::number(Database().Categories().Count()));
            category.SetSmallPicture(stored);
            QVERIFY(Database().Categories().AddOrUpdate(-1, category));
        }
        Open();
        for (int i = 0; i < 6; ++i) {
            const auto icon = Node(i).data(Qt::DecorationRole).value<QIcon>();
            QCOMPARE(icon.availableSizes().value(0, QSize(0, 0)),
                     rows[i].second.isValid() ? rows[i].second : QSize(0, 0));
            QVERIFY(icon.isNull() ||
                    icon.pixmap(5, 3).toImage().pixelColor(2, 1) == QColor(0, 255, 0));
        }
    }

    void anEmptyCatalogueOffersTheStarterFoodsOnce() {
        QVERIFY(QDir().mkpath(QFileInfo(m_starter).path()));
        QVERIFY(QFile::copy(QStringLiteral(VELMORA_STARTER_FOODS), m_starter));
        m_messages->answer = false;
        Open();
        QTRY_COMPARE(m_messages->asked.size(), 1);
        Open();
        QCoreApplication::processEvents();
        QCOMPARE(m_messages->asked.size(), 1);
        Press(*m_view, "importStarterFoods");
        QCOMPARE(m_messages->Said(), u"Imported 68 foods."_s);
        QCOMPARE(m_tree->model()->rowCount(), 9);
        QVERIFY(Find<CReportList>(*m_view, "items")->RowCount() > 0);
    }

    void foodTablesAreImportedFromAFolder() {
        Fill();
        Open();
        Save(Path(u"nutrient.csv"_s), "id,unit_name,nutrient_nbr\n1008,KCAL,208\n");
        Save(Path(u"food_nutrient.csv"_s), "fdc_id,nutrient_id,amount\n7,1008,52\n");
        Save(Path(u"food.csv"_s), "fdc_id,data_type,description\n7,sr_legacy_food,Plum\n");
        (void)m_view->CommandBar();  // makes its commands
        auto* const import = Find<QAction>(*m_view, "Import food tables");
        OnDialog<QDialog>([](QDialog& dialog) { dialog.reject(); });
        import->trigger();
        QVERIFY(m_messages->choices.isEmpty());
        OnDialog<QDialog>([](QDialog& dialog) {
            QVERIFY(Find<QRadioButton>(dialog, "option1")->isChecked());  // skip existing foods
            dialog.accept();
        });
        m_messages->chosenFile = m_folder->path();
        import->trigger();
        QCOMPARE(m_messages->choices.last().title, u"Import food tables"_s);
        QCOMPARE(m_messages->Said(), u"Imported 1 foods."_s);
        QCOMPARE(m_tree->model()->rowCount(), 3);
    }

    // A run that was broken off leaves the file behind: the next one would be offered foods.
    void initTestCase() { QFile::remove(m_starter); }
    void init() { MakeVolume(); }
    void cleanup() {
        QFile::remove(m_starter);
        m_view.reset();
        DropVolume();
    }

  private:
    void Open() {
        m_view = std::make_unique<CFoodsMainView>(*m_doc, nullptr);
        m_tree = Find<QTreeView>(*m_view, "categories");
        Show(*m_view);
    }
    /// A category, or one of the names in it.
    QModelIndex Node(int category, int name = -1) {
        const QModelIndex node = m_tree->model()->index(category, 0);
        m_tree->expand(node);
        return name < 0 ? node : m_tree->model()->index(name, 0, node);
    }
    void Fill() {
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        for (const CFoodItem& food :
             {MakeFood(fruit, u"Apple"_s, u"raw"_s), MakeFood(dairy, u"Milk"_s, u"whole"_s),
              MakeFood(dairy, u"Butter"_s, u"salted"_s), MakeFood(dairy, u"Milk"_s, u"dry"_s)}) {
            QVERIFY(Database().Foods().Write(-1, food));
        }
    }

    /// The first one is not ripe.
    void AddPears(int count) {
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < count; ++i) {
            const QString type = i == 0 ? u"unripe"_s : u"ripe"_s;
            QVERIFY(Database().Foods().Write(-1, MakeFood(2, u"Pear %1"_s.arg(i), type)));
        }
    }

    const QString m_starter = QCoreApplication::applicationDirPath() + u"/data/starter-foods.csv"_s;
    std::unique_ptr<CFoodsMainView> m_view;
    QTreeView* m_tree = nullptr;
};

QTEST_MAIN(TestFoodsMainView)
#include "TestFoodsMainView.moc"
