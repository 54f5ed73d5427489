#include "DiaryFixture.h"

#include "diary/BmiTable.h"
#include "diary/WeightForm.h"
#include "diary/WeightList.h"
#include "diary/WeightRules.h"
#include "support/DataRows.h"

namespace {

constexpr double kNear = 1e-9;

CWeightEntry MakeEntry(QDate day, QTime time, double weightKg) {
    CWeightEntry entry;
    entry.SetMoment(ToFileTime(day, time));
    entry.SetWeightKg(weightKg);
    return entry;
}

CPreferences UnitsOf(EWeightUnit weight, EHeightUnit height) {
    CPreferences preferences;
    preferences.weightUnit = weight;
    preferences.heightUnit = height;
    return preferences;
}

CPreferences Metric() {
    return UnitsOf(EWeightUnit::Kilograms, EHeightUnit::Centimetres);
}

QStringList Column(const std::vector<CBmiTableItem>& table, QString CBmiTableItem::*text) {
    QStringList texts;
    for (const CBmiTableItem& item : table) {
        texts.append(item.*text);
    }
    return texts;
}

}  // namespace

class TestWeightRules : public CDiaryTest {
    Q_OBJECT

  private:
    void AddWeightEntry(QDate day, QTime time, double weightKg) {
        QVERIFY(AddWeight(*m_doc, MakeEntry(day, time, weightKg)));
    }
    CWeightList Loaded() {
        CWeightList list(*m_doc);
        list.Reload();
        return list;
    }
    QString StoredWeights() {
        const CWeightList list = Loaded();
        QStringList texts;
        for (int row = 0; row < list.Count(); ++row) {
            texts.append(QString::number(list.Entry(row).GetWeightKg()));
        }
        return texts.join(u' ');
    }

  private slots:
    void init() { MakeDiary(); }

    void theListSpeaksTheUsersUnits_data() {
        // 71.5 kg are 157.6289 lb, 11 st 3.6289 lb; 1.5 kg 3.3069 lb; 90 cm 35.433 in.
        AddRows<int, int, QString>({
            {"kilograms", 1, 1, u"Weight(kg)|Weight change(kg)|Waist (cm)|71.50|1.50|90.00"_s},
            {"pounds", 0, 0, u"Weight(lb)|Weight change(lb)|Waist (in)|157.63|3.31|35.43"_s},
            {"stones", 2, 2, u"Weight(st)|Weight change(st)|Waist (in)|11,3.63|3.31|35.43"_s},
            {"other", 3, 1, u"Weight(st,lb)|Weight change(st,lb)|Waist (cm)|||90.00"_s},
        });
    }
    void theListSpeaksTheUsersUnits() {
        const auto& [weightUnit, heightUnit, expected] = DataRow<int, int, QString>();
        CProfileSettings& settings = m_doc->Settings();
        settings.preferences = UnitsOf(EWeightUnit(weightUnit), EHeightUnit(heightUnit));
        settings.targets.startWeightKg = 70;
        CWeightEntry entry = MakeEntry(kDay, QTime(7, 30), 71.5);
        entry.SetMeasurement(kWaistSlot, 90);
        entry.SetMeasurement(kBodyFatSlot, 21.456);
        QVERIFY(AddWeight(*m_doc, entry));
        const CWeightList list = Loaded();
        const QStringList titles = list.ColumnTitles();
        QCOMPARE((QStringList{titles[1], titles[2], titles[4], list.CellText(0, 1),
                              list.CellText(0, 2), list.CellText(0, 4)})
                     .join(u'|'),
                 expected);
        QCOMPARE(list.CellText(0, 0), u"31 May 2026"_s);
        QCOMPARE(titles.last() + u' ' + list.CellText(0, 10), u"Body fat(%) 21.46"_s);
    }

    void aFullStoneIsCarried() {
        m_doc->Settings().preferences.weightUnit = EWeightUnit::Stones;
        AddWeightEntry(kDay, QTime(7, 30), 153.999 / 2.2046);
        QCOMPARE(Loaded().CellText(0, 1), u"11,0.00"_s);
    }

    void theWeightMustLieBetweenOneAndAThousandKilograms_data() {
        AddRows<int, QString, QString, double>({
            {"too light", 1, u"0.99"_s, {}, 0},
            {"lightest", 1, u"1"_s, {}, 1},
            {"heaviest", 1, u"1000"_s, {}, 1000},
            {"too heavy", 1, u"1000.01"_s, {}, 0},
            {"no number", 1, u"heavy"_s, {}, 0},
            {"empty", 1, {}, {}, 0},
            {"lightest in pounds", 0, u"2.2046"_s, {}, 1},
            {"heaviest in pounds", 0, u"2204.6"_s, {}, 1000},
            {"too heavy in pounds", 0, u"2204.7"_s, {}, 0},
            // 157 x 14 + 6.6 = 2204.6 lb
            {"heaviest in stones", 2, u"157"_s, u"6.6"_s, 1000},
            // Whole stones count: 157.5 lb x 0.4535970244035199
            {"stones with decimals", 2, u"11.9"_s, u"3.5"_s, 71.441531343554384},
            {"code 3", 3, u"11"_s, u"3.5"_s, 71.441531343554384},
        });
    }
    void theWeightMustLieBetweenOneAndAThousandKilograms() {
        const auto& [unit, major, minor, storedKg] = DataRow<int, QString, QString, double>();
        CWeightForm form(MakeEntry(kDay, QTime(7, 30), 80),
                         UnitsOf(EWeightUnit(unit), EHeightUnit::Centimetres), true);
        CWeightFields fields = form.GetFields();
        fields.weight = {major, minor};
        QCOMPARE(form.Confirm(fields), storedKg > 0);
        QCOMPARE(m_messages->Said(), storedKg > 0 ? QString() : u"Please enter correct weight."_s);
        QVERIFY(qAbs(form.GetEntry().GetWeightKg() - (storedKg > 0 ? storedKg : 80)) < kNear);
    }

    void inchesComeBackAsTheyWereTyped() {
        for (const EHeightUnit unit : {EHeightUnit::Inches, EHeightUnit::Feet}) {
            const CPreferences preferences = UnitsOf(EWeightUnit::Pounds, unit);
            CWeightForm form(MakeEntry(kDay, QTime(7, 30), 80), preferences, true);
            CWeightFields fields = form.GetFields();
            fields.tape[6] = u"14.25"_s;
            fields.bodyFat = u"14.25"_s;
            QVERIFY(form.Confirm(fields));
            QVERIFY(qAbs(form.GetEntry().GetMeasurement(6) - 36.195) < kNear);  // x 2.54
            QCOMPARE(form.GetEntry().GetMeasurement(kBodyFatSlot), 14.25);
            QCOMPARE(CWeightForm(form.GetEntry(), preferences, true).GetFields(), fields);
        }
    }

    void untouchedFieldsKeepWhatIsNotShown() {
        CWeightEntry entry = MakeEntry(kDay, QTime(7, 30, 15), 71.123456);
        entry.SetMeasurement(0, 101.23456);
        entry.SetMeasurement(12, 5);
        CWeightForm form(entry, Metric(), true);
        CWeightFields fields = form.GetFields();
        QCOMPARE(fields.weight.major, u"71.12"_s);
        QVERIFY(form.Confirm(fields));
        QCOMPARE(form.GetEntry(), entry);
        fields.date = kDay.addDays(1);
        QVERIFY(form.Confirm(fields));
        QCOMPARE(TimeOf(form.GetEntry().GetMoment()), QTime(7, 30, 15));
        QCOMPARE(DateOf(form.GetEntry().GetMoment()), QDate(2026, 6, 1));
    }

    void bodyFatFollowsWaistAndWeight_data() {
        AddRows<bool, QString, QString, QString>({
            // -98.42 + 4.15 x 36 - 0.082 x 180 = 36.22 lb of 180 lb
            {"man", true, u"180"_s, u"36"_s, u"20.12"_s},
            // -76.76 + 149.4 - 14.76 = 57.88 lb of 180 lb
            {"woman", false, u"180"_s, u"36"_s, u"32.16"_s},
            {"leaner than the equation", true, u"180"_s, u"20"_s, u"0"_s},
            {"no waist", true, u"180"_s, {}, u"Please enter correct waist."_s},
            {"no weight", true, {}, u"36"_s, u"Please enter correct weight."_s},
        });
    }
    void bodyFatFollowsWaistAndWeight() {
        const auto& [isMale, pounds, inches, expected] = DataRow<bool, QString, QString, QString>();
        const CWeightForm form(MakeEntry(kDay, QTime(7, 30), 70),
                               UnitsOf(EWeightUnit::Pounds, EHeightUnit::Inches), isMale);
        CWeightFields fields = form.GetFields();
        fields.weight.major = pounds;
        fields.tape[kWaistSlot] = inches;
        const std::optional<QString> text = form.CalculateBodyFat(fields);
        QCOMPARE(text ? *text : m_messages->Said(), expected);
        QCOMPARE(form.GetFields().bodyFat, u"0"_s);
    }

    void aNewEntryStartsFromTheLatest() {
        m_doc->Settings().targets.startWeightKg = 85;
        QCOMPARE(NewWeightEntry(*m_doc, QTime(6, 0)).GetWeightKg(), 85.0);
        CWeightEntry latest = MakeEntry(kDay.addDays(3), QTime(7, 30), 82);
        latest.SetMeasurement(kWaistSlot, 90);
        QVERIFY(AddWeight(*m_doc, latest));
        AddWeightEntry(kDay, QTime(7, 30), 84);
        const CWeightEntry entry = NewWeightEntry(*m_doc, QTime(6, 0));
        QCOMPARE(entry.GetWeightKg(), 82.0);
        QCOMPARE(entry.GetMeasurement(kWaistSlot), 90.0);
        QCOMPARE(entry.GetMoment(), ToFileTime(kDay, QTime(6, 0)));
    }

    void entriesAreEditedAndDeletedAfterAQuestion() {
        for (int day = 0; day < 5; ++day) {
            AddWeightEntry(kDay.addDays(day), QTime(7, 30), 80 + day);
        }
        QVERIFY(!MayEditWeight(0) && !MayEditWeight(2) && MayEditWeight(1));
        QCOMPARE(DeleteWeights(*m_doc, {}), 0);
        QCOMPARE(m_messages->Said(),
                 u"Please select weight to edit.|Please select only one weight to edit.|"
                 "Please select weight to delete."_s);
        // To the end of the list
        QVERIFY(EditWeight(*m_doc, 1, MakeEntry(kDay.addDays(9), QTime(7, 30), 70)));
        QCOMPARE(StoredWeights(), u"80 82 83 84 70"_s);
        m_messages->answers = {false, true, true};
        QCOMPARE(DeleteWeights(*m_doc, {0}), 0);
        QCOMPARE(DeleteWeights(*m_doc, {0}), 1);
        QCOMPARE(DeleteWeights(*m_doc, {1, 3}), 2);
        QCOMPARE(m_messages->asked.sliced(1),
                 (QStringList{u"Are you sure you want to delete selected weight?"_s,
                              u"Are you sure you want to delete 2 weights?"_s}));
        QCOMPARE(StoredWeights(), u"82 84"_s);
    }

    void deletingStopsAtTheFirstFailure() {
        AddWeightEntry(kDay, QTime(7, 30), 80);
        AddWeightEntry(kDay, QTime(7, 30), 81);
        QCOMPARE(DeleteWeights(*m_doc, {0, 7}), 0);
        QCOMPARE(StoredWeights(), u"80 81"_s);
        QCOMPARE(DeleteWeights(*m_doc, {-1, 1}), 1);
        QCOMPARE(StoredWeights(), u"80"_s);
        QCOMPARE(m_messages->TakeShown().count(u"Cannot delete weight."_s), 2);
        QVERIFY(!EditWeight(*m_doc, 7, MakeEntry(kDay, QTime(7, 30), 70)));
        QCOMPARE(m_messages->Said(), u"Cannot add weight."_s);
    }

    void theRowInForceIsFoundForADay() {
        QCOMPARE(Loaded().RowOfDay(kDay), -1);
        AddWeightEntry(kDay, QTime(23, 59, 59), 80);
        AddWeightEntry(kDay.addDays(2), QTime(0, 0), 81);
        const CWeightList list = Loaded();
        QCOMPARE(list.RowOfDay(kDay.addDays(-1)), 0);
        QCOMPARE(list.RowOfDay(kDay.addDays(1)), 0);
        QCOMPARE(list.RowOfDay(kDay.addDays(2)), 1);
    }

    void theRiskHasItsBoundaries_data() {
        AddRows<double, QString>({{"19.99", 19.99, u"High"_s},
                                  {"20", 20, u"Low"_s},
                                  {"64.8 kg at 180 cm", 64.8 / (1.8 * 1.8), u"Low"_s},
                                  {"25", 25, u"Low"_s},
                                  {"25.01", 25.01, u"Moderate"_s},
                                  {"27", 27, u"Moderate"_s},
                                  {"27.01", 27.01, u"High"_s}});
    }
    void theRiskHasItsBoundaries() {
        const auto& [bmi, risk] = DataRow<double, QString>();
        QCOMPARE(RiskText(RiskOf(bmi)), risk);
    }

    void kilogramRowsEndOneBeforeTheHighest() {
        const auto table = BmiTable({70, 70, 70}, 175, EWeightUnit::Kilograms);
        QCOMPARE(Column(table, &CBmiTableItem::weight).join(u' '),
                 u"Weight 60 61 62 63 64 65 66 67 68 69 70 71 72 73 74 75 76 77 78 79"_s);
        // Divided by 1.75 x 1.75 = 3.0625: 61 gives 19.918, 62 20.245, 76 24.816, 77 25.143.
        QCOMPARE(Column(table, &CBmiTableItem::risk).join(u' '),
                 u"Health risk High High Low Low Low Low Low Low Low Low Low <-- Low Low Low Low "
                 "Low Low Moderate Moderate Moderate"_s);
        QCOMPARE(table[1].bmi, u" 19.59"_s);
        QCOMPARE(table[0].background, Rgb(127, 127, 127));
        QCOMPARE(table[1].background, Rgb(255, 75, 75));
        QCOMPARE(table[11].background, Rgb(0, 255, 0));
        QCOMPARE(table[20].background, Rgb(255, 255, 0));
    }

    void poundRowsStepByTwo() {
        // 60 kg are 132.276 lb, 80 kg 176.368 lb: (176 - 132 + 1) / 2 = 22 items.
        const auto table = BmiTable({70, 70, 70}, 175, EWeightUnit::Pounds);
        QCOMPARE(table.size(), size_t{22});
        QCOMPARE(table[1].weight + table[21].weight, u"132172"_s);
        // 156 lb are 70.76 kg, index 23.106; 154 lb are still 69 whole kilograms.
        QCOMPARE(table[13].weight + table[13].bmi + table[13].risk, u"156 23.11Low <--"_s);
        QCOMPARE(Column(table, &CBmiTableItem::risk).filter(u"<--"_s).size(), 1);
        QCOMPARE(Column(BmiTable({70, 70, 70}, 175, EWeightUnit::Stones), &CBmiTableItem::risk),
                 Column(table, &CBmiTableItem::risk));
        // 150 lb are 68.04 kg, 152 lb 68.95 kg.
        const auto twice = BmiTable({68, 68, 60}, 175, EWeightUnit::Pounds);
        QCOMPARE(Column(twice, &CBmiTableItem::risk).filter(u"<--"_s).size(), 2);
    }

    void theTableReachesTheCurrentWeight() {
        const auto rows = [](double currentKg) {
            const auto table = BmiTable({currentKg, 80, 70}, 175, EWeightUnit::StonesAndPounds);
            return table[1].weight + u'-' + table.back().weight;
        };
        QCOMPARE(rows(75), u"60-89"_s);
        QCOMPARE(rows(65.9), u"55-89"_s);
        QCOMPARE(rows(90.5), u"60-99"_s);
        QCOMPARE(rows(1e300), u"60-1009"_s);
    }

    void theIndexIsThatOfTheDay() {
        CProfileSettings& settings = m_doc->Settings();
        settings.user.heightCm = 180;
        settings.targets.startWeightKg = settings.targets.goalWeightKg = 64.8;
        QCOMPARE(BmiOnDay(*m_doc, kDay).text, u"Your BMI is  20.00"_s);
        AddWeightEntry(kDay, QTime(7, 30), 81);  // 81 / 3.24
        AddWeightEntry(kDay.addDays(1), QTime(7, 30), 32.3);
        QCOMPARE(BmiOnDay(*m_doc, kDay).text, u"Your BMI is  25.00"_s);
        QCOMPARE(BmiOnDay(*m_doc, kDay.addDays(1)).text, u"Your BMI is   9.97"_s);
    }
};

QTEST_GUILESS_MAIN(TestWeightRules)
#include "TestWeightRules.moc"
