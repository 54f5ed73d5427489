#include "Player.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPollMilliseconds = 20;
constexpr int kMaximumPolls = 3000;

QString playedStep;

/// The window in front: the innermost modal one, another dialog, or the main window.
QWidget* FrontWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const Qt::WindowType type : {Qt::Dialog, Qt::Window}) {
        for (QWidget* window : windows) {
            if (window->isVisible() && window->windowType() == type) {
                return window;
            }
        }
    }
    return nullptr;
}
}  // namespace

void FailTour(const QString& reason) {
    std::fprintf(stderr, "The tour failed at \"%s\": %s\n", qPrintable(playedStep),
                 qPrintable(reason));
    std::_Exit(1);
}

void Expect(bool isTrue, const QString& what) {
    if (!isTrue) {
        FailTour(u"expected "_s + what);
    }
}

CPlayer::CPlayer(std::vector<CTourStep> steps, QString folder)
    : m_steps(std::move(steps)), m_folder(std::move(folder)) {}

void CPlayer::Play() {
    QTimer::singleShot(kPollMilliseconds, qApp, [this] { Poll(); });
}

// The last click of a step may open a dialog, whose event loop then runs inside the step. So each
// poll has its own timer, started just before that click. A poll that comes in the midst of the
// last click, as it may on a busy machine, waits until a dialog is open or the step is over.
void CPlayer::Poll() {
    if (m_next == m_steps.size()) {
        std::printf("%d pictures in %s\n", m_pictures, qPrintable(m_folder));
        QApplication::quit();
        return;
    }
    if (FrontWindow() == m_left && ++m_polls <= kMaximumPolls) {
        Play();
        return;
    }
    const CTourStep& step = m_steps[m_next];
    playedStep = step.name.isEmpty() ? u"step %1"_s.arg(m_next + 1) : step.name;
    QWidget* window = FrontWindow();
    // The main window is disabled while a progress window is shown.
    const bool isThere = window != nullptr && window->isVisible() && window->isEnabled() &&
                         step.window == QLatin1StringView(window->metaObject()->className());
    if (!isThere && ++m_polls > kMaximumPolls) {
        FailTour(u"%1 did not appear; the front window is %2"_s.arg(
            step.window, window == nullptr ? u"nothing"_s
                                           : QLatin1StringView(window->metaObject()->className()) +
                                                 u" \""_s + window->windowTitle() + u'"'));
    }
    if (!isThere) {
        Play();
        return;
    }
    m_polls = 0;
    ++m_next;
    PlayStep(step, window);
}

void CPlayer::PlayStep(const CTourStep& step, QWidget* window) {
    if (step.act) {
        step.act(window);
    }
    QApplication::processEvents();
    if (!step.name.isEmpty()) {
        TakePicture(step.name);
    }
    m_left = step.leave ? FrontWindow() : nullptr;
    Play();
    if (step.leave) {
        step.leave(m_left);
        m_left = nullptr;
    }
}

// All windows, as they overlap on the screen.
void CPlayer::TakePicture(const QString& name) {
    QWidgetList windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            windows.append(window);
        }
    }
    // topLevelWidgets has no order; the front window was opened last.
    QWidget* front = FrontWindow();
    std::stable_sort(windows.begin(), windows.end(), [front](QWidget* left, QWidget* right) {
        const auto height = [front](QWidget* window) {
            return window == front ? 1 : (window->windowType() == Qt::Popup ? 2 : 0);
        };
        return height(left) < height(right);
    });
    QRect area;
    for (const QWidget* window : std::as_const(windows)) {
        area |= window->geometry();
    }
    Expect(!area.isEmpty(), u"a window to take a picture of"_s);
    QPixmap picture(area.size());
    picture.fill(Qt::gray);
    QPainter painter(&picture);
    for (QWidget* window : std::as_const(windows)) {
        const QRect place = window->geometry().translated(-area.topLeft());
        painter.drawPixmap(place.topLeft(), window->grab());
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
    painter.end();
    ++m_pictures;
    const QString file = u"%1/%2-%3.png"_s.arg(m_folder)
                             .arg(m_pictures, 2, 10, QLatin1Char('0'))
                             .arg(QString(name).toLower().replace(u' ', u'-'));
    Expect(picture.save(file), u"to be able to write "_s + file);
}
