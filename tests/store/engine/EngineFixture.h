// An open volume with an empty database, and changes to its file past the engine.
#pragma once

#include "store/engine/EngineSteps.h"
#include "support/VolumeFile.h"

#include <QTemporaryDir>

/// A test over it calls MakeVolume in init.
class CEngineTest : public QObject {
  protected:
    void MakeVolume() {
        m_engine.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("volume.db"));
        m_engine = std::make_unique<CStorageEngine>();
        QCOMPARE(m_engine->Mount(m_path), kOk);
        m_database = Created(*m_engine, QStringLiteral("Numbers"), 7);
        QVERIFY(m_database != 0);
    }

    void Remount() {
        QCOMPARE(m_engine->Unmount(), kOk);
        QCOMPARE(m_engine->Mount(m_path), kOk);
    }

    /// Leaves the volume unmounted.
    void Change(QAnyStringView sql) {
        QCOMPARE(m_engine->Unmount(), kOk);
        ChangeVolume(m_path, sql);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<CStorageEngine> m_engine;
    ObjectId m_database = 0;
};
