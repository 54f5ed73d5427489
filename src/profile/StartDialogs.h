// The start sequence's dialogs as windows. The frame also uses the last three to edit the active
// profile's settings, which the document then saves.
#pragma once

#include "app/VelmoraDoc.h"

class QWidget;

class CStartWindows : public CStartDialogs {
  public:
    CStartWindows(CVelmoraDoc& doc, QWidget* parent);
    QString SelectUserProfile() override;
    bool EditPreferences(CPreferences& preferences) override;
    /// A user without a name is new: the name typed must not be taken. An existing name cannot be
    /// changed.
    bool EditUserInformation(CUserInformation& user, const CPreferences& preferences) override;
    bool EditTargets(CTargets& targets, const CUserInformation& user,
                     const CPreferences& preferences) override;

  private:
    CVelmoraDoc& m_doc;
    QWidget* m_parent;
};
