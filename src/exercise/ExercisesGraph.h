// The week that ends with the day shown: energy burned and energy to burn.
#pragma once

#include <QWidget>

#include "app/VelmoraDoc.h"

class CExercisesGraph : public QWidget {
    Q_OBJECT
  public:
    CExercisesGraph(CVelmoraDoc& doc, QWidget* parent);

    /// Reads the week that ends with the day shown, and the colours, anew.
    void Reload();
};
