#include "exercise/ExercisesGraph.h"

CExercisesGraph::CExercisesGraph(CVelmoraDoc& /*doc*/, QWidget* parent) : QWidget(parent) {}

void CExercisesGraph::Reload() {}
