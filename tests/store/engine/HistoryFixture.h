// An engine with a history over three databases.
#pragma once

#include "store/engine/EngineSteps.h"
#include "store/engine/History.h"
#include "store/engine/StorageState.h"
#include "support/VolumeFile.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

/// Every record of a database in order, with its identifier.
using CContents = std::vector<std::pair<ObjectId, PropertyList>>;

/// Names of the steps that can be undone and redone, in the order in which that happens.
struct CStacks {
    QStringList undo;
    QStringList redo;
    bool operator==(const CStacks&) const = default;
};

class CHistoryTest : public QObject {
  protected:
    static constexpr int kExcept = 999;
    const QString kTexts = QStringLiteral("ab").repeated(20);

    void MakeDatabases() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("volume.db"));
        Mount(true);
        for (const auto& name :
             {QStringLiteral("Foods"), QStringLiteral("Menus"), QStringLiteral("Diet")}) {
            m_databases.push_back(Created(*m_engine, name));
        }
        WatchAll();
    }

    void Drop() {
        m_engine.reset();
        m_history.reset();
        m_databases.clear();
    }

    void Fill(int count) {
        QCOMPARE(m_engine->BeginGroup(), kOk);
        for (int i = 0; i < count; ++i) {
            Add(0, i % 5);
        }
        QCOMPARE(m_engine->EndGroup(), kOk);
    }
    /// In one unit: deletes, then edits and adds a record.
    bool Change(int deletions) {
        (void)m_engine->BeginGroup();
        bool isDone = true;
        ObjectId record = 0;
        for (int i = 0; i < deletions; ++i) {
            isDone = isDone && m_engine->SeekToPosition(m_databases[0], 1, record) == kOk &&
                     m_engine->DeleteRecord(m_databases[0], record) == kOk;
        }
        isDone = isDone && m_engine->SeekToPosition(m_databases[0], 1, record) == kOk &&
                 m_engine->ReplaceRecord(m_databases[0], record, {3, kTexts}) == kOk &&
                 Added(*m_engine, m_databases[0], {4, kTexts}) != 0;
        return m_engine->EndGroup() == kOk && isDone;
    }

    void Mount(bool hasHistory) {
        m_engine.reset();
        m_history.reset();
        m_engine = std::make_unique<CStorageEngine>();
        QCOMPARE(m_engine->Mount(m_path), kOk);
        m_history = std::make_unique<CHistory>(m_engine->State());
        if (hasHistory) {
            m_engine->AddListener(m_history.get());
            WatchAll();
        }
    }
    /// The last database stands for a profile with its diary, the others for the catalogue.
    void WatchAll() {
        for (std::size_t i = 0; i < m_databases.size(); ++i) {
            m_history->Watch(m_databases[i], i < 2 ? 0 : Scope(2), kExcept);
        }
    }
    int Scope(int database) { return static_cast<int>(m_databases[database]); }

    void Step(const QString& name, const std::function<void()>& run) {
        m_history->BeginStep(name);
        run();
        m_history->EndStep();
    }
    void Add(int database, int key) {
        QVERIFY(Added(*m_engine, m_databases[database], {key, kTexts}) != 0);
    }
    void Delete(int database, int position) {
        ObjectId record = 0;
        QCOMPARE(m_engine->SeekToPosition(m_databases[database], position, record), kOk);
        QCOMPARE(m_engine->DeleteRecord(m_databases[database], record), kOk);
    }
    void DeleteFirst(int count) {
        for (int i = 0; i < count; ++i) {
            Delete(0, 0);
        }
    }

    /// A step of some units of some changes each.
    void Play(int scope, QRandomGenerator& random) {
        m_history->BeginStep(QStringLiteral("step"));
        for (int unit = random.bounded(3); unit >= 0; --unit) {
            QCOMPARE(m_engine->BeginGroup(), kOk);
            const int most = random.bounded(12) == 0 ? 1200 : 12;  // enough for several blocks
            for (int i = random.bounded(1, most); i > 0; --i) {
                const ObjectId database = m_databases[scope == 0 ? random.bounded(2) : 2];
                const int count = CountOf(*m_engine, database);
                ObjectId record = 0;
                (void)m_engine->SeekToPosition(database, random.bounded(count + 1), record);
                const PropertyList values = {random.bounded(4), QString::number(random.generate())};
                if (record == 0 || random.bounded(3) == 0) {
                    QVERIFY(Added(*m_engine, database, values) != 0);
                } else if (random.bounded(2) == 0) {
                    QCOMPARE(m_engine->ReplaceRecord(database, record, values), kOk);
                } else {
                    QCOMPARE(m_engine->DeleteRecord(database, record), kOk);
                }
            }
            QCOMPARE(m_engine->EndGroup(), kOk);
        }
        m_history->EndStep();
    }

    bool Undo(int scope) { return Revert(m_history->NextUndo(scope)); }
    bool Redo(int scope) { return Revert(m_history->NextRedo(scope)); }
    bool Revert(const std::optional<CHistoryStep>& step) {
        EPlatformError error = kErrorSuccess;
        return step && m_history->Revert(*step, error) == EReverted::Done;
    }

    CStacks Stacks() {
        CStacks stacks;
        for (const CHistoryStep& step : m_history->ListSteps()) {
            if (step.isUndone) {
                stacks.redo.append(step.name);
            } else {
                stacks.undo.prepend(step.name);
            }
        }
        return stacks;
    }

    std::vector<CContents> Contents(int scope) {
        std::vector<CContents> all;
        for (const ObjectId database : scope == 0 ? std::vector{m_databases[0], m_databases[1]}
                                                  : std::vector{m_databases[2]}) {
            CContents& contents = all.emplace_back();
            for (int position = 0; position < CountOf(*m_engine, database); ++position) {
                auto& [record, properties] = contents.emplace_back();
                (void)m_engine->SeekToPosition(database, position, record);
                (void)m_engine->ReadRecord(record, properties);
            }
        }
        return all;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::vector<ObjectId> m_databases;
    std::unique_ptr<CHistory> m_history;
    std::unique_ptr<CStorageEngine> m_engine;
};
