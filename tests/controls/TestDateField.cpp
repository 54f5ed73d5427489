#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>

#include "controls/DateField.h"
#include "support/Clicks.h"

/// A field that shows 5 March 2024, and another field.
class TestDateField : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(m_window.get());
        m_other = new QLineEdit;
        m_field = new CDateField(QDate(2024, 3, 5), u"dd.MM.yyyy"_s);
        layout->addWidget(m_other);
        layout->addWidget(m_field);
        Show(*m_window);
        m_field->setFocus(Qt::TabFocusReason);
    }
    void cleanup() { QToolTip::hideText(); }

    void composedTextIsReadAsAWhole() {
        QSignalSpy changed(m_field, &CDateField::dateChanged);
        for (const QString& preedit : {u"1"_s, u"14"_s, u"14 3"_s}) {
            Compose(preedit, {});
            QCOMPARE(m_field->text(), QString());
        }
        Compose({}, u"14 3 "_s);
        Compose(u"1981"_s, {});
        Compose({}, u"1981"_s);
        QCOMPARE(m_field->text(), u"14 3 1981"_s);
        QCOMPARE(changed.count(), 0);
        QTest::keyClick(m_field, Qt::Key_Return);
        QCOMPARE(m_field->date(), QDate(1981, 3, 14));
        QVERIFY(!changed.isEmpty());
        QCOMPARE(m_field->text(), u"14.03.1981"_s);
    }

    void aBrokenOffCompositionKeepsTheDate() {
        Compose(u"x"_s, {});
        Compose({}, {});
        m_other->setFocus();
        QCOMPARE(m_field->date(), QDate(2024, 3, 5));
        QCOMPARE(m_field->text(), u"05.03.2024"_s);
        QCOMPARE(QToolTip::text(), u"No date was typed. 05.03.2024 was kept."_s);
    }

  private:
    void Compose(const QString& preedit, const QString& commit) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(m_window->focusWidget(), &event);
    }

    std::unique_ptr<QWidget> m_window;
    QLineEdit* m_other = nullptr;
    CDateField* m_field = nullptr;
};

QTEST_MAIN(TestDateField)
#include "TestDateField.moc"
