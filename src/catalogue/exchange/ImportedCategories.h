// The categories that the lines of an exchange name.
#pragma once

#include <QHash>

#include "store/Database.h"

/// Looks every name up once a run and creates what the kind does not have, with its pictures.
class CImportedCategories {
  public:
    CImportedCategories(CDatabase& database, ECatalogueKind kind, QString folder);
    /// Identifier of the category of that name, which is created when it is missing; -1 when it
    /// cannot be.
    qint32 IdOf(const QString& name);
    /// Name of a category; empty when there is none of that identifier.
    QString NameOf(qint32 id);

  private:
    qint32 Create(const QString& name);

    CDatabase& m_database;
    ECatalogueKind m_kind;
    QString m_folder;
    QHash<QString, qint32> m_ids;
    qint32 m_lastId = -1;  ///< items come category by category
    QString m_lastName;
};
