#include "diary/DiaryFixture.h"

#include "catalogue/pick/AddFoodForm.h"

class TestAddFoodForm : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void aPickerWithNothingToListSaysWhy() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        const auto refusals = [&] {
            for (const EPicker picker : {EPicker::Category, EPicker::Name, EPicker::Type}) {
                (void)form.Choices(picker);
            }
            return m_messages->Said();
        };
        QCOMPARE(refusals(),
                 u"There are no categories to select.|There is no category selected.|"
                 "There is no category selected."_s);
        AddCategory(Database(), u"Empty"_s);
        form.Pick(EPicker::Category, u"Empty"_s);
        QCOMPARE(refusals(), u"There are no names to select.|There are no types to select."_s);
        AddCatalogue();
        form.Pick(EPicker::Category, u"Soups"_s);
        form.Pick(EPicker::Name, u"Tomato soup"_s);
        CRecordStore& store = Database().GetStore();
        CDatabaseHandle foods = store.OpenDatabase(u"Foods"_s, 3, 0, true);
        QVERIFY(store.WriteRecord(foods, 0, {Database().Categories().IdOf(kFoods, u"Soups"_s)}));
        QCOMPARE(form.Choices(EPicker::Type).note, u"1 damaged food is left out."_s);
        m_messages->TakeShown();  // of the names, which are read to find the one meant
        while (Database().Foods().Count() > 0) {
            QVERIFY(Database().Foods().Delete(0));
        }
        form.Pick(EPicker::Type, u"home made"_s);
        QCOMPARE(m_messages->Said() + form.NameText(), u"Cannot load food.Tomato soup"_s);
    }

    void aNewAmountScalesAllValuesOfAnEntry() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForEntry(Database(), Apple(2, 0.5)));
        form.SetAmountText(u"5"_s);
        form.SetAmountText(u"3"_s);
        QCOMPARE(form.RowText(0), u"0.75"_s);  // 0.5 / 2 * 3
        QVERIFY(form.Confirm());
        // Not displayed: (53 + 1) * 0.5 / 2 * 3
        QCOMPARE(form.GetResult().item.GetNutrientValue(53), 40.5);
        QCOMPARE(form.GetResult().item.GetServingWeight(0), 3.0);
    }

    void anAmountOfAThousandthIsOne() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForEntry(Database(), Apple(0.001, 0.5)));
        QCOMPARE(form.AmountText(), u"1.00"_s);
        QCOMPARE(form.RowText(0), u"0.50"_s);
        for (const QString& text : {u"0.001"_s, u"none"_s, u"-2"_s}) {
            form.SetAmountText(u"2"_s);
            QVERIFY(!form.FollowAmount(text));
            QCOMPARE(form.AmountText(), u"2"_s);
            form.SetAmountText(text);
            QCOMPARE(form.AmountText(), u"1.00"_s);
        }
        QVERIFY(form.FollowAmount(u"0.002"_s));
        QCOMPARE(form.AmountText(), u"0.002"_s);
    }

    void anEntryLeftAloneStaysTheSameToTheLastBit() {
        CDietEntry entry = Apple(1.0 / 3, 1.0 / 7);
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForEntry(Database(), entry));
        form.SetAmountText(form.AmountText());
        form.SetRowText(0, form.RowText(0));
        QVERIFY(form.Confirm());
        CDietEntry edited = entry;
        TakeChosenFood(Database(), form.GetResult(), edited);
        QVERIFY(edited == entry);
    }

    void servingsOfTheCatalogueAreReadWhenTheyAreAskedFor() {
        AddCatalogue();
        const QString longName = QString(70, u'x');
        AddFood(1, longName, u"raw"_s, 52, {{u"1 small"_s, 10}});
        CDietEntry entry = Apple(1, 1);
        entry.SetCategory(u"Fruit"_s);
        const auto offered = [&](const QString& name, const QString& type) {
            entry.SetName(name);
            entry.SetType(type);
            CAddFoodForm form(*m_doc, CAddFoodRequest::ForEntry(Database(), entry));
            const QStringList before = form.Servings();
            form.OfferServings();
            form.OfferServings();
            return before.join(u',') + u'|' + form.Servings().join(u',');
        };
        QCOMPARE(offered(u"Apple"_s, u"raw"_s), u"1 medium|1 medium,1 cup"_s);
        QCOMPARE(offered(u"Apple"_s, u"baked"_s), u"1 medium|1 medium"_s);
        QCOMPARE(offered(longName, u"raw"_s), u"1 medium|1 medium,1 small"_s);
        // The record of a category in the place of the food's: too few properties.
        const ObjectId food = Database().Foods().RecordAt(0);
        Change("UPDATE records SET body=(SELECT body FROM records WHERE id=?) WHERE id=?",
               {food - 2, food});
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(offered(u"Apple"_s, u"raw"_s), u"1 medium|1 medium"_s);
        CFoodItem apple;
        for (const bool isQuiet : {true, false}) {
            QVERIFY(!ReadAsFood(Database(), kFoods, 0, apple, isQuiet));
            QCOMPARE(m_messages->Said().isEmpty(), isQuiet);
        }
        QVERIFY(Database().GetStore().DeleteDatabase(u"Foods"_s, kCatalogueType));
        QCOMPARE(offered(u"Apple"_s, u"dried"_s), u"1 medium|1 medium"_s);
        QCOMPARE(m_messages->Said(), QString());
    }

  private:
    /// Its nutrients have the values 1, 2, 3, ... times `step`.
    static CDietEntry Apple(double amount, double step) {
        auto entry = MakeEntry<CDietEntry>(kDay, QTime(12, 34, 56));
        entry.SetName(u"Apple"_s);
        entry.SetServingName(u"1 medium"_s);
        entry.SetAmount(amount);
        for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
            entry.SetNutrientValue(nutrient, (nutrient + 1) * step);
        }
        return entry;
    }
};

QTEST_GUILESS_MAIN(TestAddFoodForm)
#include "TestAddFoodForm.moc"
