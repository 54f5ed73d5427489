// The settings of a catalogue view, kept beside the items of its database.
#pragma once

#include "store/ItemDatabase.h"
#include "store/records/Category.h"

/// The items outlive it.
class CStoredViewSettings {
  public:
    /// `failure` has a place for the error number.
    CStoredViewSettings(CItemDatabaseBase& items, QLatin1StringView failure)
        : m_items(items), m_failure(failure) {}

    /// False when none are stored yet.
    bool Read(CViewSettings& settings);
    /// Shows the failure's text.
    bool Save(const CViewSettings& settings);

  private:
    CItemDatabaseBase& m_items;
    QLatin1StringView m_failure;
};
