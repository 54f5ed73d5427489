// The foods of a download that are wanted, numbered in the order of food.csv.
#pragma once

#include <QtGlobal>
#include <optional>
#include <vector>

/// The place of a food is the number of wanted rows before its own.
class CFoodPlaces {
  public:
    /// Adds the next food; Sort must follow the last one.
    void Add(quint32 fdcId);
    void Sort();
    /// Of the first food with that "fdc_id"; -1 when there is none. Fastest for ascending ids.
    [[nodiscard]] int PlaceOf(quint32 fdcId);
    [[nodiscard]] int Count() const { return static_cast<int>(m_foods.size()); }

  private:
    struct CFood {
        quint32 fdcId;
        int place;
    };

    std::vector<CFood> m_foods;
    // The food sought last, and the one after it.
    std::optional<quint32> m_soughtId;
    int m_soughtPlace = -1;
    size_t m_next = 0;
};

/// Consecutive places: foods that are read and stored together, so that what a download says about
/// them fits in memory.
struct CFoodWindow {
    int first = 0;
    int end = 0;
    [[nodiscard]] int Count() const { return end - first; }
    [[nodiscard]] bool Contains(int place) const { return place >= first && place < end; }
};
