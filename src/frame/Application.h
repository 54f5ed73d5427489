// The window program put together: messages, document and frame, in the order in which they need
// each other.
#pragma once

#include <memory>

#include "app/VelmoraDoc.h"
#include "controls/WindowMessages.h"
#include "frame/DietFrame.h"

/// Needs a QApplication while it lives.
class CVelmoraApp {
  public:
    explicit CVelmoraApp(const QString& volumePath);

    /// The start sequence; then the frame is made and shown. False when the program is to end
    /// without one.
    bool Start();

    /// Null until Start succeeded.
    CDietFrame* Frame() { return m_frame.get(); }

  private:
    CWindowMessages m_messages;
    CVelmoraDoc m_doc;
    std::unique_ptr<CDietFrame> m_frame;
};
