// The settings of a catalogue view, kept beside the items of its database.
#pragma once

#include "store/ItemDatabase.h"
#include "store/records/Category.h"

/// The items outlive it.
class CStoredViewSettings {
  public:
    /// `failure` is the message of a failed Save, with a placeholder for the error number.
    CStoredViewSettings(CItemDatabaseBase& items, QLatin1StringView failure)
        : m_items(items), m_failure(failure) {}

    /// False when none are stored yet.
    bool Read(CViewSettings& settings);
    /// Failure shows that message.
    bool Save(const CViewSettings& settings);

  private:
    CItemDatabaseBase& m_items;
    QLatin1StringView m_failure;
};
