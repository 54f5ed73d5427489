#include "diary/DiaryFixture.h"

#include "catalogue/pick/AddFoodForm.h"

class TestAddFoodForm : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void pickingNarrowsDownToOneFood() {
        AddCatalogue();
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        EPicker picker = EPicker::Category;
        QString offered;
        for (const QString& row : {u"Fruit"_s, u"Apple"_s, u"raw"_s}) {
            offered += PickerHeader(picker) + u' ' + form.Choices(picker).rows.join(u',') + u'|';
            picker = form.Pick(picker, row);
        }
        QCOMPARE(picker, EPicker::None);
        QCOMPARE(offered + form.Servings().join(u','),
                 u"Category Fruit,Soups|Name Apple|Name dried,raw|1 medium,1 cup"_s);
        QCOMPARE(Shown(form),
                 u"Fruit/Apple/raw: 1.00 x 1 medium = 78.00"_s);  // 52 * 1.50
        form.SetAmountText(u"3"_s);
        form.Pick(EPicker::Category, u"Soups"_s);
        QCOMPARE(Shown(form), u"Soups//: 1.00 x 1 serving = 0.00"_s);
    }

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
    }

    void valuesFollowServingAndAmount() {
        AddCatalogue();
        const QStringList apple{u"Fruit"_s, u"Apple"_s, u"raw"_s};
        const QStringList soup{u"Soups"_s, u"Tomato soup"_s, u"home made"_s};
        using enum EEnergyUnit;
        const std::tuple<QStringList, QString, EEnergyUnit, QString> rows[] = {
            // for 2 servings
            {apple, u"1 medium"_s, Kcal, u"156.00"_s},
            {apple, u"1 medium"_s, KJ, u"652.08"_s},
            {apple, u"1 cup"_s, Kcal, u"130.00"_s},
            {apple, u"half"_s, Kcal, u"104.00"_s},   // no serving of the list
            {soup, u"1 bowl"_s, Kcal, u"160.00"_s},  // a one-serving food
        };
        for (const auto& [picks, serving, unit, energy] : rows) {
            m_doc->Settings().preferences.energyUnit = unit;
            CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
            PickFood(form, picks);
            form.SetServingText(serving);
            form.SetAmountText(u"2"_s);
            QCOMPARE(form.RowText(0), energy);
        }
    }

    void aRecipeIsLoadedByNameAndHasNoWeight() {
        CRecipeItem recipe;
        recipe.SetParentId(AddCategory(Database(), u"Cakes"_s, ECatalogueKind::Recipes));
        recipe.SetItemKind(EItemKind::Recipe);
        recipe.SetItemId(0x100001);
        recipe.SetName(u"Apple pie"_s);
        recipe.SetServingName(u"1 slice"_s);
        recipe.SetNutrientValue(kEnergyIndex, 250);
        QVERIFY(Database().Recipes().Write(-1, recipe));
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        form.SetKind(EItemKind::Recipe);
        form.Pick(EPicker::Category, u"Cakes"_s);
        QCOMPARE(form.Pick(EPicker::Name, u"Apple pie"_s), EPicker::None);
        form.SetAmountText(u"2"_s);
        QCOMPARE(Shown(form), u"Cakes/Apple pie/: 2 x 1 slice = 500.00"_s);
    }

    void anAmountThatCountsForNothingBecomesOne() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        for (const QString& text : {u"0"_s, u"0.001"_s, u"-2"_s, u"some"_s, u"1e10"_s, QString()}) {
            form.SetAmountText(u"2"_s);
            form.SetAmountText(text);
            QCOMPARE(form.AmountText(), u"1.00"_s);
        }
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

    void typedValuesStandOverComputedOnes() {
        AddCatalogue();
        m_doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        PickFood(form, {u"Fruit"_s, u"Apple"_s, u"raw"_s});
        form.SetRowText(0, u"418"_s);
        form.SetRowText(1, QString());
        form.SetAmountText(form.AmountText());
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().item.GetNutrientValue(0), 100.0);  // 418 / 4.18
        QCOMPARE(form.GetResult().item.GetNutrientValue(1), 0.0);
        form.SetAmountText(u"2"_s);
        QCOMPARE(form.RowText(0), u"652.08"_s);
    }

    void valuesTypedWithoutAnItemFollowTheAmount() {
        CAddFoodForm form(*m_doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        form.SetNameText(u" Cake "_s);
        form.SetRowText(0, u"300"_s);
        form.SetAmountText(u"2"_s);
        QVERIFY(form.Confirm());
        QCOMPARE(form.RowText(0) + form.GetResult().item.GetName(), u"600.00Cake"_s);
        QCOMPARE(form.GetResult().item.GetNutrientValue(0), 600.0);
    }

    void okNamesTheFirstThingThatIsMissing() {
        AddCatalogue();
        CAddFoodRequest request = CAddFoodRequest::ForNewEntry(QTime(12, 0));
        request.refuseDuplicates = true;
        CAddFoodForm form(*m_doc, request);
        const auto refusal = [&] { return form.Confirm() ? QString() : m_messages->Said(); };
        form.SetServingText(u" "_s);
        QCOMPARE(refusal(), u"Please enter food name"_s);
        form.SetNameText(u"Pear"_s);
        QCOMPARE(refusal(), u"Please enter serving name."_s);
        form.Pick(EPicker::Category, u"Fruit"_s);
        form.SetNameText(u"Apple "_s);
        form.SetTypeText(u"raw"_s);
        QCOMPARE(refusal(), u"Food 'Apple, raw' already exists in category 'Fruit'."_s);
        form.SetTypeText(u"baked"_s);
        QCOMPARE(refusal(), QString());
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
    /// "Fruit/Apple/raw: 2 x 1 medium = 156.00"
    static QString Shown(const CAddFoodForm& form) {
        return form.CategoryText() + u'/' + form.NameText() + u'/' + form.TypeText() + u": "_s +
               form.AmountText() + u" x "_s + form.ServingText() + u" = "_s + form.RowText(0);
    }
    static void PickFood(CAddFoodForm& form, const QStringList& categoryNameType) {
        form.Pick(EPicker::Category, categoryNameType[0]);
        form.Pick(EPicker::Name, categoryNameType[1]);
        form.Pick(EPicker::Type, categoryNameType[2]);
    }
};

QTEST_GUILESS_MAIN(TestAddFoodForm)
#include "TestAddFoodForm.moc"
