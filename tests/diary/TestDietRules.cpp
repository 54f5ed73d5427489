#include "DiaryFixture.h"

#include "diary/AddFoodForm.h"
#include "diary/DietDay.h"

class TestDietRules : public QObject {
    Q_OBJECT

  private slots:
    void addingNeedsOneOfTheSixMeals() {
        CRecordingMessages messages;
        QVERIFY(MayAddToMeal(0) && MayAddToMeal(5));
        QCOMPARE(messages.shown, QStringList());
        QVERIFY(!MayAddToMeal(-1) && !MayAddToMeal(kAllMeals));
        QCOMPARE(messages.shown.value(1),
                 u"Please select a meal. It is not possible to add a food to all meals."_s);
    }

    void anEntryTakesDayTimeMealAndFood() {
        CDiaryFixture diary;
        CChosenFood food{EItemKind::Food, QTime(12, 30, 15), 2, {}};
        food.item.SetCategoryId(diary.AddCategory(ECatalogueKind::Foods, u"Fruit"_s));
        food.item.SetName(u"Apple"_s);
        food.item.SetType(u"raw"_s);
        food.item.SetServingName(0, u"1 medium"_s);
        food.item.SetServingWeight(0, 2);
        food.item.SetNutrientValue(53, 0.25);
        QVERIFY(AddDietEntry(*diary.doc, diary.day, 4, food));

        CDietEntry entry;
        QVERIFY(diary.Database().Diet().Read(0, entry));
        QCOMPARE(DateOf(entry.GetMoment()), QDate(2026, 5, 31));
        QCOMPARE(TimeOf(entry.GetMoment()), QTime(12, 30, 15));
        QCOMPARE(entry.GetMeal(), 4);
        QCOMPARE(entry.GetCategory(), u"Fruit"_s);
        QCOMPARE(EntryNameText(entry), u"Apple,raw"_s);
        QCOMPARE(EntryServingText(entry, diary.doc->Preferences()), u"2.00x1 medium"_s);
        QCOMPARE(entry.GetNutrientValue(53), 0.25);
    }

    void editingKeepsDateMealAndALostCategory() {
        CDiaryFixture diary;
        CDietEntry entry = diary.AddEntry(u"Tea"_s, QTime(8, 0), 0);
        CDietEntry withCategory = entry;
        withCategory.SetCategory(u"Drinks of old"_s);
        QVERIFY(diary.Database().Diet().Write(0, withCategory));
        CChosenFood food{EItemKind::Food, QTime(9, 15), 1,
                         ItemFromEntry(diary.Database(), withCategory)};
        food.item.SetName(u"Green tea"_s);
        diary.doc->dayShown = diary.day.addDays(3);
        QVERIFY(EditDietEntry(*diary.doc, withCategory, food));
        QCOMPARE(diary.Stored(), QStringList{u"Green tea 31 09:15 B"_s});
        QVERIFY(diary.Database().Diet().Read(0, entry));
        QCOMPARE(entry.GetCategory(), u"Drinks of old"_s);
    }

    void aCommandRefusesWhatItCannotDo() {
        CDiaryFixture diary;
        const std::vector<CDietEntry> two(2, diary.AddEntry(u"Tea"_s, QTime(8, 0)));
        QVERIFY(!MayEdit(0) && !MayEdit(2) && MayEdit(1));
        QCOMPARE(DeleteDietEntries(*diary.doc, {}), 0);
        QVERIFY(!MayMove({}));
        QVERIFY(!DuplicateDietEntry(*diary.doc, {}));
        QVERIFY(!DuplicateDietEntry(*diary.doc, two));
        QCOMPARE(diary.messages.shown,
                 (QStringList{
                     u"Please select entry to edit."_s, u"Please select only one entry to edit."_s,
                     u"Please select entry to delete."_s, u"Please select entry to move."_s,
                     u"Please select entry to duplicate."_s,
                     u"Please select only one entry to duplicate."_s}));
        QCOMPARE(diary.messages.asked, QStringList());
    }

    void questionsNameOneEntryAndCountSeveral() {
        CDiaryFixture diary;
        const CDietEntry tea = diary.AddEntry(u"Tea %s"_s, QTime(8, 0));
        const CDietEntry bun = diary.AddEntry(u"Bun"_s, QTime(8, 0));
        diary.messages.answer = false;
        QCOMPARE(DeleteDietEntries(*diary.doc, {tea}), 0);
        QCOMPARE(DeleteDietEntries(*diary.doc, {tea, bun}), 0);
        QVERIFY(!MayMove({tea}));
        QVERIFY(!MayMove({tea, bun}));
        QVERIFY(!DuplicateDietEntry(*diary.doc, {tea}));
        QCOMPARE(diary.messages.asked,
                 (QStringList{u"Are you sure you want to delete entry 'Tea %s'?"_s,
                              u"Are you sure you want to delete 2 entries?"_s,
                              u"Are you sure you want to move entry 'Tea %s'?"_s,
                              u"Are you sure you want to move 2 entries?"_s,
                              u"Are you sure you want to duplicate entry 'Tea %s'?"_s}));
        QCOMPARE(diary.Stored(), (QStringList{u"Tea %s 31 08:00 L"_s, u"Bun 31 08:00 L"_s}));
        diary.messages.answer = true;
        QVERIFY(DuplicateDietEntry(*diary.doc, {tea}));
        CDietEntry copy;
        QVERIFY(diary.Database().Diet().Read(2, copy));
        QVERIFY(copy == tea);
    }

    void deletingSeveralStopsAtTheFirstFailure() {
        CDiaryFixture diary;
        const CDietEntry tea = diary.AddEntry(u"Tea"_s, QTime(8, 0));
        CDietEntry gone = tea;
        gone.SetName(u"Gone"_s);
        const CDietEntry bun = diary.AddEntry(u"Bun"_s, QTime(9, 0));
        const CDietEntry egg = diary.AddEntry(u"Egg"_s, QTime(9, 0));
        QCOMPARE(DeleteDietEntries(*diary.doc, {tea, gone, bun}), 1);
        QCOMPARE(diary.messages.TakeShown(), QStringList{u"Cannot delete entry."_s});
        QCOMPARE(DeleteDietEntries(*diary.doc, {bun, egg}), 2);
        QCOMPARE(diary.Stored(), QStringList());
    }

    void movedEntriesAllGetTheSamePlace_data() {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QTime>("time");
        QTest::newRow("an earlier day") << QDate(2026, 5, 1) << QTime(7, 0);
        QTest::newRow("between them") << QDate(2026, 5, 31) << QTime(12, 30);
        QTest::newRow("where one is already") << QDate(2026, 5, 31) << QTime(13, 0);
        QTest::newRow("a later day") << QDate(2026, 6, 2) << QTime(7, 0);
    }
    void movedEntriesAllGetTheSamePlace() {
        QFETCH(QDate, day);
        QFETCH(QTime, time);
        CDiaryFixture diary;
        const CDietEntry tea = diary.AddEntry(u"Tea"_s, QTime(8, 0), 0);
        diary.AddEntry(u"Bun"_s, QTime(8, 0), 0);
        const CDietEntry soup = diary.AddEntry(u"Soup"_s, QTime(12, 0));
        const CDietEntry pear = diary.AddEntry(u"Pear"_s, QTime(13, 0));
        const CDietEntry twin = diary.AddEntry(u"Pear"_s, QTime(13, 0));
        QCOMPARE(MoveDietEntries(*diary.doc, {tea, soup, pear, twin}, {ToFileTime(day, time), 4}),
                 4);
        QStringList stored = diary.Stored();
        const QString place = day.toString(u" d "_s) + time.toString(u"HH:mm "_s) + u'D';
        for (const QString& name : {u"Tea"_s, u"Soup"_s, u"Pear"_s, u"Pear"_s}) {
            QVERIFY(stored.removeOne(name + place));
        }
        QCOMPARE(stored, QStringList{u"Bun 31 08:00 B"_s});
    }

    void theListShowsTheMealAndTheTotalsTheDay() {
        CDiaryFixture diary;
        diary.AddEntry(u"Tea"_s, QTime(8, 0), 0, 20);
        diary.AddEntry(u"Soup"_s, QTime(12, 0), 2, 300);
        CDietDay day(*diary.doc);
        day.Reload();
        QCOMPARE(day.Count(), 1);
        QCOMPARE(diary.Database().GetDietTotal(kEnergyIndex), 320.0);
        diary.doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        diary.doc->selectedMeal = kAllMeals;
        day.Reload();
        QCOMPARE(day.Count(), 2);
        QCOMPARE(day.ColumnTitles().mid(0, 2), (QStringList{u"Name"_s, u"Serving"_s}));
        QCOMPARE(day.CellText(1, 0), u"Soup"_s);  // no type, no comma
        QCOMPARE(day.CellText(1, 1), u"1.00x1 serving"_s);
        QCOMPARE(day.CellText(1, 2), u"1254.00"_s);  // 300 * 4.18
    }

    void a129thEntryIsStoredButNotListed() {
        CDiaryFixture diary;
        for (int entry = 0; entry < 129; ++entry) {
            diary.AddEntry(u"Sip"_s, QTime(8, 0).addSecs(60 * entry), 2, 1);
        }
        CDietDay day(*diary.doc);
        day.Reload();
        QCOMPARE(diary.Database().Diet().Count(), 129);
        QCOMPARE(day.Count(), 128);
    }
};

QTEST_GUILESS_MAIN(TestDietRules)
#include "TestDietRules.moc"
