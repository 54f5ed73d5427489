#include "store/StoredViewSettings.h"

#include "platform/Messages.h"

namespace {
// Whether a record has the marker, or a damaged first property, so that it may be the settings.
bool IsMarked(const PropertyList& properties) {
    const auto* parent = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return parent == nullptr || *parent == CViewSettings::kMarker;
}

// Position of the stored settings, which are read into `settings`.
int FindViewSettings(CItemDatabaseBase& items, CViewSettings& settings) {
    int found = kNoPosition;
    items.ForEachFrom(items.FirstPositionOf(CViewSettings::kMarker),
                      [&](int position, PropertyList& properties) {
                          const bool isMarked = IsMarked(properties);
                          if (isMarked && settings.SetProperties(std::move(properties))) {
                              found = position;
                          }
                          return isMarked && found == kNoPosition;
                      });
    return found;
}
}  // namespace

bool CStoredViewSettings::Read(CViewSettings& settings) {
    return FindViewSettings(m_items, settings) != kNoPosition;
}

bool CStoredViewSettings::Save(const CViewSettings& settings) {
    CViewSettings stored;
    if (m_items.Write(FindViewSettings(m_items, stored), settings)) {
        return true;
    }
    CRecordStore& store = m_items.GetStore();
    store.ShowFailure(FormatText(m_failure, {store.GetLastError()}));
    return false;
}
