#include "frame/Application.h"

#include "app/StartDialogs.h"

CVelmoraApp::CVelmoraApp(const QString& volumePath) : m_doc(volumePath) {}

bool CVelmoraApp::Start() {
    CStartWindows dialogs(m_doc, nullptr);
    if (!m_doc.Start(dialogs)) {
        return false;
    }
    m_frame = std::make_unique<CDietFrame>(m_doc);
    m_frame->show();
    return true;
}
