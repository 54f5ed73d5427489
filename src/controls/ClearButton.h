// The button in a text field that clears it.
#pragma once

class QLineEdit;

/// The button has a name for screen readers, which Qt's own lacks.
void AddClearButton(QLineEdit& field);
