// The window program: messages, document and frame, each needing the one before it.
#pragma once

#include <memory>

#include "app/VelmoraDoc.h"
#include "controls/WindowMessages.h"
#include "frame/DietFrame.h"

/// Needs a QApplication while it lives.
class CVelmoraApp {
  public:
    explicit CVelmoraApp(const QString& volumePath);

    /// Runs the start sequence, then creates and shows the frame. False when the start failed and
    /// the program must end.
    bool Start();

    /// Null until Start succeeded.
    CDietFrame* Frame() { return m_frame.get(); }

  private:
    CWindowMessages m_messages;
    CVelmoraDoc m_doc;
    std::unique_ptr<CDietFrame> m_frame;
};
