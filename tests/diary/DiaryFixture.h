// A volume with the profile "Ann" and a small catalogue.
#pragma once

#include "diary/DietRules.h"
#include "support/CatalogueTest.h"

inline const QDate kDay{2026, 5, 31};

/// A test over it calls MakeDiary in init.
class CDiaryTest : public CCatalogueTest {
  protected:
    void MakeDiary() {
        MakeVolume();
        CProfileSettings settings = CProfileSettings::ForNewProfile(kDay);
        settings.user.name = u"Ann"_s;
        settings.preferences.displayed = 0b11;  // energy and protein
        QVERIFY(m_doc->CreateProfile(settings) && m_doc->SetActiveProfile(u"Ann"_s));
        m_doc->dayShown = kDay;
        m_doc->selectedMeal = 2;
    }

    /// Energy in kcal; one gram of protein for each 10 kcal. A weight of 0 makes a one-serving
    /// food.
    void AddFood(qint32 category, const QString& name, const QString& type, double energyKcal,
                 const std::vector<std::pair<QString, double>>& servings) {
        CFoodItem food = MakeFood(category, name, type);
        food.SetNutrientValue(kEnergyIndex, energyKcal);
        food.SetNutrientValue(1, energyKcal / 10);
        for (int index = 0; index < static_cast<int>(servings.size()); ++index) {
            food.SetServingName(index, servings[index].first);
            food.SetServingWeight(index, servings[index].second);
        }
        QVERIFY(Database().Foods().Write(-1, food));
    }

    /// "Fruit" with an apple of 52 kcal per 100 g in two types, "Soups" with one bowl of 80 kcal.
    void AddCatalogue() {
        const qint32 fruit = AddCategory(Database(), u"Fruit"_s);
        const qint32 soups = AddCategory(Database(), u"Soups"_s);
        AddFood(fruit, u"Apple"_s, u"raw"_s, 52, {{u"1 medium"_s, 150}, {u"1 cup"_s, 125}});
        AddFood(fruit, u"Apple"_s, u"dried"_s, 240, {{u"1 ring"_s, 6}});
        AddFood(soups, u"Tomato soup"_s, u"home made"_s, 80, {{u"1 bowl"_s, 0}});
    }

    void AddToLibrary(qint32 category, const QString& name, const QString& type,
                      double rateKcalPerMinute, double met = 0) {
        CExerciseItem item;
        item.SetCategoryId(category);
        item.SetName(name);
        item.SetType(type);
        item.SetEnergyRateKcalPerMinute(rateKcalPerMinute);
        item.SetMet(met);
        QVERIFY(Database().Exlib().Write(-1, item));
    }

    template <typename Entry>
    static Entry MakeEntry(QDate day, QTime time) {
        Entry entry;
        entry.SetMoment(ToFileTime(day, time));
        return entry;
    }
    static CWeightEntry MakeWeight(QDate day, QTime time, double weightKg) {
        auto entry = MakeEntry<CWeightEntry>(day, time);
        entry.SetWeightKg(weightKg);
        return entry;
    }
    CListed<CDietEntry> AddEntry(const QString& name, QTime time, qint32 meal = 2,
                                 double energyKcal = 100) {
        auto entry = MakeEntry<CDietEntry>(kDay, time);
        entry.SetMeal(meal);
        entry.SetName(name);
        entry.SetServingName(u"1 serving"_s);
        entry.SetAmount(1);
        entry.SetNutrientValue(kEnergyIndex, energyKcal);
        if (!Database().Diet().Write(-1, entry)) {
            qFatal("The fixture's entry cannot be written.");
        }
        // After all others of its moment.
        const CPositionRange same = Database().Diet().RangeOf(entry.GetMoment()).value();
        return {Database().Diet().RecordAt(same.first + same.count - 1), entry};
    }

    CExerciseEntry AddDone(const QString& name, QDate day, QTime time, double minutes,
                           double energyKcal, const QString& type = u"slow"_s) {
        auto entry = MakeEntry<CExerciseEntry>(day, time);
        entry.SetName(name);
        entry.SetType(type);
        entry.SetMinutes(minutes);
        entry.SetEnergyKcal(energyKcal);
        if (!Database().Exercises().Write(-1, entry)) {
            qFatal("The fixture's exercise cannot be written.");
        }
        return entry;
    }

    /// Damage, with the profile open again.
    void DamageEntry(CItemDatabaseBase& diary, int position) {
        Damage(diary, position);
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
    }

    /// Names of all stored entries with day of month, time and meal: "Tea 31 08:00 B".
    QStringList Stored() {
        QStringList texts;
        CDietEntry entry;
        for (int position = 0; Database().Diet().Read(position, entry); ++position) {
            texts.append(entry.GetName() + DateOf(entry.GetMoment()).toString(u" d "_s) +
                         TimeOf(entry.GetMoment()).toString(u"HH:mm "_s) +
                         MealName(entry.GetMeal()).left(1));
        }
        return texts;
    }
};
