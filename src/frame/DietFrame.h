// The main window: it shows one view at a time with the view's command bar, and runs the commands
// that belong to no view.
#pragma once

#include <QMainWindow>
#include <functional>

#include "app/VelmoraDoc.h"
#include "controls/MainView.h"

class CCommandBar;
class CStatusLine;

/// Views are switched by command id; see the table in the source. The document outlives the frame.
class CDietFrame : public QMainWindow {
    Q_OBJECT
  public:
    /// Shows the profile's last tab, or the diet diary if that tab has no view.
    explicit CDietFrame(CVelmoraDoc& doc);
    ~CDietFrame() override;

    /// Shows the view of a switch command, unless it is shown already. False for a command that is
    /// not in the table.
    bool ShowView(int command);
    [[nodiscard]] int ActiveCommand() const { return m_activeCommand; }
    [[nodiscard]] CMainView* ActiveView() const;

    /// A switch command or an EFrameCommand; any other is ignored.
    void RunCommand(int command);

  protected:
    /// Waits until no dialog, box or progress window is left: what is under way needs the view.
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowTitle();
    void PlaceWindow();
    void StoreTab();
    void StorePlacement();

    /// Runs a dialog that may change what the view shows: StoreLayout, `edit`, and DataChanged if
    /// `edit` returns true.
    template <typename Edit>
    void Refreshing(Edit edit);
    /// Repeats a dialog on the settings until they are stored or it is cancelled, which restores
    /// the former settings.
    bool EditStored(const std::function<bool()>& edit);
    bool OpenProfile();
    bool EditPreferences();
    bool EditUser();
    bool EditTargets();
    void ShowHelp();

    /// For acts that destroy the view, be it the one that asked for them. Runs `act` once no
    /// dialog, box or progress window is left.
    enum class EDialogs { Stay, Close };
    void OnceIdle(void (CDietFrame::*act)(), EDialogs dialogs);
    void TellLoss();
    void ReopenVolume();
    void Leave();

    /// Destroys the view and closes the volume for as long as `replace` runs, then opens the file
    /// that is in its place.
    void Replacing(CVelmoraDoc::EViewState state,
                   const std::function<void(const QString& volumePath)>& replace);
    void Restore();
    void CheckData();

    CVelmoraDoc& m_doc;
    int m_activeCommand = 0;
    CCommandBar* m_commandBar;
    CStatusLine* m_status;
};
