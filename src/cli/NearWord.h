// Suggestions for mistyped words.
#pragma once

#include <QString>
#include <QStringList>

/// "; did you mean 'diet'?" with the candidate nearest to `word`; empty when none is near.
QString DidYouMean(const QString& word, const QStringList& candidates);
