#include "diary/DiaryFixture.h"

#include <limits>

#include "diary/weight/BmiTable.h"
#include "diary/weight/WeightForm.h"
#include "diary/weight/WeightList.h"
#include "diary/weight/WeightRules.h"

class TestWeightRules : public CDiaryTest {
    Q_OBJECT

  private:
    void AddWeightEntry(QDate day, QTime time, double weightKg) {
        QVERIFY(AddWeight(*m_doc, MakeWeight(day, time, weightKg)));
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

    void theListSpeaksTheUsersUnits() {
        m_doc->Settings().targets.startWeightKg = 70;
        CWeightEntry entry = MakeWeight(kDay, QTime(7, 30), 71.5);
        entry.SetMeasurement(kWaistSlot, 90);
        entry.SetMeasurement(kBodyFatSlot, 21.456);
        QVERIFY(AddWeight(*m_doc, entry));
        const auto listed = [this](EWeightUnit weightUnit, EHeightUnit heightUnit) {
            m_doc->Settings().preferences = CPreferences{weightUnit, heightUnit};
            const CWeightList list = Loaded();
            QStringList texts;
            for (const int column : {1, 2, 4, 10}) {
                texts.append(list.ColumnTitles()[column] + u' ' + list.CellText(0, column));
            }
            return texts.join(u'|');
        };
        using enum EWeightUnit;
        using enum EHeightUnit;
        const QString fat = u"|Body fat(%) 21.46"_s;
        // 71.5 kg are 157.6289 lb, 11 st 3.6289 lb; 1.5 kg 3.3069 lb; 90 cm 35.433 in.
        QCOMPARE(listed(Pounds, Feet),
                 u"Weight(lb) 157.63|Weight change(lb) 3.31|Waist (in) 35.43"_s + fat);
        QCOMPARE(listed(Stones, Inches),
                 u"Weight(st) 11,3.63|Weight change(st) 3.31|Waist (in) 35.43"_s + fat);
        QCOMPARE(listed(StonesAndPounds, Centimetres),
                 u"Weight(st,lb) |Weight change(st,lb) |Waist (cm) 90.00"_s + fat);
        AddWeightEntry(kDay, QTime(7, 30), 153.999 / 2.2046);
        m_doc->Settings().preferences.weightUnit = Stones;
        QCOMPARE(Loaded().CellText(1, 1), u"10,14.00"_s);  // 153.999 - 10 x 14
    }

    void theWeightInForceIsTheLatestBefore() {
        m_doc->Settings().targets.startWeightKg = 70;
        QCOMPARE(WeightOnDay(*m_doc, kDay), 70.0);
        AddWeightEntry(kDay, QTime(20, 0), 81);
        AddWeightEntry(kDay, QTime(8, 0), 82);
        for (const auto& [days, weightKg] : {std::pair{-1, 82.0}, {0, 81.0}, {1, 81.0}}) {
            QCOMPARE(WeightOnDay(*m_doc, kDay.addDays(days)), weightKg);
        }
        QCOMPARE(WeightOnDay(*m_doc, {}), 82.0);
        CWeightEntry latest = MakeWeight(kDay.addDays(3), QTime(7, 30), 83);
        latest.SetMeasurement(kWaistSlot, 90);
        QVERIFY(AddWeight(*m_doc, latest));
        latest.SetMoment(ToFileTime(kDay, QTime(6, 0)));
        QCOMPARE(NewWeightEntry(*m_doc, QTime(6, 0)), latest);
        QVERIFY(Database().Weight().Delete(2));
        // What cannot be read is passed over.
        for (const int damaged : {1, 0}) {
            DamageEntry(Database().Weight(), damaged);
            m_doc->Settings().targets.startWeightKg = 70;
            const double weightKg = damaged == 1 ? 82 : 70;
            QCOMPARE(WeightOnDay(*m_doc, kDay), weightKg);
            QCOMPARE(NewWeightEntry(*m_doc, QTime(9, 0)).GetWeightKg(), weightKg);
        }
    }

    void theWeightMustLieBetweenOneAndAThousandKilograms() {
        const auto stored = [this](EWeightUnit unit, const QString& major, const QString& minor) {
            CWeightForm form(MakeWeight(kDay, QTime(7, 30), 80),
                             CPreferences{unit, EHeightUnit::Centimetres}, true);
            CWeightFields fields = form.GetFields();
            fields.weight = {major, minor};
            const bool isTaken = form.Confirm(fields);
            const QString kg = QString::number(form.GetEntry().GetWeightKg(), 'g', 9);
            return isTaken ? kg : m_messages->Said() + kg;
        };
        using enum EWeightUnit;
        const QString refused = u"Please enter correct weight.80"_s;
        for (const QString& text : {u"0.99"_s, u"1000.01"_s, u"heavy"_s, QString()}) {
            QCOMPARE(stored(Kilograms, text, {}), refused);
        }
        QCOMPARE(stored(Kilograms, u"1"_s, {}) + stored(Kilograms, u"1000"_s, {}), u"11000"_s);
        QCOMPARE(stored(Pounds, u"2.2046"_s, {}) + stored(Pounds, u"2204.6"_s, {}), u"11000"_s);
        QCOMPARE(stored(Pounds, u"2204.7"_s, {}), refused);
        QCOMPARE(stored(Stones, u"157"_s, u"6.6"_s), u"1000"_s);  // 157 x 14 + 6.6 = 2204.6 lb
        // Whole stones count: 157.5 lb x 0.4535970244035199
        QCOMPARE(stored(Stones, u"11.9"_s, u"3.5"_s), u"71.4415313"_s);
        QCOMPARE(stored(StonesAndPounds, u"11"_s, u"3.5"_s), u"71.4415313"_s);
    }

    void inchesComeBackAsTheyWereTyped() {
        for (const EHeightUnit unit : {EHeightUnit::Inches, EHeightUnit::Feet}) {
            const CPreferences preferences = CPreferences{EWeightUnit::Pounds, unit};
            CWeightForm form(MakeWeight(kDay, QTime(7, 30), 80), preferences, true);
            CWeightFields fields = form.GetFields();
            fields.tape[6] = u"14.25"_s;
            fields.bodyFat = u"14.25"_s;
            QVERIFY(form.Confirm(fields));
            QCOMPARE(form.GetEntry().GetMeasurement(6), 36.195);  // x 2.54
            QCOMPARE(form.GetEntry().GetMeasurement(kBodyFatSlot), 14.25);
            QCOMPARE(CWeightForm(form.GetEntry(), preferences, true).GetFields(), fields);
        }
    }

    void untouchedFieldsKeepWhatIsNotShown() {
        CWeightEntry entry = MakeWeight(kDay, QTime(7, 30, 15), 71.123456);
        entry.SetMeasurement(0, 101.23456);
        entry.SetMeasurement(12, 5);
        CWeightForm form(entry, CPreferences{EWeightUnit::Kilograms, EHeightUnit::Centimetres},
                         true);
        CWeightFields fields = form.GetFields();
        QCOMPARE(fields.weight.major, u"71.12"_s);
        QVERIFY(form.Confirm(fields));
        QCOMPARE(form.GetEntry(), entry);
        fields.date = kDay.addDays(1);
        QVERIFY(form.Confirm(fields));
        QCOMPARE(form.GetEntry().GetMoment(), ToFileTime(QDate(2026, 6, 1), QTime(7, 30, 15)));
        const QString large = u"2000000000"_s;
        for (QString* field : {&fields.weight.minor, &fields.bodyFat, &fields.tape[2]}) {
            const QString before = std::exchange(*field, large);
            QVERIFY(!form.Confirm(fields));
            QCOMPARE(m_messages->Said(), u"The number '2000000000' is too large."_s);
            *field = before;
        }
    }

    void bodyFatFollowsWaistAndWeight() {
        const std::tuple<bool, QString, QString, QString> rows[] = {
            // -98.42 + 4.15 x 36 - 0.082 x 180 = 36.22 lb of 180 lb
            {true, u"180"_s, u"36"_s, u"20.12"_s},
            // -76.76 + 149.4 - 14.76 = 57.88 lb of 180 lb
            {false, u"180"_s, u"36"_s, u"32.16"_s},
            {true, u"180"_s, u"20"_s, u"0"_s},  // leaner than the equation
            {true, u"180"_s, {}, u"Please enter correct waist."_s},
            {true, {}, u"36"_s, u"Please enter correct weight."_s},
        };
        for (const auto& [isMale, pounds, inches, text] : rows) {
            const CWeightForm form(MakeWeight(kDay, QTime(7, 30), 70),
                                   CPreferences{EWeightUnit::Pounds, EHeightUnit::Inches}, isMale);
            CWeightFields fields = form.GetFields();
            fields.weight.major = pounds;
            fields.tape[kWaistSlot] = inches;
            const std::optional<QString> fat = form.CalculateBodyFat(fields);
            QCOMPARE(fat ? *fat : m_messages->Said(), text);
        }
    }

    void aListedEntryIsFoundAgainBesideOthersOfItsMoment() {
        for (const double weightKg : {80.0, 81.0, 82.0, 83.0}) {
            AddWeightEntry(kDay, QTime(7, 30), weightKg);
        }
        const ListedEntries<CWeightEntry> listed = Loaded().EntriesAt({0, 1, 2, 3});
        QCOMPARE(DeleteWeights(*m_doc, {listed[0]}), 1);
        AddWeightEntry(kDay, QTime(7, 30), 84);
        QCOMPARE(WeightToEdit(*m_doc, listed[1].record)->GetWeightKg(), 81.0);
        QVERIFY(EditWeight(*m_doc, listed[1].record, MakeWeight(kDay, QTime(7, 30), 90)));
        QCOMPARE(DeleteWeights(*m_doc, {listed[0], listed[2]}), 1);
        QCOMPARE(StoredWeights(), u"90 83 84"_s);
        const CWeightEntry latest = MakeWeight(kDay.addDays(9), QTime(7, 30), 70);
        QVERIFY(EditWeight(*m_doc, listed[3].record, latest));
        QCOMPARE(StoredWeights(), u"90 84 70"_s);
        QVERIFY(!EditWeight(*m_doc, listed[0].record, latest) && !MayEditWeight(2));
        QCOMPARE(m_messages->Said(),
                 u"Cannot delete record. Error=2|Cannot delete weight.|Cannot add weight.|"
                 "Please select only one weight to edit."_s);
    }

    void damagedEntriesAreToldAndMended() {
        CWeightEntry undated = MakeWeight(kDay, QTime(7, 30), 80);
        for (const FileTime moment : {FileTime{-1}, std::numeric_limits<FileTime>::max()}) {
            undated.SetMoment(moment);
            QVERIFY(AddWeight(*m_doc, undated));
        }
        for (const int position : {0, 1}) {
            const ObjectId record = Database().Weight().RecordAt(position);
            QCOMPARE(WeightToEdit(*m_doc, record)->GetMoment(), ToFileTime(kDay, QTime(0, 0)));
        }
        const QDate last(9999, 12, 31);
        for (const auto& [day, shown] : {std::pair(last, last), {last.addDays(1), kDay}}) {
            undated.SetMoment(FirstMomentOf(day));
            QVERIFY(Database().Weight().Write(1, undated));
            const ObjectId record = Database().Weight().RecordAt(1);
            QCOMPARE(WeightToEdit(*m_doc, record)->GetMoment(), FirstMomentOf(shown));
        }
        CDietEntry alien;
        CItemDatabaseBase& weights = Database().Weight();
        QVERIFY(weights.Write(-1, alien));  // behind the first
        QCOMPARE(Loaded().Count(), 1);
        QVERIFY(!WeightToEdit(*m_doc, weights.RecordAt(1)) && !WeightToEdit(*m_doc, 0));
        const QString wrong =
            u"Database error. Wrong number of properties, record #1, props = 62 (15)|"_s;
        QCOMPARE(m_messages->Said(), wrong + wrong + u"Cannot add weight.|Cannot add weight."_s);
    }

    void theRowInForceIsFoundForADay() {
        QCOMPARE(Loaded().RowOfDay(kDay), -1);
        AddWeightEntry(kDay, QTime(23, 59, 59), 80);
        AddWeightEntry(kDay.addDays(2), QTime(0, 0), 81);
        for (const auto& [day, row] : {std::pair(-1, 0), {1, 0}, {2, 1}}) {
            QCOMPARE(Loaded().RowOfDay(kDay.addDays(day)), row);
        }
    }

    void theRiskHasItsBoundaries() {
        QString risks;
        for (const double bmi : {19.99, 20., 64.8 / (1.8 * 1.8), 25., 25.01, 27., 27.01}) {
            risks += RiskText(RiskOf(bmi)) + u' ';
        }
        QCOMPARE(risks, u"High Low Low Low Moderate Moderate High "_s);
    }

    void theTableSpansTheWeights() {
        // current, start and goal; first and last row, number of items, rows of the current weight
        using enum EWeightUnit;
        const std::tuple<CBmiWeights, EWeightUnit, QString> rows[] = {
            {{70, 70, 70}, Kilograms, u"60-79 21 70"_s},
            // 60 kg are 132.276 lb, 80 kg 176.368 lb: (176 - 132 + 1) / 2 items. 156 lb are
            // 70.76 kg; 154 lb are still 69 whole kilograms.
            {{70, 70, 70}, Pounds, u"132-172 22 156"_s},
            // 150 lb are 68.04 kg, 152 lb 68.95 kg.
            {{68, 68, 60}, Pounds, u"110-168 31 150 152"_s},
            {{65.9, 80, 70}, StonesAndPounds, u"55-89 36 65"_s},
            {{90.5, 80, 70}, StonesAndPounds, u"60-99 41 90"_s},
            {{1e300, 80, 70}, StonesAndPounds, u"60-1009 951"_s},  // damaged
            {{-1e300, 80, 70}, StonesAndPounds, u"-10-89 101"_s},
        };
        for (const auto& [weights, unit, expected] : rows) {
            const auto table = BmiTable(weights, 175, unit);
            QString text =
                table[1].weight + u'-' + table.back().weight + u' ' + QString::number(table.size());
            for (const CBmiTableItem& item : table) {
                text += item.risk.endsWith(u" <--") ? u' ' + item.weight : QString();
            }
            QCOMPARE(text, expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestWeightRules)
#include "TestWeightRules.moc"
