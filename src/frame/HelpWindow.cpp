#include "frame/HelpWindow.h"

#include <QPushButton>
#include <QResizeEvent>
#include <QTextDocument>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

QVariant CHelpPage::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::ImageResource) {
        return QTextBrowser::loadResource(type, name);
    }
    const QVariant bytes = QTextBrowser::loadResource(type, name);
    return Fitted(m_pictures[name] = QImage::fromData(bytes.toByteArray()));
}

void CHelpPage::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (event->size().width() == event->oldSize().width()) {
        return;
    }
    for (const auto& [name, picture] : m_pictures) {
        document()->addResource(QTextDocument::ImageResource, name, Fitted(picture));
    }
    document()->markContentsDirty(0, document()->characterCount());
}

QImage CHelpPage::Fitted(const QImage& picture) const {
    const int room = viewport()->width() - 2 * qRound(document()->documentMargin());
    return picture.width() > room && room > 0
               ? picture.scaledToWidth(room, Qt::SmoothTransformation)
               : picture;
}

void CHelpWindow::Open(const QString& path, QWidget* parent) {
    auto* window = parent->findChild<CHelpWindow*>();
    if (window == nullptr) {
        window = new CHelpWindow(path, parent);
    }
    window->show();
    window->raise();
    window->activateWindow();
}

CHelpWindow::CHelpWindow(const QString& path, QWidget* parent)
    : CDialog(u"Velmora help"_s, parent) {
    setObjectName(u"help"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* page = new CHelpPage(this);
    page->setObjectName(u"page"_s);
    page->setAccessibleName(windowTitle());
    page->setFrameShape(QFrame::NoFrame);
    page->setSource(QUrl::fromLocalFile(path));
    Content()->setContentsMargins(0, 0, 0, 0);
    Content()->addWidget(page, 1);

    QPushButton* back = AddButton(u"&Back"_s);
    back->setObjectName(u"back"_s);
    back->setEnabled(false);
    connect(page, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(back, &QPushButton::clicked, page, &QTextBrowser::backward);
    QPushButton* contents = AddButton(u"C&ontents"_s);
    contents->setObjectName(u"contents"_s);
    connect(contents, &QPushButton::clicked, page,
            [page] { page->setSource(QUrl(u"#contents"_s)); });

    // There is nothing to confirm, and Return without a link must not close the window.
    findChild<QPushButton*>(u"ok"_s)->hide();
    auto* close = findChild<QPushButton*>(u"cancel"_s);
    close->setText(u"&Close"_s);
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setDefault(false);
        button->setAutoDefault(false);
    }
    SetPreferredSize(760, 640);
}
