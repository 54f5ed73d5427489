#include "store/records/NutrientTable.h"

#include "store/records/NutrientNameTable.h"

const CNutrientNames& NutrientNamesOf(int index) {
    return kNutrientNames.at(index);
}
