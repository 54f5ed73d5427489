// A profile of 70 kg and a library: "Sports" with running in MET and in kcal per minute.
#pragma once

#include "app/ItemTexts.h"
#include "diary/DiaryFixture.h"
#include "exercise/ExerciseForm.h"
#include "exercise/ExerciseRules.h"

inline void AddToLibrary(CDatabase& database, qint32 category, const QString& name,
                         const QString& type, double rateKcalPerMinute, double met) {
    CExerciseItem item;
    item.SetCategoryId(category);
    item.SetName(name);
    item.SetType(type);
    item.SetEnergyRateKcalPerMinute(rateKcalPerMinute);
    item.SetMet(met);
    QVERIFY(database.Exlib().Write(-1, item));
}

/// A test over it calls MakeExercises in init.
class CExercisesTest : public CDiaryTest {
  protected:
    void MakeExercises() {
        MakeDiary();
        m_doc->Settings().targets.startWeightKg = 70;
        m_doc->Settings().targets.nutrients[kEnergyIndex] = 2000;
        m_doc->Settings().targets.dailyEnergyKcal = 2500;  // a plan, no target
        const qint32 sports = AddCategory(Database(), u"Sports"_s, ECatalogueKind::Exercises);
        AddCategory(Database(), u"garden"_s, ECatalogueKind::Exercises);
        AddToLibrary(Database(), sports, u"Running"_s, u"slow"_s, 0, 8);
        AddToLibrary(Database(), sports, u"Running"_s, u"fast"_s, 12.4, 0);
        AddToLibrary(Database(), sports, u" Chess"_s, u"seated"_s, 0, 0);
    }

    /// Of the day shown: "Running,slow 02:15 294|...".
    QString Listed() {
        QStringList texts;
        for (const CListed<CExerciseEntry>& listed :
             ListExercises(Database(), kDay, kDay).entries) {
            const CExerciseEntry& entry = listed.entry;
            texts.append(NameAndType(entry.GetName(), entry.GetType()) + u' ' +
                         ExerciseTimeText(entry.GetMinutes()) + u' ' +
                         ExerciseEnergyText(entry.GetEnergyKcal(), EEnergyUnit::Kcal));
        }
        return texts.join(u'|');
    }
};
