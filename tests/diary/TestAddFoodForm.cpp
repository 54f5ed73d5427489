#include "DiaryFixture.h"

#include "diary/AddFoodForm.h"

Q_DECLARE_METATYPE(EEnergyUnit)

class TestAddFoodForm : public QObject {
    Q_OBJECT

  private slots:
    void pickingNarrowsDownToOneFood() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        QCOMPARE(form.Choices(EPicker::Category), (QStringList{u"Fruit"_s, u"Soups"_s}));
        QCOMPARE(form.Pick(EPicker::Category, u"Fruit"_s), EPicker::Name);
        QCOMPARE(form.Choices(EPicker::Name), QStringList{u"Apple"_s});
        QCOMPARE(form.Pick(EPicker::Name, u"Apple"_s), EPicker::Type);
        QCOMPARE(form.Choices(EPicker::Type), (QStringList{u"dried"_s, u"raw"_s}));
        QCOMPARE(form.Pick(EPicker::Type, u"raw"_s), EPicker::None);
        QCOMPARE(form.Servings(), (QStringList{u"1 medium"_s, u"1 cup"_s}));
        QCOMPARE(form.ServingText(), u"1 medium"_s);
        QCOMPARE(form.RowText(0), u"78.00"_s);  // 52 * 1.50

        form.SetAmountText(u"3"_s);
        form.Pick(EPicker::Category, u"Soups"_s);
        QCOMPARE(form.CategoryText(), u"Soups"_s);
        QCOMPARE(form.NameText() + form.TypeText(), QString());
        QCOMPARE(form.ServingText(), u"1 serving"_s);
        QCOMPARE(form.AmountText(), u"1.00"_s);
        QCOMPARE(form.RowText(0), u"0.00"_s);
    }

    void aPickerWithNothingToListSaysWhy() {
        CDiaryFixture diary;
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        const auto refusal = [&](EPicker picker) {
            return form.Choices(picker).isEmpty() ? diary.messages.TakeShown().join(u'|')
                                                  : QString();
        };
        QCOMPARE(refusal(EPicker::Category), u"There are no categories to select."_s);
        QCOMPARE(refusal(EPicker::Name), u"There is no category selected."_s);
        QCOMPARE(refusal(EPicker::Type), u"There is no category selected."_s);
        diary.AddCategory(ECatalogueKind::Foods, u"Empty"_s);
        form.Pick(EPicker::Category, u"Empty"_s);
        QCOMPARE(refusal(EPicker::Name), u"There are no names to select."_s);
        QCOMPARE(refusal(EPicker::Type), u"There are no types to select."_s);
    }

    void valuesFollowServingAndAmount_data() {
        QTest::addColumn<QStringList>("picks");  // category, name, type
        QTest::addColumn<QString>("serving");
        QTest::addColumn<EEnergyUnit>("unit");
        QTest::addColumn<QString>("energy");  // for 2 servings
        const QStringList apple{u"Fruit"_s, u"Apple"_s, u"raw"_s};
        const QStringList soup{u"Soups"_s, u"Tomato soup"_s, u"home made"_s};
        const auto kcal = EEnergyUnit::Kcal;
        QTest::newRow("weighed") << apple << u"1 medium"_s << kcal << u"156.00"_s;
        QTest::newRow("in kJ") << apple << u"1 medium"_s << EEnergyUnit::KJ << u"652.08"_s;
        QTest::newRow("second serving") << apple << u"1 cup"_s << kcal << u"130.00"_s;
        QTest::newRow("no serving of the list") << apple << u"half"_s << kcal << u"104.00"_s;
        QTest::newRow("one-serving food") << soup << u"1 bowl"_s << kcal << u"160.00"_s;
    }
    void valuesFollowServingAndAmount() {
        QFETCH(QStringList, picks);
        QFETCH(QString, serving);
        QFETCH(EEnergyUnit, unit);
        CDiaryFixture diary;
        diary.AddCatalogue();
        diary.doc->Settings().preferences.energyUnit = unit;
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        PickFood(form, picks);
        form.SetServingText(serving);
        form.SetAmountText(u"2"_s);
        QTEST(form.RowText(0), "energy");
    }

    void aRecipeIsLoadedByNameAndHasNoWeight() {
        CDiaryFixture diary;
        CRecipeItem recipe;
        recipe.SetParentId(diary.AddCategory(ECatalogueKind::Recipes, u"Cakes"_s));
        recipe.SetItemKind(EItemKind::Recipe);
        recipe.SetItemId(0x100001);
        recipe.SetName(u"Apple pie"_s);
        recipe.SetServingName(u"1 slice"_s);
        recipe.SetNutrientValue(kEnergyIndex, 250);
        QVERIFY(diary.Database().Recipes().Write(-1, recipe));
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        form.SetKind(EItemKind::Recipe);
        form.Pick(EPicker::Category, u"Cakes"_s);
        QCOMPARE(form.Choices(EPicker::Name), QStringList{u"Apple pie"_s});
        QCOMPARE(form.Pick(EPicker::Name, u"Apple pie"_s), EPicker::None);
        form.SetAmountText(u"2"_s);
        QCOMPARE(form.ServingText(), u"1 slice"_s);
        QCOMPARE(form.RowText(0), u"500.00"_s);
    }

    void anAmountThatCountsForNothingBecomesOne() {
        CDiaryFixture diary;
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        for (const QString& text : {u"0"_s, u"0.001"_s, u"-2"_s, u"some"_s, QString()}) {
            form.SetAmountText(u"2"_s);
            form.SetAmountText(text);
            QCOMPARE(form.AmountText(), u"1.00"_s);
        }
    }

    void aNewAmountScalesAllValuesOfAnEntry() {
        CDiaryFixture diary;
        CDietEntry entry;
        entry.SetName(u"Apple"_s);
        entry.SetServingName(u"1 medium"_s);
        entry.SetAmount(2);
        for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
            entry.SetNutrientValue(nutrient, nutrient + 0.5);
        }
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForEntry(diary.Database(), entry));
        form.SetAmountText(u"5"_s);
        form.SetAmountText(u"3"_s);
        QCOMPARE(form.RowText(0), u"0.75"_s);  // 0.5 / 2 * 3
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().item.GetNutrientValue(53), 80.25);  // 53.5 / 2 * 3, not displayed
        QCOMPARE(form.GetResult().item.GetServingWeight(0), 3.0);
    }

    void anEntryLeftAloneStaysTheSameToTheLastBit() {
        CDiaryFixture diary;
        CDietEntry entry;
        entry.SetMoment(ToFileTime(diary.day, QTime(12, 34, 56)));
        entry.SetName(u"Apple"_s);
        entry.SetServingName(u"1 medium"_s);
        entry.SetAmount(1.0 / 3);
        for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
            entry.SetNutrientValue(nutrient, (nutrient + 1) / 7.0);
        }
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForEntry(diary.Database(), entry));
        form.SetAmountText(form.AmountText());
        form.SetRowText(0, form.RowText(0));
        QVERIFY(form.Confirm());
        CDietEntry edited = entry;
        TakeChosenFood(diary.Database(), form.GetResult(), edited);
        QVERIFY(edited == entry);
    }

    void typedValuesStandOverComputedOnes() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        diary.doc->Settings().preferences.energyUnit = EEnergyUnit::KJ;
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        PickFood(form, {u"Fruit"_s, u"Apple"_s, u"raw"_s});
        form.SetRowText(0, u"418"_s);
        form.SetRowText(1, QString());
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().item.GetNutrientValue(0), 100.0);  // 418 / 4.18
        QCOMPARE(form.GetResult().item.GetNutrientValue(1), 0.0);
        form.SetAmountText(u"2"_s);
        QCOMPARE(form.RowText(0), u"652.08"_s);
    }

    void valuesTypedWithoutAnItemFollowTheAmount() {
        CDiaryFixture diary;
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        form.SetNameText(u" Cake of a friend "_s);
        form.SetRowText(0, u"300"_s);
        form.SetAmountText(u"2"_s);
        QCOMPARE(form.RowText(0), u"600.00"_s);
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().item.GetName(), u"Cake of a friend"_s);
        QCOMPARE(form.GetResult().item.GetNutrientValue(0), 600.0);
    }

    void okNamesTheFirstThingThatIsMissing() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        CAddFoodRequest request = CAddFoodRequest::ForNewEntry(QTime(12, 0));
        request.refuseDuplicates = true;
        CAddFoodForm form(*diary.doc, request);
        const auto refusal = [&] {
            return form.Confirm() ? QString() : diary.messages.TakeShown().join(u'|');
        };
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

    void findingGoesOnAfterTheLastHit() {
        CDiaryFixture diary;
        diary.AddCatalogue();
        CAddFoodForm form(*diary.doc, CAddFoodRequest::ForNewEntry(QTime(12, 0)));
        QVERIFY(!form.HasFindTexts());
        QVERIFY(form.Find(u"APP"_s, {}));
        QCOMPARE(form.TypeText(), u"raw"_s);
        QCOMPARE(form.CategoryText(), u"Fruit"_s);
        QVERIFY(form.FindNext());
        QCOMPARE(form.TypeText(), u"dried"_s);
        QCOMPARE(form.RowText(0), u"14.40"_s);  // 240 * 0.06
        QVERIFY(!form.FindNext());
        QCOMPARE(diary.messages.shown, QStringList{u"Food not found."_s});
        QCOMPARE(form.TypeText(), u"dried"_s);
    }

  private:
    static void PickFood(CAddFoodForm& form, const QStringList& categoryNameType) {
        form.Pick(EPicker::Category, categoryNameType[0]);
        form.Pick(EPicker::Name, categoryNameType[1]);
        form.Pick(EPicker::Type, categoryNameType[2]);
    }
};

QTEST_GUILESS_MAIN(TestAddFoodForm)
#include "TestAddFoodForm.moc"
