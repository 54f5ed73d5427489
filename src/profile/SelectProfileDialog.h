// "Select user profile": chooses the active profile; creates and deletes profiles.
#pragma once

#include "app/VelmoraDoc.h"
#include "controls/Dialog.h"

class CReportList;

inline constexpr int kCreateProfileCommand = 65047;  ///< "Create new user profile"
inline constexpr int kDeleteProfileCommand = 65048;  ///< "Delete user profile"

class CSelectProfileDialog : public CDialog {
    Q_OBJECT
  public:
    CSelectProfileDialog(CVelmoraDoc& doc, QWidget* parent);
    /// Confirmed with "OK", or just created.
    [[nodiscard]] const QString& GetProfile() const { return m_profile; }

  protected:
    bool Confirm() override;

  private:
    void AddCommand(int command, const QString& caption, const QString& prompt,
                    void (CSelectProfileDialog::*run)());
    void Fill();
    [[nodiscard]] QStringList SelectedNames() const;
    void CreateProfile();
    void DeleteProfile();

    CVelmoraDoc& m_doc;
    CReportList* m_list;
    QStringList m_names;
    QString m_profile;
};
