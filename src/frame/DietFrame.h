// The one top-level window: it shows one view at a time, carries the view's command bar and runs
// the commands that belong to no view.
#pragma once

#include <QMainWindow>
#include <functional>

#include "app/VelmoraDoc.h"
#include "controls/MainView.h"

class QActionGroup;
class QMenu;
class QWidgetAction;

/// Views are switched by command id; see the table in the source. The document outlives the frame.
class CDietFrame : public QMainWindow {
    Q_OBJECT
  public:
    /// Shows the profile's last tab, the diet diary where that has no view.
    explicit CDietFrame(CVelmoraDoc& doc);
    ~CDietFrame() override;

    /// Replaces the view by that of a switch command. Nothing happens for the view already shown;
    /// false for a command outside the table.
    bool ShowView(int command);
    [[nodiscard]] int ActiveCommand() const { return m_activeCommand; }
    [[nodiscard]] CMainView* ActiveView() const;

    /// A switch command or an EFrameCommand; any other is ignored.
    void RunCommand(int command);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void CreateSwitchActions();
    void BuildCommandBar();
    /// Leaves room for the tool buttons that other views have, so that the switch buttons stay
    /// where they are.
    void KeepToolButtonPlaces(const std::vector<QAction*>& buttons);
    void ShowTitle();
    void PlaceWindow();
    void StoreTab();
    void StorePlacement();

    /// Runs a dialog that may change what the views show, between the two notifications.
    /// `edit` returns whether something changed.
    template <typename Edit>
    void Refreshing(Edit edit);
    /// Runs a dialog over the settings until they are stored or it is cancelled, which drops them.
    bool EditStored(const std::function<bool()>& edit);
    bool OpenProfile();
    bool EditPreferences();
    bool EditUser();
    bool EditTargets();
    void ShowHelp();

    /// For a volume that was lost. Runs `act` once no dialog, box or progress window is left.
    enum class EDialogs { Stay, Close };
    void OnceIdle(void (CDietFrame::*act)(), EDialogs dialogs);
    void TellLoss();
    void ReopenVolume();

    CVelmoraDoc& m_doc;
    int m_activeCommand = 0;
    QActionGroup* m_switchActions;
    QAction* m_helpAction;
    std::vector<QMenu*> m_menus;
    QToolBar* m_toolBar;
    QWidgetAction* m_toolButtonGap;
};
