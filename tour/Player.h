// Plays steps one after the other while dialogs run their own event loops.
#pragma once

#include <QString>
#include <functional>
#include <vector>

class QWidget;

/// One step: wait for a window, act in it, take its picture, leave it.
struct CTourStep {
    QString name;  ///< of the picture; empty for a step without one
    QString
        window;  ///< class of the window to wait for; "CDietFrame" waits until no dialog is open
    /// Clicks and keys before the picture, which open no dialog.
    std::function<void(QWidget* window)> act;
    /// The last click, after the picture; it may open or close windows.
    std::function<void(QWidget* window)> leave;
};

/// Ends the program with status 1 and a line on standard error when a window does not appear or
/// Expect fails.
class CPlayer {
  public:
    CPlayer(std::vector<CTourStep> steps, QString folder);
    /// Starts playing as soon as the event loop runs; quits the application after the last step.
    void Play();

    [[nodiscard]] bool IsDone() const { return m_next == m_steps.size(); }

  private:
    void Poll();
    void PlayStep(const CTourStep& step, QWidget* window);
    void TakePicture(const QString& name);

    std::vector<CTourStep> m_steps;
    QString m_folder;
    size_t m_next = 0;
    int m_pictures = 0;
    int m_polls = 0;
    QWidget* m_left = nullptr;  ///< the window in which the last click of a step is under way
};

/// Prints where and why the tour failed, and ends the program.
[[noreturn]] void FailTour(const QString& reason);
void Expect(bool isTrue, const QString& what);
