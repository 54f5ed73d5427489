// Steps that several parts of the tour share.
#pragma once

#include <vector>

#include "Player.h"

/// What to pick in the dialog "Add Food".
struct CChoice {
    QString category;
    QString name;
    QString type;     ///< empty for a menu or recipe
    QString serving;  ///< empty: the first one in the list
    QString amount;
};

void Add(std::vector<CTourStep>& steps, std::vector<CTourStep> more);

/// Steps in the open dialog "Add Food", up to its OK.
std::vector<CTourStep> ChooseFood(const CChoice& choice, bool withPictures);

/// Answers the file dialog in front.
CTourStep AnswerFileDialog(const QString& name, const QString& path);
/// Clicks a button of the message in front, which contains `text`.
CTourStep AnswerMessage(const QString& name, const QString& text, const QString& button);
