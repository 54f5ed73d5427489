// The diary of meals: entries, commands, totals, and the purge of all diaries.
#include "DiaryFixture.h"

#include "catalogue/pick/AddFoodForm.h"
#include "diary/CopyRules.h"
#include "diary/DietTotals.h"
#include "diary/EntryClipboard.h"
#include "diary/ListSizes.h"
#include "diary/PurgeRules.h"
#include "store/Step.h"

class TestDietRules : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void editingKeepsDateMealAndALostCategory() {
        CListed<CDietEntry> tea = AddEntry(u"Tea"_s, QTime(8, 0), 0);
        CDietEntry& entry = tea.entry;
        entry.SetCategory(u"Drinks of old"_s);
        QVERIFY(Database().Diet().Write(0, entry));
        CChosenFood food{EItemKind::Food, QTime(9, 15), 1, ItemFromEntry(Database(), entry)};
        food.item.SetName(u"Green tea"_s);
        m_doc->dayShown = kDay.addDays(3);
        QVERIFY(EditDietEntry(*m_doc, tea, food));
        QCOMPARE(Stored(), QStringList{u"Green tea 31 09:15 B"_s});
        QVERIFY(Database().Diet().Read(0, entry));
        QCOMPARE(entry.GetCategory(), u"Drinks of old"_s);
    }

    void differentMealsOfLastDaysAreOffered() {
        const CDietEntry tea = AddEntry(u"Tea"_s, QTime(8, 0)).entry;
        const CDietEntry cake = AddEntry(u"Cake"_s, QTime(8, 0)).entry;
        QVERIFY(Database().Diet().Delete(0) && Database().Diet().Delete(0));
        QVERIFY(MealOffers(*m_doc, kDay, 2).empty());
        const auto eat = [this](int daysAgo, std::vector<CDietEntry> entries, qint32 meal = 2) {
            const auto count = static_cast<int>(entries.size());
            return CopyEntries(*m_doc, entries, {{kDay.addDays(-daysAgo), {}, meal}}) == count;
        };
        CDietEntry other = tea;
        other.SetAmount(2);
        QVERIFY(eat(2, {tea, cake}) && eat(3, {cake, tea}) && eat(4, {tea}) && eat(8, {other}));
        QVERIFY(eat(1, {tea}, 3) && eat(9, {tea}) && eat(60, {cake, cake}) && eat(61, {cake}));
        const auto titles = [this] {
            QStringList texts;
            for (const CMealOffer& offer : MealOffers(*m_doc, kDay, 2)) {
                texts.append(offer.title);
            }
            return texts;
        };
        const QStringList three = {u"Lunch of Friday: 2 items, 200 kcal"_s,
                                   u"Lunch of Wednesday: 1 item, 100 kcal"_s,
                                   u"Lunch of 23 May 2026: 1 item, 100 kcal"_s};
        QCOMPARE(titles(), three);
        QVERIFY(eat(1, {cake, other}));
        QCOMPARE(titles(), QStringList{u"Lunch of Saturday: 2 items, 200 kcal"_s} + three);
    }

    void copiesGoToEachChosenDay() {
        // 31 May 2026 is a Sunday; bits 0 and 2 are Monday and Wednesday.
        const std::vector<QDate> days = DaysToRepeat(kDay, kDay.addDays(8), 0b101);
        QCOMPARE(days, (std::vector<QDate>{{2026, 6, 1}, {2026, 6, 3}, {2026, 6, 8}}));
        const CDietEntry tea = AddEntry(u"Tea"_s, QTime(8, 0)).entry;
        std::vector<CCopyPlace> places;
        for (const QDate day : days) {
            places.push_back({day});
        }
        places.push_back({kDay, QTime(9, 0), 4});
        QCOMPARE(CopyEntries(*m_doc, {tea, tea}, places), 8);
        QCOMPARE(Stored().join(u','),
                 u"Tea 31 08:00 L,Tea 31 09:00 D,Tea 31 09:00 D,"
                 "Tea 1 08:00 L,Tea 1 08:00 L,Tea 3 08:00 L,Tea 3 08:00 L,"
                 "Tea 8 08:00 L,Tea 8 08:00 L"_s);
        QCOMPARE(DaysBeyondList(*m_doc, days, 126), 0);
        QCOMPARE(DaysBeyondList(*m_doc, days, 127), 3);
    }

    void onlyEntriesComeFromTheClipboard() {
        const CDietEntry tea = AddEntry(u"Tea"_s, QTime(8, 0)).entry;
        const CDietEntry cake = AddEntry(u"Cake"_s, QTime(9, 0)).entry;
        const auto data = MimeOfEntries({tea, cake}, u"Tea\nCake"_s);
        QCOMPARE(data->text(), u"Tea\nCake"_s);
        QVERIFY(EntriesOfMime(*data) == (std::vector<CDietEntry>{tea, cake}));
        QMimeData text;
        text.setText(u"Tea"_s);
        QVERIFY(EntriesOfMime(text).empty());
        const QString format = data->formats().last();
        const QByteArray bytes = data->data(format);
        const qsizetype first = MimeOfEntries({tea}, {})->data(format).size();
        QVERIFY(first > 0 && first < bytes.size());
        for (qsizetype size = 1; size < bytes.size(); ++size) {
            QMimeData cut;
            cut.setData(format, bytes.first(size));
            const bool isWhole = size == first;
            QVERIFY(EntriesOfMime(cut) == (isWhole ? std::vector{tea} : std::vector<CDietEntry>()));
        }
    }

    void onlyWhatWasDoneInFullIsTold() {
        QStringList told;
        m_doc->SetStatusHost([&told](const QString& text) { told.append(text); });
        const CListed<CDietEntry> tea = AddEntry(u"Tea"_s, QTime(8, 0));
        const CListed<CDietEntry> bun = AddEntry(u"Bun"_s, QTime(8, 0));
        QCOMPARE(CutDietEntries(*m_doc, {tea}), 1);
        QCOMPARE(CutDietEntries(*m_doc, {bun, tea}), 1);  // the tea is gone
        QCOMPARE(m_messages->Said(), u"Cannot delete entry."_s);
        const CListed<CDietEntry> egg = AddEntry(u"Egg"_s, QTime(8, 0));
        QCOMPARE(CopyEntries(*m_doc, {egg.entry}, {{kDay}, {kDay.addDays(1)}}), 2);
        CChosenFood food{EItemKind::Food, QTime(9, 15), 0.333333,
                         ItemFromEntry(Database(), egg.entry)};
        food.item.SetServingWeight(0, 0.333333);
        QVERIFY(AddDietEntry(*m_doc, kDay.addDays(-1), 0, food));
        food.item.SetServingWeight(0, 0.004);
        QVERIFY(AddDietEntry(*m_doc, kDay, 0, food));
        // The text is cleared as soon as Ctrl+Z no longer takes back what it names.
        CStep purge(Database().GetStore(), u"purge"_s);
        QVERIFY(purge.MayGoOn(Database().GetStore().History().GetLimits().bytes + 1));
        const QString back = u" Ctrl+Z takes it back."_s;
        QCOMPARE(
            told.join(u'|'),
            (QStringList{u"Cut Tea."_s + back, QString(), u"Copied 2 entries to 2 days."_s + back,
                         u"Added 0.33 x Egg to Breakfast of 30 May 2026."_s + back,
                         u"Added 0.004 x Egg to Breakfast."_s + back, QString()})
                .join(u'|'));
        m_doc->SetStatusHost({});
    }

    void someCommandsTakeOneEntryOnly() {
        const ListedEntries<CDietEntry> two(2, AddEntry(u"Tea"_s, QTime(8, 0)));
        QVERIFY(!MayEdit(2) && MayEdit(1) && !DuplicateDietEntry(*m_doc, two));
        QCOMPARE(m_messages->Said(),
                 u"Please select only one entry to edit.|"
                 "Please select only one entry to duplicate."_s);
        QCOMPARE(m_messages->asked, QStringList());
    }

    void equalEntriesOfAMomentAreToldApart() {
        const auto tea = AddEntry(u"Tea"_s, QTime(8, 0), 0);
        const auto second = AddEntry(u"Tea"_s, QTime(8, 0), 0);
        const auto third = AddEntry(u"Tea"_s, QTime(8, 0), 0);
        QCOMPARE(DeleteDietEntries(*m_doc, {tea}), 1);
        AddEntry(u"Bun"_s, QTime(8, 0));
        QCOMPARE(MoveDietEntries(*m_doc, {third}, {third.entry.GetMoment(), 4}), 1);
        QCOMPARE(Stored().join(u'|'), u"Tea 31 08:00 B|Tea 31 08:00 D|Bun 31 08:00 L"_s);
        CChosenFood food{EItemKind::Food, QTime(8, 0), 1, {}};
        food.item.SetName(u"Egg"_s);
        QVERIFY(EditDietEntry(*m_doc, third, food));
        QCOMPARE(DeleteDietEntries(*m_doc, {second}), 1);
        QCOMPARE(Stored().join(u'|'), u"Egg 31 08:00 B|Bun 31 08:00 L"_s);
        QVERIFY(!EditDietEntry(*m_doc, second, food));
        QCOMPARE(m_messages->Said(), u"Cannot add entry."_s);
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
            const auto tea = AddEntry(u"Tea"_s, QTime(8, 0), 0);
            AddEntry(u"Bun"_s, QTime(8, 0), 0);
            const auto soup = AddEntry(u"Soup"_s, QTime(12, 0));
            const auto pear = AddEntry(u"Pear"_s, QTime(13, 0));
            const auto twin = AddEntry(u"Pear"_s, QTime(13, 0));
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

    void aRowSetsTheTotalAgainstItsTarget() {
        using enum EBarFill;
        const std::tuple<int, double, double, QString, EBarFill> rows[] = {
            // nutrient; total, target and percentage
            {1, 50, 0, u"50/"_s, Empty},
            {1, 10.5, 0.001, u"11/"_s, Empty},
            {1, 0.05, 0, u"0/"_s, Empty},
            {1, 1e300, 0, u"2147483647/"_s, Empty},
            {1, 9.5, 0.1, u"9.5/0.1/9500%"_s, Over},
            {1, 0.5, 0.01, u"0.5/0/50%"_s, Partial},  // up to 0.01 the total is set against 1
            {1, 0.99, 100, u"1.0/100/1%"_s, Empty},
            {1, 1, 100, u"1.0/100/1%"_s, Partial},
            {1, 99.6, 100, u"100/100/100%"_s, Partial},
            {1, 100, 100, u"100/100/100%"_s, Over},
            {1, 413, 100, u"413/100/413%"_s, Over},
            // The one that is in kJ: times 4.18.
            {kEnergyIndex, 500, 2000, u"2090/8360/25%"_s, Partial},
        };
        for (const auto& [nutrient, total, target, texts, fill] : rows) {
            const CTotalsRow row = TotalsRow(nutrient, {}, total, target, EEnergyUnit::KJ);
            QCOMPARE(row.total + row.target + row.percent, texts);
            QCOMPARE(row.bar.fill, fill);
        }
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(TotalText(9.5), u"9,5/"_s);
        QLocale::setDefault(QLocale::c());
    }

    void aLongNameIsCutFromItsEnd() {
        const auto widthOf = [](const QString& text) { return static_cast<int>(text.size()); };
        QCOMPARE(FittedName(u"Protein (g)"_s, 12, widthOf), u"Protein (g):"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 11, widthOf), u"Protein...:"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 2, widthOf), u"...:"_s);
    }

    // At six pixels a character: "9999/" and a pixel are 31, "999%" and a pixel 25; the three
    // together 87. The scroll bar takes 16 and the list's margin 4.
    void columnsShareTheWidth() {
        const std::pair<int, CTotalsColumns> rows[] = {
            {600, {100, 393, 31, 31, 25}},  // the name is as wide as needed
            {240, {80, 53, 31, 31, 25}},    // at most a third
            {150, {33, 10, 31, 31, 25}},    // the least bar
            {123, {6, 10, 31, 31, 25}},     // the least name
            {122, {6, 10, 43, 43, 0}},     {10, {6, 10, 0, 0, 0}},
        };
        for (const auto& [listWidth, widths] : rows) {
            const CTotalsColumns columns = TotalsColumnWidths(
                listWidth, 16, 95, [](const QString& text) { return 6 * int(text.size()); });
            QCOMPARE(columns, widths);
        }
    }

    void theSplitIsAShareOfTheHeight() {
        QCOMPARE(EntryListHeight(500, 301), 151);  // 150.5 + 0.5
        QCOMPARE(EntryListHeight(333, 100), 34);   // 33.3 + 0.5, rounded
        QCOMPARE(PerMilleOf(151, 301), 502);       // 501.66 rounded
        QCOMPARE(PerMilleOf(500, 0), 0);
        QCOMPARE(PerMilleOf(500, 400), 1000);
    }

    void recordsOfAnotherLayoutStay() {
        AddEntry(u"Tea"_s, QTime(0, 0));
        CItemDatabaseBase& diet = Database().Diet();
        QVERIFY(diet.Write(-1, MakeEntry<CWeightEntry>(kDay, {7, 0})));
        QCOMPARE(Purged({kDay, kDay, true}), u"1 0 0"_s);
        QCOMPARE(diet.Count(), 1);
    }

    void aDiaryThatCannotBeReadIsNotEmpty() {
        Database().Profiles().Close();
        QVERIFY(!Database().Diet().RangeOf(0));
        QVERIFY(!PurgeDiaries(Database(), {kDay, kDay, true}));
        QVERIFY(m_messages->Said().startsWith(u"Cannot delete record. Error=2|Total purged:"_s));
    }

  private:
    /// The three totals, "1 0 0".
    QString Purged(const CPurgeRequest& request) {
        QString said = PurgeDiaries(Database(), request) ? m_messages->Said() : u"not purged"_s;
        said.replace(u"Total purged:\n\nDiet entries: "_s, QString());
        said.replace(u"\nWeight entries: "_s, u" "_s).replace(u"\nExersises: "_s, u" "_s);
        return said.trimmed();
    }
};

QTEST_GUILESS_MAIN(TestDietRules)
#include "TestDietRules.moc"
