#include "store/NutrientTable.h"

#include "store/NutrientNameTable.h"

const CNutrientNames& NutrientNamesOf(int index) {
    return kNutrientNames.at(index);
}
