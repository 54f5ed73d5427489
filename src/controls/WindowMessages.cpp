#include "controls/WindowMessages.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "controls/ModalLoop.h"
#include "controls/ProgressWindow.h"

using namespace Qt::StringLiterals;

namespace {

QWidget* WindowInFront() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    // Another program is in front: cover the main window.
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) {
            return window;
        }
    }
    return nullptr;
}

QMessageBox::Icon BoxIcon(EMessageIcon icon) {
    switch (icon) {
        case EMessageIcon::Plain:
            return QMessageBox::NoIcon;
        case EMessageIcon::Stop:
            return QMessageBox::Critical;
        case EMessageIcon::Warning:
            return QMessageBox::Warning;
        case EMessageIcon::Information:
        case EMessageIcon::Result:
            return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

/// Names of items and files may look like markup.
void MakePlain(QMessageBox& box) {
    for (auto* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
}

/// Lets a text scroll that would leave the buttons no room on the screen.
void FitToScreen(QMessageBox& box) {
    constexpr int kMostWidth = 500;
    const QSize screen = box.screen()->availableGeometry().size();
    // The rest is for the icon, the margins and the buttons.
    const QSize room(std::min(kMostWidth, screen.width() * 5 / 8), screen.height() / 2);
    const QStringList parts = {box.text(), box.informativeText()};
    const QString text = parts.join(u"\n\n"_s).trimmed();
    const QRect needed = box.fontMetrics().boundingRect(QRect(QPoint(), QSize(room.width(), 0)),
                                                        Qt::TextWordWrap, text);
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (label == nullptr) {
        return;
    }
    if (needed.height() <= room.height()) {
        // On a narrow screen the box itself would wrap the text after each word or two.
        const int width = std::min(room.width(), box.fontMetrics().size(0, text).width());
        label->setMinimumWidth(std::clamp(needed.width(), width, screen.width() * 7 / 8));
        if (needed.width() > room.width()) {
            box.setIcon(QMessageBox::NoIcon);  // a file name needs its place
        }
        return;
    }
    // The box wraps its own labels only as far as they set its width.
    auto* shown = new QLabel(text);
    shown->setWordWrap(true);
    auto* scroll = new QScrollArea(&box);
    scroll->setAccessibleName(u"Message"_s);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setMinimumSize(room);
    scroll->setWidget(shown);
    delete box.layout()->replaceWidget(label, scroll);
    label->hide();
    if (auto* detail = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_s)) {
        detail->hide();
    }
}

/// On a narrow screen, replaces the platform's dialog by Qt's own, without the parts that do not
/// fit.
void FitToNarrowScreen(QFileDialog& dialog) {
    constexpr int kNarrow = 480;
    const QRect screen = dialog.screen()->availableGeometry();
    if (screen.width() >= kNarrow) {
        return;
    }
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setViewMode(QFileDialog::List);
    for (const char* name :
         {"sidebar", "lookInLabel", "backButton", "forwardButton", "newFolderButton",
          "listModeButton", "detailModeButton", "fileNameLabel", "fileTypeLabel"}) {
        if (auto* part = dialog.findChild<QWidget*>(QLatin1StringView(name))) {
            part->hide();
        }
    }
    dialog.setGeometry(screen);
}

QString ChooseFile(const CFileChoice& choice, QFileDialog::AcceptMode acceptMode,
                   QFileDialog::FileMode fileMode) {
    QFileDialog dialog(WindowInFront(), choice.title, {}, choice.filterName);
    dialog.setAcceptMode(acceptMode);
    dialog.setFileMode(fileMode);
    // The dialog strips the leading point.
    dialog.setDefaultSuffix(choice.defaultExtension);
    dialog.selectFile(choice.initialName);
    FitToNarrowScreen(dialog);
    const CModalLoop loop;
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

}  // namespace

void CWindowMessages::Show(const CMessage& message) {
    QMessageBox box(BoxIcon(message.icon), u"Velmora"_s, message.text, QMessageBox::Ok,
                    WindowInFront());
    QStringList detail = {message.detail};
    std::vector<QAbstractButton*> buttons;
    for (const CMessageAction& action : message.actions) {
        buttons.push_back(box.addButton(action.text, QMessageBox::ActionRole));
        detail.append(action.offer);
    }
    // With further buttons Qt leaves the Escape key without one.
    box.setEscapeButton(QMessageBox::Ok);
    box.setInformativeText(detail.join(u' ').trimmed());
    FitToScreen(box);
    MakePlain(box);
    const CModalLoop loop;
    bool isDone = false;
    while (!isDone) {
        box.exec();
        const auto clicked = std::ranges::find(buttons, box.clickedButton());
        isDone = clicked == buttons.end() ||
                 message.actions[static_cast<std::size_t>(clicked - buttons.begin())].run();
    }
}

bool CWindowMessages::AskYesNo(const QString& text, EAnswer proposed) {
    QMessageBox box(QMessageBox::Question, u"Velmora"_s, text, QMessageBox::Yes | QMessageBox::No,
                    WindowInFront());
    box.setDefaultButton(proposed == EAnswer::Yes ? QMessageBox::Yes : QMessageBox::No);
    FitToScreen(box);
    MakePlain(box);
    const CModalLoop loop;
    return box.exec() == QMessageBox::Yes;
}

QString CWindowMessages::ChooseFileToOpen(const CFileChoice& choice) {
    return ChooseFile(choice, QFileDialog::AcceptOpen, QFileDialog::ExistingFile);
}

QString CWindowMessages::ChooseFileToSave(const CFileChoice& choice) {
    return ChooseFile(choice, QFileDialog::AcceptSave, QFileDialog::AnyFile);
}

QString CWindowMessages::ChooseFolder(const QString& title, const QString& initial) {
    return ChooseFile(
        {.title = title, .defaultExtension = {}, .filterName = {}, .initialName = initial},
        QFileDialog::AcceptOpen, QFileDialog::Directory);
}

std::unique_ptr<CProgress> CWindowMessages::CreateProgress(const QString& caption) {
    return std::make_unique<CProgressWindow>(caption, WindowInFront());
}

void CWindowMessages::BeginWait() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void CWindowMessages::EndWait() {
    QApplication::restoreOverrideCursor();
}
