// The foods window: tree, list and commands over a real catalogue.
#include <QAction>
#include <QBuffer>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "catalogue/CatalogueKinds.h"
#include "catalogue/FindDialog.h"
#include "catalogue/FoodSamples.h"
#include "catalogue/FoodsMainView.h"
#include "controls/ReportList.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

class TestFoodsMainView : public QObject {
    Q_OBJECT

  private slots:
    void theTreeHoldsEveryDistinctNameAndTheListFollowsIt() {
        Fill();
        Open();
        const QAbstractItemModel* model = m_tree->model();
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(Listed(), QStringList({u"Butter, salted"_s, u"Milk, dry"_s, u"Milk, whole"_s}));
        const QModelIndex dairy = model->index(0, 0);
        m_tree->expand(dairy);
        QCOMPARE(model->rowCount(dairy), 2);
        m_tree->setCurrentIndex(model->index(1, 0, dairy));
        QCOMPARE(Listed(), QStringList({u"Milk, dry"_s, u"Milk, whole"_s}));
        m_tree->setCurrentIndex(model->index(1, 0));
        QCOMPARE(Listed(), QStringList{u"Apple, raw"_s});
    }

    void aNewCategoryIsNamedInPlace_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("name");
        QTest::newRow("named") << u"Soups"_s << QString() << u"Soups"_s;
        QTest::newRow("empty") << u" "_s << u"Please enter category name."_s
                               << u"New food category"_s;
        QTest::newRow("taken") << u"Fruit"_s << u"Category 'Fruit' already exists."_s
                               << u"New food category"_s;
        QTest::newRow("left as it is")
            << u"New food category"_s << QString() << u"New food category"_s;
    }
    void aNewCategoryIsNamedInPlace() {
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QString, name);
        Fill();
        Open();
        Trigger("New category");
        auto* editor = m_tree->findChild<QLineEdit*>();
        QVERIFY(editor != nullptr);
        QCOMPARE(editor->text(), u"New food category"_s);
        editor->selectAll();
        QTest::keyClicks(editor, typed);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(m_messages.shown, message.isEmpty() ? QStringList() : QStringList{message});
        m_messages.shown.clear();
        QTRY_COMPARE(m_tree->currentIndex().data().toString(), name);
        QVERIFY(Database().FindCategory(ECatalogueKind::Foods, name) >= 0);
        QCOMPARE(Database().ListCategories(ECatalogueKind::Foods).size(), 3U);
    }

    void aSecondUnnamedCategoryIsRefused() {
        AddCategory(Database(), u"New food category"_s);
        Open();
        Trigger("New category");
        QCOMPARE(m_messages.TakeShown(),
                 QStringList{u"Category 'New food category' already exists."_s});
    }

    void commandsWantASelection() {
        Open();
        Trigger("New food");
        Trigger("Rename category");
        Fill();
        m_view->DataChanged();
        Trigger("Edit food");
        Trigger("Delete food");
        m_list->selectAll();
        Trigger("Edit food");
        m_tree->setCurrentIndex(m_tree->model()->index(1, 0, m_tree->model()->index(0, 0)));
        m_tree->expand(m_tree->model()->index(0, 0));
        m_tree->setCurrentIndex(m_tree->model()->index(0, 0, m_tree->model()->index(0, 0)));
        Trigger("Rename category");
        QCOMPARE(m_messages.TakeShown(),
                 (QStringList{u"Please create a category before adding new food."_s,
                              u"There is no category selected."_s, u"Please select food to edit."_s,
                              u"Please select food to delete."_s,
                              u"Please select only one food to edit."_s,
                              u"Please select category to rename."_s}));
    }

    void deletingAsksAndSelectsWhatFollows() {
        Fill();
        Open();
        m_list->SelectRow(0);
        m_list->setFocus();
        m_messages.answers = {false, true};
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(Listed().size(), 3);
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(m_messages.asked.last(),
                 u"Are you sure you want to delete food 'Butter, salted'?"_s);
        QCOMPARE(Listed(), QStringList({u"Milk, dry"_s, u"Milk, whole"_s}));
        QCOMPARE(m_list->SelectedRows(), std::vector<int>{0});
        m_list->selectAll();
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(m_messages.asked.last(), u"Are you sure you want to delete 2 foods?"_s);
        QCOMPARE(Listed(), QStringList());
        QCOMPARE(Database().CountItems(ECatalogueKind::Foods), 1);
    }

    void findGoesFromMatchToMatchAndEnds() {
        Fill();
        Open();
        QTimer::singleShot(0, this, [] {
            auto* dialog = qobject_cast<CFindDialog*>(QApplication::activeModalWidget());
            QTest::keyClicks(dialog->findChild<QLineEdit*>(u"name"_s), u"l"_s);
            QTest::keyClicks(dialog->findChild<QLineEdit*>(u"type"_s), u"W"_s);
            dialog->accept();
        });
        Trigger("Find food");
        QCOMPARE(Selected(), u"Milk, whole"_s);
        Trigger("Find next food");
        QCOMPARE(Selected(), u"Apple, raw"_s);
        QCOMPARE(m_tree->currentIndex().data().toString(), u"Fruit"_s);
        Trigger("Find next food");
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Food not found."_s});
        QCOMPARE(Selected(), u"Apple, raw"_s);
    }

    void aReloadKeepsWhatIsSelectedAndOpen() {
        Fill();
        Open();
        const QModelIndex dairy = m_tree->model()->index(0, 0);
        m_tree->expand(dairy);
        m_tree->setCurrentIndex(m_tree->model()->index(1, 0, dairy));
        m_list->SelectRow(1);
        m_view->DataChanged();
        QVERIFY(m_tree->isExpanded(m_tree->model()->index(0, 0)));
        QCOMPARE(m_tree->currentIndex().data().toString(), u"Milk"_s);
        QCOMPARE(Selected(), u"Milk, whole"_s);
    }

    void namesLeaveTheTreeWhenTheUserWants() {
        Fill();
        CFoodsViewSettings settings;
        settings.namesInTree = false;
        QVERIFY(settings.Save(Database()));
        Open();
        QVERIFY(!m_tree->model()->hasChildren(m_tree->model()->index(0, 0)));
    }

    void storedPicturesBecomeIcons_data() {
        QTest::addColumn<QByteArray>("block");
        QTest::addColumn<bool>("hasIcon");
        QByteArray file;
        QBuffer buffer(&file);
        QImage picture(5, 3, QImage::Format_Indexed8);
        picture.setColorTable({qRgb(255, 0, 0), qRgb(0, 255, 0)});
        picture.fill(1);
        picture.save(&buffer, "BMP");
        const QByteArray block = file.sliced(14) + QByteArray(14, '\0');
        QTest::newRow("bitmap") << block << true;
        QTest::newRow("cut short") << block.first(20) << false;
        QTest::newRow("no bitmap") << QByteArray(200, '\xff') << false;
    }
    void storedPicturesBecomeIcons() {
        QFETCH(QByteArray, block);
        CCategory category;
        category.SetKind(ECatalogueKind::Foods);
        category.SetName(u"Soups"_s);
        category.SetSmallPicture(block);
        QVERIFY(Database().AddOrUpdateCategory(-1, category));
        Open();
        const auto icon = m_tree->model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
        QTEST(!icon.isNull(), "hasIcon");
        if (!icon.isNull()) {
            QCOMPARE(icon.pixmap(5, 3).toImage().pixelColor(2, 1), QColor(0, 255, 0));
        }
    }

    void anEmptyCatalogueOffersTheStarterFoodsOnce() {
        const QDir program(QCoreApplication::applicationDirPath());
        QVERIFY(program.mkpath(u"data"_s));
        const QString starter = program.filePath(u"data/starter-foods.csv"_s);
        QFile::copy(QStringLiteral(VELMORA_STARTER_FOODS), starter);
        const auto remove = qScopeGuard([&] { QFile::remove(starter); });
        m_messages.answer = false;
        Open();
        QTRY_COMPARE(m_messages.asked.size(), 1);
        Open();
        QCoreApplication::processEvents();
        QCOMPARE(m_messages.asked.size(), 1);
        QTest::mouseClick(m_view->findChild<QPushButton*>(u"importStarterFoods"_s), Qt::LeftButton);
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Imported 68 foods."_s});
        QCOMPARE(m_tree->model()->rowCount(), 9);
        QVERIFY(m_list->RowCount() > 0);
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_doc = std::make_unique<CVelmoraDoc>(m_folder->filePath(u"v.db"_s));
        QVERIFY(m_doc->OpenCatalogue());
        m_messages.answer = true;
        m_messages.asked.clear();
    }
    void cleanup() {
        m_view.reset();
        m_doc.reset();
        QCOMPARE(m_messages.TakeShown(), QStringList());
    }

  private:
    CDatabase& Database() { return m_doc->Database(); }

    void Fill() {
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        QVERIFY(Database().Foods().Write(-1, MakeFood(fruit, u"Apple"_s, u"raw"_s)));
        QVERIFY(Database().Foods().Write(-1, MakeFood(dairy, u"Milk"_s, u"whole"_s)));
        QVERIFY(Database().Foods().Write(-1, MakeFood(dairy, u"Butter"_s, u"salted"_s)));
        QVERIFY(Database().Foods().Write(-1, MakeFood(dairy, u"Milk"_s, u"dry"_s)));
    }
    void Open() {
        m_view = std::make_unique<CFoodsMainView>(*m_doc, nullptr);
        m_tree = m_view->findChild<QTreeView*>(u"categories"_s);
        m_list = m_view->findChild<CReportList*>(u"items"_s);
        m_view->resize(600, 400);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    }
    void Trigger(const char* command) {
        m_view->findChild<QAction*>(QString::fromLatin1(command))->trigger();
    }
    QString Row(int row) const {
        const QAbstractItemModel* model = m_list->model();
        return model->index(row, 0).data().toString() + u", "_s +
               model->index(row, 1).data().toString();
    }
    QStringList Listed() const {
        QStringList rows;
        for (int row = 0; row < m_list->RowCount(); ++row) {
            rows.append(Row(row));
        }
        return rows;
    }
    QString Selected() const {
        const std::vector<int> rows = m_list->SelectedRows();
        return rows.size() == 1 ? Row(rows.front()) : QString();
    }

    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CVelmoraDoc> m_doc;
    std::unique_ptr<CFoodsMainView> m_view;
    QTreeView* m_tree = nullptr;
    CReportList* m_list = nullptr;
};

QTEST_MAIN(TestFoodsMainView)
#include "TestFoodsMainView.moc"
