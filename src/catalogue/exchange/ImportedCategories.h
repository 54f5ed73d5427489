// The categories named in the lines of an exchange file.
#pragma once

#include <QHash>

#include "store/Database.h"

/// Looks up every name once per import and creates missing categories with their pictures.
class CImportedCategories {
  public:
    CImportedCategories(CDatabase& database, ECatalogueKind kind, QString folder);
    /// Identifier of the category of that name, created if missing; -1 when that fails.
    qint32 IdOf(const QString& name);
    /// Name of a category; empty when there is none of that identifier.
    QString NameOf(qint32 id);

  private:
    qint32 Create(const QString& name);

    CDatabase& m_database;
    ECatalogueKind m_kind;
    QString m_folder;
    QHash<QString, qint32> m_ids;
    qint32 m_lastId = -1;  ///< cached, since items come category by category
    QString m_lastName;
};
