#include "DiaryFixture.h"

#include "catalogue/pick/AddFoodForm.h"
#include "diary/DietDay.h"

class TestDietRules : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void anEntryTakesDayTimeMealAndFood() {
        QVERIFY(MayAddToMeal(0) && MayAddToMeal(5) && m_messages->shown.isEmpty());
        const auto refusal =
            u"Please select a meal. It is not possible to add a food to all meals."_s;
        for (const int meal : {-1, kAllMeals}) {
            QVERIFY(!MayAddToMeal(meal));
            QCOMPARE(m_messages->Said(), refusal);
        }
        CChosenFood food{EItemKind::Food, QTime(12, 30, 15), 2, {}};
        food.item.SetCategoryId(AddCategory(Database(), u"Fruit"_s));
        food.item.SetName(u"Apple"_s);
        food.item.SetType(u"raw"_s);
        food.item.SetServingName(0, u"1 medium"_s);
        food.item.SetServingWeight(0, 2);
        food.item.SetNutrientValue(53, 0.25);
        QVERIFY(AddDietEntry(*m_doc, kDay, 4, food));
        CDietEntry entry;
        QVERIFY(Database().Diet().Read(0, entry));
        QCOMPARE(entry.GetMoment(), ToFileTime(kDay, QTime(12, 30, 15)));
        QCOMPARE(Stored(), QStringList{u"Apple 31 12:30 D"_s});
        QCOMPARE(entry.GetCategory() + u'/' + EntryNameText(entry) + u'/' +
                     EntryServingText(entry, m_doc->Preferences()),
                 u"Fruit/Apple,raw/2.00x1 medium"_s);
        QCOMPARE(entry.GetNutrientValue(53), 0.25);
    }

    void editingKeepsDateMealAndALostCategory() {
        CDietEntry entry = AddEntry(u"Tea"_s, QTime(8, 0), 0);
        entry.SetCategory(u"Drinks of old"_s);
        QVERIFY(Database().Diet().Write(0, entry));
        CChosenFood food{EItemKind::Food, QTime(9, 15), 1, ItemFromEntry(Database(), entry)};
        food.item.SetName(u"Green tea"_s);
        m_doc->dayShown = kDay.addDays(3);
        QVERIFY(EditDietEntry(*m_doc, entry, food));
        QCOMPARE(Stored(), QStringList{u"Green tea 31 09:15 B"_s});
        QVERIFY(Database().Diet().Read(0, entry));
        QCOMPARE(entry.GetCategory(), u"Drinks of old"_s);
    }

    void aCommandRefusesWhatItCannotDo() {
        const std::vector<CDietEntry> two(2, AddEntry(u"Tea"_s, QTime(8, 0)));
        QVERIFY(!MayEdit(0) && !MayEdit(2) && MayEdit(1));
        QVERIFY(DeleteDietEntries(*m_doc, {}) == 0 && !MayMove({}));
        QVERIFY(!DuplicateDietEntry(*m_doc, {}) && !DuplicateDietEntry(*m_doc, two));
        QCOMPARE(m_messages->Said(),
                 u"Please select entry to edit.|Please select only one entry to edit.|"
                 "Please select entry to delete.|Please select entry to move.|"
                 "Please select entry to duplicate.|Please select only one entry to duplicate."_s);
        QCOMPARE(m_messages->asked, QStringList());
    }

    void questionsNameOneEntryAndCountSeveral() {
        const CDietEntry tea = AddEntry(u"Tea %s"_s, QTime(8, 0));
        const CDietEntry bun = AddEntry(u"Bun"_s, QTime(8, 0));
        m_messages->answer = false;
        for (const std::vector<CDietEntry>& entries : {std::vector{tea}, {tea, bun}}) {
            QVERIFY(DeleteDietEntries(*m_doc, entries) == 0 && !MayMove(entries));
        }
        QVERIFY(!DuplicateDietEntry(*m_doc, {tea}));
        QCOMPARE(m_messages->asked.join(u'|'),
                 u"Are you sure you want to delete entry 'Tea %s'?|"
                 "Are you sure you want to move entry 'Tea %s'?|"
                 "Are you sure you want to delete 2 entries?|"
                 "Are you sure you want to move 2 entries?|"
                 "Are you sure you want to duplicate entry 'Tea %s'?"_s);
        QCOMPARE(Stored(), (QStringList{u"Tea %s 31 08:00 L"_s, u"Bun 31 08:00 L"_s}));
        m_messages->answer = true;
        QVERIFY(DuplicateDietEntry(*m_doc, {tea}));
        CDietEntry copy;
        QVERIFY(Database().Diet().Read(2, copy));
        QVERIFY(copy == tea);
    }

    void movedEntriesAllGetTheSamePlace() {
        const std::pair<QDate, QTime> places[] = {
            {QDate(2026, 5, 1), QTime(7, 0)},
            {QDate(2026, 5, 31), QTime(12, 30)},  // between them
            {QDate(2026, 5, 31), QTime(13, 0)},   // where one is already
            {QDate(2026, 6, 2), QTime(7, 0)},
        };
        for (const auto& [day, time] : places) {
            MakeDiary();
            const CDietEntry tea = AddEntry(u"Tea"_s, QTime(8, 0), 0);
            AddEntry(u"Bun"_s, QTime(8, 0), 0);
            const CDietEntry soup = AddEntry(u"Soup"_s, QTime(12, 0));
            const CDietEntry pear = AddEntry(u"Pear"_s, QTime(13, 0));
            const CDietEntry twin = AddEntry(u"Pear"_s, QTime(13, 0));
            const CDietPlace place{ToFileTime(day, time), 4};
            QCOMPARE(MoveDietEntries(*m_doc, {tea, soup, pear, twin}, place), 4);
            QStringList stored = Stored();
            const QString moved = day.toString(u" d "_s) + time.toString(u"HH:mm "_s) + u'D';
            for (const QString& name : {u"Tea"_s, u"Soup"_s, u"Pear"_s, u"Pear"_s}) {
                QVERIFY(stored.removeOne(name + moved));
            }
            QCOMPARE(stored, QStringList{u"Bun 31 08:00 B"_s});
        }
    }

    void theListShowsTheMealAndTheTotalsTheDay() {
        AddEntry(u"Tea"_s, QTime(8, 0), 0, 20);
        AddEntry(u"Soup"_s, QTime(12, 0), 2, 300);
        CDietDay day(*m_doc);
        day.Reload();
        QCOMPARE(day.Count(), 1);
        QCOMPARE(day.Total(kEnergyIndex), 320.0);
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        m_doc->selectedMeal = kAllMeals;
        day.Reload();
        QCOMPARE(day.ColumnTitles().mid(0, 2).join(u' '), u"Name Serving"_s);
        // No type, no comma; 300 * 4.18.
        QCOMPARE(day.CellText(1, 0) + u' ' + day.CellText(1, 1) + u' ' + day.CellText(1, 2),
                 u"Soup 1.00x1 serving 1254.00"_s);
    }
};

QTEST_GUILESS_MAIN(TestDietRules)
#include "TestDietRules.moc"
