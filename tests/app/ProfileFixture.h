// A volume in which profiles are made.
#pragma once

#include "support/CatalogueTest.h"

/// A test over it calls MakeVolume in init.
class CProfileTest : public CCatalogueTest {
  protected:
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
};
