#include "DiaryFixture.h"

#include "diary/PurgeRules.h"

class TestPurge : public CDiaryTest {
    Q_OBJECT

  private:
    /// The three totals, "1 0 0"; "asked" when that is all.
    QString Purged(const CPurgeRequest& request) {
        const bool isDone = PurgeDiaries(Database(), request);
        QString said = m_messages->TakeShown().value(0);
        said.replace(u"Total purged:\n\nDiet entries: "_s, QString());
        said.replace(u"\nWeight entries: "_s, u" "_s).replace(u"\nExersises: "_s, u" "_s);
        return isDone ? said.trimmed() : said + u"asked"_s;
    }
  private slots:
    void init() { MakeDiary(); }
    void cleanup() { DropVolume(); }

    void everySecondOneOfAdjacentEntriesStays() {
        for (const auto& [name, hour] : {std::pair(u"Tea"_s, 8), {u"Bun"_s, 9}, {u"Egg"_s, 10}}) {
            AddEntry(name, QTime(hour, 0));
        }
        const CPurgeRequest request{kDay, kDay, true};
        QCOMPARE(Purged(request), u"2 0 0"_s);
        QCOMPARE(Stored(), QStringList{u"Bun 31 09:00 L"_s});
        QCOMPARE(Purged(request), u"1 0 0"_s);
        QCOMPARE(Stored(), QStringList());
        QCOMPARE(m_messages->asked.value(1),
                 u"You are about to remove data entries. Are you sure?"_s);
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(Stored(), QStringList());
    }

    void bothBoundsBelongToTheRange() {
        const auto purged = [this](int from, int to) {
            return Purged({kDay.addDays(from), kDay.addDays(to), true});
        };
        AddEntry(u"Tea"_s, QTime(0, 0));
        QCOMPARE(purged(-9, -1) + u'|' + purged(1, -1), u"0 0 0|0 0 0"_s);
        QCOMPARE(purged(0, 9), u"1 0 0"_s);
        AddEntry(u"Tea"_s, QTime(23, 59, 59));
        QCOMPARE(purged(1, 9) + u'|' + purged(-9, 0), u"0 0 0|1 0 0"_s);
    }

    void onlyTheKindsChosenGoAndRecordsOfAnotherLayoutStay() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        auto weight = MakeEntry<CWeightEntry>(kDay, {7, 0});
        auto exercise = MakeEntry<CExerciseEntry>(kDay, {7, 0});
        CItemDatabaseBase& diet = Database().Diet();
        QVERIFY(Database().Weight().Write(-1, weight) && diet.Write(-1, weight));
        QVERIFY(Database().Exercises().Write(-1, exercise));
        m_messages->answer = false;
        QCOMPARE(Purged({kDay, kDay, true, true, true}), u"asked"_s);
        m_messages->answer = true;
        QCOMPARE(Purged({kDay, kDay}), u"0 0 0"_s);
        QCOMPARE(Purged({kDay, kDay, false, true, true}), u"0 1 1"_s);
        QCOMPARE(Purged({kDay, kDay, true, true, true}), u"1 0 0"_s);
        QCOMPARE(diet.Count(), 1);
    }

    void aDiaryThatCannotBeReadIsNotEmpty() {
        Database().Profiles().Close();
        QVERIFY(!Database().Diet().RangeOf(0));
        QVERIFY(!PurgeDiaries(Database(), {kDay, kDay, true}));
        QVERIFY(m_messages->Said().startsWith(u"Cannot delete record. Error=2|Total purged:"_s));
    }
};

QTEST_GUILESS_MAIN(TestPurge)
#include "TestPurge.moc"
