// What a list leaves out of what is stored, and why.
#pragma once

/// Counts of one list, or of several added up. A record that ends its list counts as damaged.
struct CLeftOut {
    int beyond = 0;          ///< records past the capacity, or after one that ended the list
    int damaged = 0;         ///< records that cannot be read or have unexpected content
    bool isEnded = false;    ///< a record with a wrong number of properties ended the list
    bool isUnknown = false;  ///< the index cannot be read, so what is missing is unknown

    [[nodiscard]] bool IsAnything() const { return beyond > 0 || IsDamage(); }
    [[nodiscard]] bool IsDamage() const { return damaged > 0 || isUnknown; }
    CLeftOut& operator+=(const CLeftOut& other) {
        beyond += other.beyond;
        damaged += other.damaged;
        isEnded = isEnded || other.isEnded;
        isUnknown = isUnknown || other.isUnknown;
        return *this;
    }
};
