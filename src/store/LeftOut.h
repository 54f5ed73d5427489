// What a list leaves out of what is stored, and why.
#pragma once

/// Counts of one list, or of several added up. The record that ends a list is among the damaged.
struct CLeftOut {
    int beyond = 0;          ///< records past the capacity, or after one that ends the list
    int damaged = 0;         ///< records that cannot be read or hold something else
    bool isEnded = false;    ///< a record with a wrong number of properties ended the list
    bool isUnknown = false;  ///< the positions cannot be read, so nobody knows what is missing

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
