#include "frame/DietFrame.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "app/BackupRules.h"
#include "app/FrameCommands.h"
#include "catalogue/view/ComposedMainView.h"
#include "catalogue/view/ExlibMainView.h"
#include "catalogue/view/FoodsMainView.h"
#include "controls/ModalLoop.h"
#include "controls/RowDelegate.h"
#include "diary/DietMainView.h"
#include "diary/PurgeDialog.h"
#include "diary/weight/WeightMainView.h"
#include "exercise/ExercisesMainView.h"
#include "frame/AboutDialog.h"
#include "frame/BackupWindows.h"
#include "frame/CommandBar.h"
#include "frame/HelpWindow.h"
#include "frame/StatusLine.h"
#include "frame/WindowPlacement.h"
#include "platform/Messages.h"
#include "platform/PageViewer.h"
#include "platform/ShippedFiles.h"
#include "profile/SelectProfileDialog.h"
#include "profile/StartDialogs.h"
#include "report/ReportCommand.h"

using namespace Qt::StringLiterals;

namespace {

/// A view of the switch table.
struct CViewRow {
    int command;
    const char* name;     ///< on its switch button
    const char* toolTip;  ///< of its switch button
    CMainView* (*create)(CVelmoraDoc& doc, QWidget* parent);
};

template <typename View>
CMainView* CreateView(CVelmoraDoc& doc, QWidget* parent) {
    return new View(doc, parent);
}

constexpr CViewRow kViews[] = {
    {kSwitchToDiet, "Diet", "Diet monitor tab", CreateView<CDietMainView>},
    {kSwitchToWeight, "Weight", "Weight monitor tab", CreateView<CWeightMainView>},
    {kSwitchToExercises, "Exercises", "Exercises monitor tab", CreateView<CExercisesMainView>},
    {kSwitchToFoods, "Foods", "Foods tab", CreateView<CFoodsMainView>},
    {kSwitchToMenus, "Menus", "Menus tab", CreateView<CMenusMainView>},
    {kSwitchToRecipes, "Recipes", "Recipes tab", CreateView<CRecipesMainView>},
    {kSwitchToExlib, "Exlib", "Exlib tab", CreateView<CExlibMainView>},
};

const CViewRow* FindView(int command) {
    const auto* row = std::ranges::find(kViews, command, &CViewRow::command);
    return row == std::end(kViews) ? nullptr : row;
}

constexpr QSize kDefaultSize(1000, 700);
/// Between a view and the window's edge, in pixels.
constexpr int kMargin = 8;
constexpr int kNarrowMargin = 2;
constexpr int kIdleCheckMs = 20;

}  // namespace

CDietFrame::CDietFrame(CVelmoraDoc& doc) : m_doc(doc), m_commandBar(new CCommandBar(this)) {
    setObjectName(u"frame"_s);
    m_status = new CStatusLine(this);
    setStatusBar(m_status);
    for (const CViewRow& row : kViews) {
        m_commandBar->AddSwitch(row.command, QLatin1StringView(row.name),
                                QLatin1StringView(row.toolTip));
    }
    connect(m_commandBar, &CCommandBar::CommandChosen, this, &CDietFrame::RunCommand);
    PlaceWindow();
    ShowTitle();
    if (!ShowView(m_doc.Settings().lastTabCommand)) {
        ShowView(kSwitchToDiet);
    }
    m_doc.SetStatusHost([this](const QString& text) { m_status->SetText(text); });
    m_doc.SetLossHost({[this] { OnceIdle(&CDietFrame::TellLoss, EDialogs::Stay); },
                       [this] { OnceIdle(&CDietFrame::ReopenVolume, EDialogs::Close); }});
    m_doc.Database().StartBackups();
}

CDietFrame::~CDietFrame() {
    m_doc.Database().Backups().Stop();
    m_doc.SetLossHost({});
    m_doc.SetStatusHost({});
}

bool CDietFrame::ShowView(int command) {
    const CViewRow* row = FindView(command);
    if (row == nullptr) {
        return false;
    }
    if (command == m_activeCommand) {
        return true;
    }
    if (CMainView* old = ActiveView()) {
        // A day that is still being typed counts for the next view, too.
        if (auto* field = qobject_cast<QAbstractSpinBox*>(focusWidget())) {
            field->interpretText();
        }
        old->StoreLayout();
        old->disconnect(this);
    }
    CMainView* view = row->create(m_doc, this);
    const bool isNarrow = screen()->availableGeometry().width() < kNarrowWidth;
    const int margin = isNarrow ? kNarrowMargin : kMargin;
    view->setContentsMargins(margin, 0, margin, margin);
    connect(view, &CMainView::FrameCommand, this, &CDietFrame::RunCommand);
    setCentralWidget(view);  // the old view is deleted once its command has returned
    m_activeCommand = command;
    m_status->SetText({});
    StoreTab();
    m_commandBar->ShowCommandsOf(*view, command);
    return true;
}

CMainView* CDietFrame::ActiveView() const {
    return qobject_cast<CMainView*>(centralWidget());
}

void CDietFrame::RunCommand(int command) {
    switch (command) {
        case kCommandOpenProfile:
            Refreshing([this] { return OpenProfile(); });
            return;
        case kCommandPreferences:
            Refreshing([this] { return EditPreferences(); });
            return;
        case kCommandUser:
            Refreshing([this] { return EditUser(); });
            return;
        case kCommandTargets:
            Refreshing([this] { return EditTargets(); });
            return;
        case kCommandReport:
            RunReport(m_doc, this);
            return;
        case kCommandPurge:
            RunPurge(m_doc, this, [this] { ActiveView()->DataChanged(); });
            return;
        case kCommandAbout:
            CAboutDialog(m_doc.Database().Backups().GetFolder(), this).exec();
            return;
        case kCommandHelp:
            ShowHelp();
            return;
        case kCommandExit:
            close();
            return;
        case kCommandBackUp:
            RunBackUp(m_doc);
            return;
        case kCommandBackupFolder:
            RunBackupFolder(m_doc);
            return;
        case kCommandRestore:
            OnceIdle(&CDietFrame::Restore, EDialogs::Stay);
            return;
        case kCommandCheckData:
            OnceIdle(&CDietFrame::CheckData, EDialogs::Stay);
            return;
        default:
            ShowView(command);
    }
}

// Disabling the frame does not keep the desktop from closing it. Without a view, the volume could
// not be opened again.
void CDietFrame::closeEvent(QCloseEvent* event) {
    if (CModalLoop::IsAny()) {
        event->ignore();
        OnceIdle(&CDietFrame::Leave, EDialogs::Stay);
        return;
    }
    if (CMainView* view = ActiveView()) {
        view->StoreLayout();
    }
    StoreTab();
    StorePlacement();
    event->accept();
}

void CDietFrame::resizeEvent(QResizeEvent* event) {
    m_status->SetSmall(IsSmall(event->size()));
    QMainWindow::resizeEvent(event);
}

void CDietFrame::ShowTitle() {
    setWindowTitle(m_doc.GetTitle());
}

void CDietFrame::PlaceWindow() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize available = screen == nullptr ? kDefaultSize : screen->availableSize();
    resize(kDefaultSize.boundedTo(available));
    if (const QRect placement = VisiblePlacement(m_doc.Registry()); !placement.isEmpty()) {
        setGeometry(placement);
    }
    if (height() >= available.height() && available.width() >= kNarrowWidth) {
        // The desktop knows how much room its title bar leaves; a small screen has none.
        setWindowState(windowState() | Qt::WindowMaximized);
    }
}

/// Only diary tabs are remembered.
void CDietFrame::StoreTab() {
    if (m_activeCommand >= kDietTabCommand && m_activeCommand <= kMonthTabCommand) {
        m_doc.Settings().lastTabCommand = m_activeCommand;
    }
}

void CDietFrame::StorePlacement() {
    const QRect placement = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
    CRegistrySettings& registry = m_doc.Registry();
    registry.positionX = placement.x();
    registry.positionY = placement.y();
    registry.sizeX = placement.width();
    registry.sizeY = placement.height();
    registry.Write();
}

template <typename Edit>
void CDietFrame::Refreshing(Edit edit) {
    ActiveView()->StoreLayout();
    if (edit()) {
        ShowTitle();
        ActiveView()->DataChanged();
    }
}

bool CDietFrame::OpenProfile() {
    const QString previous = m_doc.GetActiveProfile();
    CSelectProfileDialog dialog(m_doc, this);
    if (dialog.exec() != QDialog::Accepted || dialog.GetProfile() == previous) {
        return false;
    }
    // A profile just created is active already.
    if (dialog.GetProfile() != m_doc.GetActiveProfile() &&
        !m_doc.SetActiveProfile(dialog.GetProfile())) {
        ShowMessage(FormatText("Cannot open user profile '%s'."_L1, {dialog.GetProfile()}),
                    EMessageIcon::Stop);
    }
    m_status->SetText({});
    return true;
}

bool CDietFrame::EditStored(const std::function<bool()>& edit) {
    const CProfileSettings before = m_doc.Settings();
    while (edit()) {
        if (m_doc.MayClose(m_doc.SaveSettings())) {
            return true;
        }
    }
    m_doc.Settings() = before;
    return false;
}

bool CDietFrame::EditPreferences() {
    return EditStored([this] {
        return CStartWindows(m_doc, this).EditPreferences(m_doc.Settings().preferences);
    });
}

bool CDietFrame::EditUser() {
    return EditStored([this] {
        return CStartWindows(m_doc, this)
            .EditUserInformation(m_doc.Settings().user, m_doc.Preferences());
    });
}

bool CDietFrame::EditTargets() {
    return EditStored([this] {
        return CStartWindows(m_doc, this)
            .EditTargets(m_doc.Settings().targets, m_doc.Settings().user, m_doc.Preferences());
    });
}

void CDietFrame::OnceIdle(void (CDietFrame::*act)(), EDialogs dialogs) {
    QTimer::singleShot(kIdleCheckMs, this, [this, act, dialogs] {
        if (!CModalLoop::IsAny()) {
            (this->*act)();
            return;
        }
        if (QWidget* modal = QApplication::activeModalWidget();
            modal != nullptr && dialogs == EDialogs::Close) {
            modal->close();
        }
        OnceIdle(act, dialogs);
    });
}

void CDietFrame::Leave() {
    close();
}

void CDietFrame::TellLoss() {
    m_doc.Database().GetStore().TellLoss();
}

/// Dialogs and views hold positions in the old file, so all must be gone first.
void CDietFrame::ReopenVolume() {
    const int command = m_activeCommand;
    delete takeCentralWidget();
    m_activeCommand = 0;
    CStartWindows dialogs(m_doc, this);
    if (!m_doc.Restart(dialogs)) {
        hide();
        QCoreApplication::quit();
        return;
    }
    m_doc.Database().StartBackups();
    ShowTitle();
    ShowView(command);
}

void CDietFrame::Replacing(CVelmoraDoc::EViewState state,
                           const std::function<void(const QString&)>& replace) {
    if (state == CVelmoraDoc::EViewState::Save) {
        ActiveView()->StoreLayout();
        StoreTab();
    }
    delete takeCentralWidget();
    m_doc.CloseVolume(state);
    replace(m_doc.GetVolumePath());
    ReopenVolume();
}

void CDietFrame::Restore() {
    if (const QString file = ChooseBackup(m_doc); !file.isEmpty()) {
        Replacing(CVelmoraDoc::EViewState::Save, [&file](const QString& volumePath) {
            (void)RestoreBackup(file, volumePath,
                                QDateTime::currentDateTime());  // shows its result
        });
    }
}

// A view might read the volume while the check shows its progress.
void CDietFrame::CheckData() {
    ActiveView()->StoreLayout();
    delete takeCentralWidget();
    CFindings findings;
    const bool isChecked = ::CheckData(m_doc.Database(), findings);
    ShowView(std::exchange(m_activeCommand, 0));
    if (isChecked && ShowFindings(findings, this)) {
        Replacing(findings.IsFileDamaged() ? CVelmoraDoc::EViewState::Drop
                                           : CVelmoraDoc::EViewState::Save,
                  [](const QString& volumePath) {
                      (void)RepairData(volumePath,
                                       QDateTime::currentDateTime());  // shows its result
                  });
    }
}

void CDietFrame::ShowHelp() {
    const QString page = ShippedFile(kHelpPageName);
    if (page.isEmpty()) {
        ShowMessage(u"Cannot show the help page Velmora.htm."_s, EMessageIcon::Stop);
        return;
    }
    if (!HasPageViewer() || !QDesktopServices::openUrl(QUrl::fromLocalFile(page))) {
        CHelpWindow::Open(page, this);
    }
}
