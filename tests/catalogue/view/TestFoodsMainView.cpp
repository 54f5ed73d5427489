// The foods window: tree, list and commands over a real catalogue.
#include "CatalogueViewFixture.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include "catalogue/items/FoodEditDialog.h"
#include "catalogue/pick/FindDialog.h"
#include "catalogue/pick/FindItems.h"
#include "catalogue/view/CategoryPickDialog.h"
#include "catalogue/view/FoodsMainView.h"
#include "support/DataRows.h"
#include "support/Files.h"
#include "support/Portrait.h"

class TestFoodsMainView : public CCatalogueViewTest {
    Q_OBJECT

  private slots:
    void theTreeHoldsEveryDistinctNameAsLongAsTheUserWants() {
        OpenFilled();
        QCOMPARE(m_tree->model()->rowCount(), 2);
        QCOMPARE(Listed(), u"Butter, salted|Milk, dry|Milk, whole"_s);
        QCOMPARE(m_tree->model()->rowCount(Node(0)), 2);
        m_tree->setCurrentIndex(Node(0, 1));
        QCOMPARE(Listed(), u"Milk, dry|Milk, whole"_s);
        m_tree->setCurrentIndex(Node(1));
        QCOMPARE(Listed(), u"Apple, raw"_s);
        CCatalogueViewSettings settings;
        settings.namesInTree = false;
        QVERIFY(settings.Save(Database(), kFoods));
        Open<CFoodsMainView>();
        QVERIFY(!m_tree->model()->hasChildren(Node(0)));
        QCOMPARE(CPortrait::TraitsOf(*m_tree), u"uniform locked "_s);
        QCOMPARE(CPortrait::TraitsOf(*m_list),
                 u"flat closed uniform rows fixed short clearable "_s);
    }

    void whatTheListLeavesOutIsSaidUnderIt() {
        Fill();
        {
            CRecordGroup group(Database().GetStore());
            for (int i = 0; i < 1030; ++i) {
                QVERIFY(Database().Foods().Write(-1, MakeFood(2, u"Pear %1"_s.arg(i), u"raw"_s)));
            }
        }
        Damage(Database().Foods(), 0);
        Damage(Database().Foods(), 5);
        Open<CFoodsMainView>();
        QCOMPARE(NoteOf(*m_view), u"1 damaged food is left out."_s);
        m_tree->setCurrentIndex(Node(1));
        // An apple and 1,030 pears.
        QCOMPARE(NoteOf(*m_view), u"Showing 1024 of 1031 foods. 1 damaged food is left out."_s);
        QCOMPARE(m_list->RowCount(), 1024);
        m_tree->setCurrentIndex(Node(1, 1));
        QCOMPARE(NoteOf(*m_view), u"1 damaged food is left out."_s);
        Trigger("New category");
        QCOMPARE(NoteOf(*m_view), QString());
    }

    void aNewCategoryIsNamedInPlace_data() {
        AddRows<QString, QString, QString>({
            {"named", u"Soups"_s, {}, u"Soups"_s},
            {"empty", u" "_s, u"Please enter category name."_s, u"New food category"_s},
            {"taken", u"Fruit"_s, u"Category 'Fruit' already exists."_s, u"New food category"_s},
            {"left as it is", u"New food category"_s, {}, u"New food category"_s},
        });
    }
    void aNewCategoryIsNamedInPlace() {
        const auto& [typed, message, name] = DataRow<QString, QString, QString>();
        OpenFilled();
        Trigger("New category");
        auto* editor = m_tree->findChild<QLineEdit*>();
        QVERIFY(editor != nullptr);
        QCOMPARE(editor->text(), u"New food category"_s);
        Replace(editor, typed);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(m_messages->shown.join(u'|'), message);
        m_messages->TakeShown();
        QTRY_COMPARE(CurrentNode(), name);
        QVERIFY(Database().Categories().Find(kFoods, name) >= 0);
        QCOMPARE(Database().Categories().List(kFoods).size(), 3U);
        if (name == u"New food category") {
            Trigger("New category");
            QCOMPARE(m_messages->Said(), u"Category 'New food category' already exists."_s);
        }
    }

    void renamingWantsASelection() {
        Open<CFoodsMainView>();
        Trigger("Rename category");
        Trigger("Rename food name");
        Fill();
        m_view->DataChanged();
        Trigger("Edit food");  // the rules are asked
        m_tree->setCurrentIndex(Node(0, 0));
        Trigger("Rename category");
        Trigger("Delete category");
        QCOMPARE(CurrentNode(), u"Butter"_s);
        QCOMPARE(m_messages->Said(),
                 u"There is no category selected.|There are no foods selected.|"
                 "Please select food to edit.|Please select category to rename.|"
                 "Please select category to delete."_s);
    }

    void whatCannotBeStoredIsSaid() {
        OpenFilled();
        m_list->SelectRow(0);
        const CFileSizeLimit full(1);
        OnDialog<CFoodEditDialog>([](CFoodEditDialog& dialog) { dialog.accept(); });
        Trigger("Edit food");
        OnDialog<CFoodEditDialog>([](CFoodEditDialog& dialog) {
            Replace(Find<QLineEdit>(dialog, "name"), u"Tea"_s);
            Replace(Find<QLineEdit>(dialog, "type"), u"green"_s);
            dialog.accept();
        });
        Trigger("New food");
        QCOMPARE(m_messages->Said(),
                 u"Cannot add food (error# 112).|Cannot update food.|"
                 "Cannot add food (error# 112).|Cannot add new food."_s);
        QCOMPARE(m_list->RowCount(), 3);
    }

    void deletingAsksAndSelectsTheRowInFocus() {
        OpenFilled();
        QVERIFY(Database().Foods().Write(-1, MakeFood(1, u"Yoghurt"_s, u"mild"_s)));
        m_view->DataChanged();
        m_list->SelectRow(0);
        m_list->setFocus();
        QTest::keyClick(m_list, Qt::Key_Down, Qt::ShiftModifier);
        m_messages->answers = {false, true};
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(m_list->RowCount(), 4);
        QCOMPARE(m_list->SelectedRows().size(), 2U);
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(m_messages->asked.last(), u"Are you sure you want to delete 2 foods?"_s);
        QCOMPARE(Listed(), u"Milk, whole|Yoghurt, mild"_s);
        QCOMPARE(Selected(), u"Yoghurt, mild"_s);
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(m_messages->asked.last(),
                 u"Are you sure you want to delete food 'Yoghurt, mild'?"_s);
        QCOMPARE(Listed(), u"Milk, whole"_s);
        QCOMPARE(Selected(), u"Milk, whole"_s);
    }

    void findGoesFromMatchToMatchAndEnds() {
        OpenFilled();
        OnDialog<CFindDialog>([](CFindDialog& dialog) {
            QTest::keyClicks(Find<QLineEdit>(dialog, "name"), u"l"_s);
            QTest::keyClicks(Find<QLineEdit>(dialog, "type"), u"W"_s);
            dialog.accept();
        });
        Trigger("Find food");
        QCOMPARE(Selected(), u"Milk, whole"_s);
        Trigger("Find next food");
        QCOMPARE(Selected(), u"Apple, raw"_s);
        QCOMPARE(CurrentNode(), u"Fruit"_s);
        Trigger("Find next food");
        QCOMPARE(m_messages->Said(), u"Food not found."_s);
        QCOMPARE(Selected(), u"Apple, raw"_s);
    }

    void labelsAreRenamedWithTheSameKey() {
        OpenFilled();
        const auto rename = [this](const QModelIndex& node, const QString& text) {
            m_tree->setCurrentIndex(node);
            m_tree->setFocus();
            QTest::keyClick(m_tree, Qt::Key_F2);
            auto* editor = m_tree->findChild<QLineEdit*>();
            QVERIFY(editor != nullptr);
            Replace(editor, text);
            QTest::keyClick(editor, Qt::Key_Return);
            // A record holds 128 characters.
            QTRY_COMPARE(CurrentNode(), text.left(128));
        };
        rename(Node(0, 1), QString(129, u'x'));
        rename(Node(0, 1), u"Oat milk"_s);
        QCOMPARE(Listed(), u"Oat milk, dry|Oat milk, whole"_s);
        rename(Node(0), u"Not dairy"_s);
        QCOMPARE(Database().Categories().NameOf(kFoods, 1), u"Not dairy"_s);
        Trigger("Rename food name");
        QCOMPARE(m_messages->Said(), u"Please select foods to rename."_s);
    }

    void foodsMoveToThePickedCategory() {
        Fill();
        AddCategory(Database(), u"Drinks"_s);
        Open<CFoodsMainView>();
        m_list->SelectRow(2);
        OnDialog<CCategoryPickDialog>([](CCategoryPickDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Select category to move foods:"_s);
            QTest::keyClick(Find<CReportList>(dialog, "targets"), Qt::Key_Down);
            QTest::keyClick(Find<CReportList>(dialog, "targets"), Qt::Key_Return);
        });
        Trigger("Move food");
        QCOMPARE(m_messages->asked.last(),
                 u"Are you sure you want to move food 'Milk, whole' to category Drinks'?"_s);
        QCOMPARE(Listed(), u"Butter, salted|Milk, dry"_s);
        QCOMPARE(Selected(), u"Milk, dry"_s);
    }

    void aCopyAndACategorysEndShowAtOnce() {
        OpenFilled();
        AddCategory(Database(), u"Last"_s);
        m_view->DataChanged();
        m_tree->setCurrentIndex(Node(2));
        Trigger("Delete category");
        QCOMPARE(CurrentNode(), u"Fruit"_s);
        m_tree->setCurrentIndex(Node(0));
        m_list->SelectRow(1);
        Trigger("Duplicate food");
        QCOMPARE(Selected(), u"Milk, dry_Copy01"_s);
        m_tree->setFocus();
        QTest::keyClick(m_tree, Qt::Key_Delete);
        QCOMPARE(m_tree->model()->rowCount(), 1);
        QCOMPARE(Listed(), u"Apple, raw"_s);
        QTest::keyClick(m_tree, Qt::Key_Delete);
        QCOMPARE(m_tree->model()->rowCount(), 0);
        Trigger("Delete category");
        QCOMPARE(m_messages->Said(), u"There is no category selected."_s);
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

    void aReloadKeepsWhatIsSelectedAndOpen() {
        OpenFilled();
        m_tree->setCurrentIndex(Node(0, 1));
        m_list->SelectRow(1);
        m_view->DataChanged();
        QVERIFY(m_tree->isExpanded(Node(0)));
        QCOMPARE(CurrentNode(), u"Milk"_s);
        QCOMPARE(Selected(), u"Milk, whole"_s);
    }

    void storedPicturesBecomeIcons() {
        const auto blockOf = [](QSize size) {
            QByteArray file;
            QBuffer buffer(&file);
            QImage picture(size, QImage::Format_Indexed8);
            picture.setColorTable({qRgb(255, 0, 0), qRgb(0, 255, 0)});
            picture.fill(1);
            picture.save(&buffer, "BMP");
            return file.sliced(14) + QByteArray(14, '\0');
        };
        const QByteArray block = blockOf({5, 3});
        // A few bytes that claim to be a compressed picture of 5,000 x 5,000.
        QByteArray huge = block;
        qToLittleEndian<qint32>(5000, huge.data() + 4);
        qToLittleEndian<qint32>(5000, huge.data() + 8);
        qToLittleEndian<qint32>(2, huge.data() + 16);
        // Three lines of four bytes and the zeros at the end give way to the mark of its end.
        huge = huge.chopped(3 * 4 + 14) + QByteArray("\0\1", 2);
        const std::pair<QByteArray, QSize> rows[] = {
            {block, {5, 3}},
            {blockOf({300, 150}), {256, 128}},
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
        Open<CFoodsMainView>();
        for (int i = 0; i < 5; ++i) {
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
        Open<CFoodsMainView>();
        QTRY_COMPARE(m_messages->asked.size(), 1);
        Open<CFoodsMainView>();
        QCoreApplication::processEvents();
        QCOMPARE(m_messages->asked.size(), 1);
        Press(*m_view, "importStarterFoods");
        QCOMPARE(m_messages->Said(), u"Imported 68 foods."_s);
        QCOMPARE(m_tree->model()->rowCount(), 9);
        QVERIFY(m_list->RowCount() > 0);
    }

    // A run that was broken off leaves the file behind: the next one would be offered foods.
    void initTestCase() { QFile::remove(m_starter); }
    void init() { MakeVolume(); }
    void cleanup() {
        QFile::remove(m_starter);
        Close();
    }

  private:
    const QString m_starter = QCoreApplication::applicationDirPath() + u"/data/starter-foods.csv"_s;

    void Fill() {
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        for (const CFoodItem& food :
             {MakeFood(fruit, u"Apple"_s, u"raw"_s), MakeFood(dairy, u"Milk"_s, u"whole"_s),
              MakeFood(dairy, u"Butter"_s, u"salted"_s), MakeFood(dairy, u"Milk"_s, u"dry"_s)}) {
            QVERIFY(Database().Foods().Write(-1, food));
        }
    }
    void OpenFilled() {
        Fill();
        Open<CFoodsMainView>();
    }
};

QTEST_MAIN(TestFoodsMainView)
#include "TestFoodsMainView.moc"
