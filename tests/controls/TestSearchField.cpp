#include <QSignalSpy>
#include <QVBoxLayout>

#include "controls/SearchField.h"
#include "support/Clicks.h"

class TestSearchField : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_pendingCalls = 0;
        m_searched.clear();
        m_window = std::make_unique<QWidget>();
        auto* over = new QWidget(m_window.get());
        auto* layout = new QVBoxLayout(over);
        m_field = new CSearchField(
            {{.title = u"A"_s}},
            [this](const QString& text) {
                m_searched.append(text);
                const bool isPending = m_pendingCalls-- > 0;
                return CSearchRows{.count = isPending ? 0 : 3,
                                   .text = [](int row, int) { return QString::number(row); },
                                   .hint = u"Searching..."_s,
                                   .isPending = isPending};
            },
            over, over);
        layout->addWidget(m_field);
        layout->addStretch(1);
        over->resize(300, 200);
        m_window->resize(300, 200);
        Show(*m_window);
        m_field->setFocus();
    }

    void keysAreTakenWhileASearchIsPending() {
        QSignalSpy picked(m_field, &CSearchField::Picked);
        m_pendingCalls = 3;
        QTest::keyClicks(m_field, u"ap"_s);
        auto* hint = Find<QLabel>(*m_window, "emptyHint");
        QVERIFY(m_field->IsOpen() && hint->isVisible());
        QTest::keyClick(m_field, Qt::Key_Return);
        QCOMPARE(picked.count(), 0);
        QTRY_COMPARE(picked, QList<QList<QVariant>>{{0}});
        QCOMPARE(m_searched, (QStringList{u"a"_s, u"ap"_s, u"ap"_s, u"ap"_s}));
        // Without Return, or with a key after it, the matches are shown.
        for (const bool goesOn : {false, true}) {
            m_pendingCalls = 3;
            QTest::keyClicks(m_field, u"b"_s);
            if (goesOn) {
                QTest::keyClick(m_field, Qt::Key_Return);
                QTest::keyClicks(m_field, u"c"_s);
            }
            QTRY_VERIFY(Find<CReportList>(*m_window, "searchRows")->RowCount() == 3);
            QVERIFY(m_field->IsOpen());
            QCOMPARE(picked.count(), 1);
            m_field->clear();
            m_field->Close();
        }
        // An answered search is not asked again.
        m_field->clear();
        m_searched.clear();
        m_pendingCalls = 1;
        QTest::keyClicks(m_field, u"de"_s);
        QTest::qWait(0);
        QCOMPARE(m_searched, (QStringList{u"d"_s, u"de"_s}));
        // A closed list is not filled any more.
        m_field->clear();
        m_pendingCalls = 9;
        QTest::keyClicks(m_field, u"e"_s);
        m_field->Close();
        QTest::qWait(0);
        QCOMPARE(m_pendingCalls, 8);
        QVERIFY(!m_field->IsOpen());
    }

    void theListThatTheFieldMovesInHasTheStrongSelection() {
        QTest::keyClicks(m_field, u"a"_s);
        auto* list = Find<CReportList>(*m_window, "searchRows");
        const QRect row = list->visualRect(list->model()->index(0, 0));
        const QImage picture = list->viewport()->grab().toImage();
        const QColor strong = list->palette().color(QPalette::Active, QPalette::Highlight);
        // The style shades it a little.
        const int red = picture.pixelColor(row.bottomRight() - QPoint(3, 3)).red();
        QVERIFY(std::abs(red - strong.red()) < 8);
    }

  private:
    std::unique_ptr<QWidget> m_window;
    CSearchField* m_field = nullptr;
    QStringList m_searched;
    int m_pendingCalls = 0;
};

QTEST_MAIN(TestSearchField)
#include "TestSearchField.moc"
