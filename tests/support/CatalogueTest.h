// A catalogue in a folder of its own, and a user who writes down what is shown.
#pragma once

#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>

#include "app/VelmoraDoc.h"
#include "support/RecordingMessages.h"
#include "support/VolumeFile.h"

inline qint32 AddCategory(CDatabase& database, const QString& name,
                          ECatalogueKind kind = ECatalogueKind::Foods) {
    CCategory category;
    category.SetKind(kind);
    category.SetName(name);
    return database.Categories().AddOrUpdate(-1, category) ? category.GetId() : -1;
}

/// A weighed food with one serving, "1 cup" of 240 g.
inline CFoodItem MakeFood(qint32 categoryId, const QString& name, const QString& type) {
    CFoodItem food;
    food.SetCategoryId(categoryId);
    food.SetName(name);
    food.SetType(type);
    food.SetServingName(0, QStringLiteral("1 cup"));
    food.SetServingWeight(0, 240);
    return food;
}

/// An entry of a raw fruit, so many minutes after noon.
inline CDietEntry MakeFruitEntry(QDate day, const QString& name, int meal, int minute) {
    CDietEntry entry;
    entry.SetMoment(ToFileTime(day, QTime(12, minute)));
    entry.SetMeal(meal);
    entry.SetCategory(QStringLiteral("Fruit"));
    entry.SetName(name);
    entry.SetType(QStringLiteral("raw"));
    return entry;
}

/// A test over it calls MakeVolume in init, and DropVolume in cleanup when all messages count.
class CCatalogueTest : public QObject {
  protected:
    static constexpr auto kFoods = ECatalogueKind::Foods;
    static constexpr auto kMenus = ECatalogueKind::Menus;
    static constexpr auto kRecipes = ECatalogueKind::Recipes;
    static constexpr auto kExercises = ECatalogueKind::Exercises;

    void MakeVolume() {
        m_doc.reset();
        m_messages.reset();
        m_messages = std::make_unique<CRecordingMessages>();
        m_folder = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder->path());
        QLocale::setDefault(QLocale::c());
        Reopen();
    }
    /// Closed, so that another document can open it.
    QString VolumePath() {
        m_doc.reset();
        return Path(QStringLiteral("v.db"));
    }
    bool CreateProfile(const QString& name) {
        CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 1, 1});
        settings.user.name = name;
        return m_doc->CreateProfile(settings);
    }
    /// Or another volume in its place.
    void Reopen(const QString& name = QStringLiteral("v.db")) {
        m_doc.reset();
        m_doc = std::make_unique<CVelmoraDoc>(Path(name));
        QVERIFY(m_doc->OpenCatalogue());
    }
    /// Makes the bytes of a record those of another one of its database, or of none at all, and
    /// opens the volume again.
    void Damage(CItemDatabaseBase& items, int position, int like = -1) {
        const ObjectId record = items.RecordAt(position);
        const ObjectId other = like < 0 ? 0 : items.RecordAt(like);
        QVERIFY(record != 0);
        Change(
            "UPDATE records SET body=COALESCE((SELECT body FROM records WHERE id=?), x'FF') "
            "WHERE id=?",
            {other, record});
    }
    /// Runs a statement on the closed volume.
    void Change(const char* sql, std::initializer_list<CSqlValue> values = {}) {
        m_doc.reset();
        {
            CSqliteFile file;
            QCOMPARE(file.Open(Path(QStringLiteral("v.db"))), int(kErrorSuccess));
            CStatement change;
            QCOMPARE(change.Prepare(file, sql), int(kErrorSuccess));
            QCOMPARE(change.Run(values), int(kErrorSuccess));
        }
        Reopen();
    }
    /// The number that a query on the closed volume gives; it is opened again.
    qint64 Query(const char* sql) {
        m_doc.reset();
        const qint64 result = QueryVolume(Path(QStringLiteral("v.db")), sql);
        Reopen();
        return result;
    }
    /// Nothing may be left that was shown and not taken, nor a wait.
    void DropVolume() {
        m_doc.reset();
        const auto messages = std::move(m_messages);
        QCOMPARE(messages->shown, QStringList());
        QCOMPARE(messages->waits, 0);
    }

    QString Path(const QString& name) const { return m_folder->filePath(name); }
    CDatabase& Database() { return m_doc->Database(); }

    std::unique_ptr<CRecordingMessages> m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CVelmoraDoc> m_doc;
};
