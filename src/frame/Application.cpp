#include "frame/Application.h"

#include <QApplication>
#include <QTimer>

#include "catalogue/exchange/StarterFoods.h"
#include "controls/PaintedIcons.h"
#include "controls/ReadableStyle.h"
#include "profile/StartDialogs.h"

CVelmoraApp::CVelmoraApp(const QString& volumePath) : m_doc(volumePath) {
    QApplication::setWindowIcon(ProgramIcon());
    CReadableStyle::Use();
}

bool CVelmoraApp::Start() {
    CStartWindows dialogs(m_doc, nullptr);
    if (!m_doc.Start(dialogs)) {
        return false;
    }
    m_frame = std::make_unique<CDietFrame>(m_doc);
    m_frame->show();
    if (m_doc.isFirstRun) {
        // From the event loop, so that the question appears in front of the window.
        QTimer::singleShot(0, m_frame.get(), [this] { OfferStarterFoods(m_doc.Database()); });
    }
    return true;
}
