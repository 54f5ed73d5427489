// The start sequence's dialogs as windows. The frame shows the last three again later, on the
// active profile's settings, and then has the document save them.
#pragma once

#include "app/VelmoraDoc.h"

class QWidget;

class CStartWindows : public CStartDialogs {
  public:
    CStartWindows(CVelmoraDoc& doc, QWidget* parent);
    QString SelectUserProfile() override;
    bool EditPreferences(CPreferences& preferences) override;
    /// A user without a name is new, and the name given must be free; a name once given stays.
    bool EditUserInformation(CUserInformation& user, const CPreferences& preferences) override;
    bool EditTargets(CTargets& targets, const CUserInformation& user,
                     const CPreferences& preferences) override;

  private:
    CVelmoraDoc& m_doc;
    QWidget* m_parent;
};
