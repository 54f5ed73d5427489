// What a user does in the windows, and what is seen and stored then: the stories of stories.txt.
#include "FrameFixture.h"
#include "StoredRecords.h"

#include <QActionGroup>
#include <QEventLoop>
#include <QToolTip>
#include <QWheelEvent>

#include "controls/DateField.h"
#include "support/SeenText.h"

namespace {
/// So many changed rows of a list are shown; a digest stands for more.
constexpr qsizetype kMostRows = 4;
}  // namespace

/// The steps of a line "> step; step; ..." are done one after the other, also in the dialogs that
/// they open. After them comes what is seen then: the window in front when it is another one, what
/// has changed in it since it was seen last, what was said and asked, and what has changed in the
/// volume. A line that ends with ';' goes on in the next. A step names its widget by "@name"; else
/// it goes to the one in focus.
///
///     do Find food...     a command or view     key Down Ctrl+C     keys
///     press @ok           a button
///     type @name a text   a text into a field   cell @grid 1 0 2.5  and into a cell
///     row @items 2        a click               tab @pages 1        a page
///     drag @items 0 120   a column's width      look                at all of the window
///     answer no, file f   to what is asked      wheel @minutes      a turn of the wheel
///     full, room          of the disk           away, back          of the volume
///     again               after the next start
class TestStories : public CFrameTest {
    Q_OBJECT

  private slots:
    void aStoryGoesAsWritten_data() {
        QTest::addColumn<int>("none");
        for (const QString& name : m_stories.Names()) {
            QTest::newRow(qPrintable(name));
        }
    }
    void aStoryGoesAsWritten() {
        const QString name = QString::fromUtf8(QTest::currentDataTag());
        FillEveryView();
        OpenFrame();
        m_states.clear();
        m_title.clear();
        m_heard.clear();
        m_statusText.clear();
        m_stored = CStoredRecords(Database().GetStore(), u"Ann"_s);
        for (const QString& line : m_stories.Section(name).split(u'\n')) {
            if (line.startsWith(u"> ")) {
                m_steps.append(line);
                m_steps.append(line.sliced(2).remove(QRegularExpression(u";$"_s)).split(u"; "_s));
                m_steps.append(line.endsWith(u';') ? QString() : u"?"_s);
            }
        }
        Next();
        m_loop.exec();
        m_full.reset();
        m_frame.reset();
        m_stories.Compare(name, std::exchange(m_told, {}));
    }

  private:
    /// Goes on once the steps before have returned, or wait in a dialog that they opened.
    void Next() {
        QTimer::singleShot(0, this, [this] {
            const auto windows = QApplication::topLevelWidgets();
            const auto dialogs = std::ranges::count_if(windows, [](const QWidget* window) {
                return window->isVisible() && window->isModal();
            });
            Window()->activateWindow();
            if (m_running > dialogs || !Window()->isActiveWindow()) {
                Next();
            } else if (m_steps.isEmpty() && dialogs > 0) {
                m_told += u"left open\n"_s;
                Window()->close();
                Next();
            } else if (m_steps.isEmpty()) {
                m_loop.quit();
            } else {
                Next();
                ++m_running;
                QCoreApplication::sendPostedEvents();  // of what was shown or laid out again
                if (const QString title = TitleOf(*Window()); !m_states.contains(title)) {
                    m_states[title] = CPortrait::StateOf(*View());
                }
                const QString step = m_steps.takeFirst();
                m_told += step.startsWith(u'>') ? step + u'\n'
                          : step == u"?"        ? CSeenText::Wrapped(Seen())
                          : Do(step)            ? QString()
                                                : u"cannot "_s + step + u'\n';
                --m_running;
            }
        });
    }
    void OpenFrame() {
        m_frame = std::make_unique<CDietFrame>(*m_doc);
        m_frame->resize(900, 700);
        Show(*m_frame);
    }
    [[nodiscard]] QWidget* Window() const {
        QWidget* dialog = QApplication::activeModalWidget();
        return dialog == nullptr ? m_frame.get() : dialog;
    }
    /// The dialog in front, or the view.
    [[nodiscard]] QWidget* View() const {
        return Window() == m_frame.get() ? m_frame->ActiveView() : Window();
    }

    /// False when there is nothing to do it with.
    bool Do(const QString& step) {
        const QString verb = step.section(u' ', 0, 0);
        QStringList words = step.split(u' ').sliced(1);
        const qsizetype named = words.indexOf(QRegularExpression(u"@.*"_s));
        const QString name = named < 0 ? QString() : words.takeAt(named).sliced(1);
        const QString rest = words.join(u' ');
        if (step.isEmpty() || DoWithAll(verb, rest)) {
            return true;
        }
        QWidget* widget = name.isEmpty() ? Window()->focusWidget() : nullptr;
        for (auto* found : Window()->findChildren<QWidget*>(QString(name).replace(u'_', u' '))) {
            widget = !name.isEmpty() && found->isVisibleTo(Window()) ? found : widget;
        }
        return widget != nullptr && DoWith(*widget, verb, rest);
    }
    bool DoWithAll(const QString& verb, const QString& rest) {
        if (verb == u"do") {
            const auto actions =
                View()->findChildren<QAction*>() + Window()->findChildren<QAction*>();
            const auto action = std::ranges::find(actions, rest, &QAction::text);
            if (action != actions.end()) {
                (*action)->trigger();
            }
            return action != actions.end();
        }
        if (verb == u"again") {
            m_frame.reset();
            Reopen();
            m_doc->dayShown = kDay;
            const bool isActive = m_doc->SetActiveProfile(u"Ann"_s);
            OpenFrame();
            return isActive;
        }
        m_messages->answer = verb == u"answer" ? rest == u"yes" : m_messages->answer;
        m_messages->chosenFile = verb != u"file"  ? m_messages->chosenFile
                                 : rest.isEmpty() ? QString()
                                                  : Path(rest);
        if (verb == u"full" || verb == u"room") {
            m_full = verb == u"full" ? std::make_unique<CFileSizeLimit>(1) : nullptr;
        } else if (verb == u"away" || verb == u"back") {
            const QString here = Path(u"v.db"_s);
            const QString there = Path(u"away.db"_s);
            return verb == u"away" ? QFile::rename(here, there) : QFile::rename(there, here);
        } else if (verb == u"look") {
            m_states.insert(TitleOf(*Window()), {});
        }
        return QStringLiteral("answer file full room look").contains(verb);
    }
    static bool DoWith(QWidget& widget, const QString& verb, const QString& rest) {
        const int number = rest.section(u' ', 0, 0).toInt();
        const int second = rest.section(u' ', 1, 1).toInt();
        auto* view = qobject_cast<QTreeView*>(&widget);
        if (verb == u"press") {
            // The widget of a box is wider than what takes a click.
            QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
        } else if (verb == u"key") {
            widget.setFocus();
            for (const QString& keys : rest.split(u' ')) {
                const QKeyCombination key = QKeySequence::fromString(keys)[0];
                QWidget* popUp = QApplication::activePopupWidget();
                QWidget* focus = (popUp == nullptr ? widget.window() : popUp)->focusWidget();
                QTest::keyClick(focus, key.key(), key.keyboardModifiers());
            }
        } else if (verb == u"wheel") {
            QWheelEvent turn({}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&widget, &turn);
        } else if (verb == u"type") {
            Type(widget, rest);
        } else if (verb == u"row" && view != nullptr) {
            const QModelIndex row = view->model()->index(number, 0);
            view->expand(row);
            const QModelIndex below = view->model()->index(second, 0, row);
            const QRect place = view->visualRect(rest.contains(u' ') ? below : row);
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place.center());
        } else if (auto* grid = qobject_cast<CGrid*>(&widget); verb == u"cell" && grid != nullptr) {
            return TypeInto(grid, number, second, rest.section(u' ', 2));
        } else if (verb == u"drag" && view != nullptr) {
            view->header()->resizeSection(number, second);
        } else if (auto* pages = qobject_cast<QTabWidget*>(&widget); pages != nullptr) {
            pages->setCurrentIndex(number);
        } else if (auto* tabs = qobject_cast<QTabBar*>(&widget); tabs != nullptr) {
            tabs->setCurrentIndex(number);
        } else {
            return false;
        }
        return true;
    }
    static void Type(QWidget& widget, const QString& text) {
        auto* box = qobject_cast<QComboBox*>(&widget);
        auto* spin = qobject_cast<QSpinBox*>(&widget);
        auto* edit = box == nullptr ? qobject_cast<QLineEdit*>(&widget) : box->lineEdit();
        if (auto* time = qobject_cast<QTimeEdit*>(&widget); time != nullptr) {
            time->setTime(QTime::fromString(text, Qt::ISODate));
        } else if (auto* date = qobject_cast<CDateField*>(&widget); date != nullptr) {
            widget.window()->focusWidget()->clearFocus();
            date->setFocus(Qt::TabFocusReason);
            QTest::keyClicks(date, text);
        } else if (spin != nullptr) {
            spin->setValue(text.toInt());
        } else if (edit != nullptr) {
            Replace(edit, text);
        } else {
            QTest::keyClicks(&widget, text);
        }
    }

    QString TitleOf(const QWidget& window) const {
        return &window == m_frame.get()
                   ? m_frame->findChild<QActionGroup*>()->checkedAction()->text()
                   : window.windowTitle();
    }
    /// Since the last time.
    QString Seen() {
        const QString title = TitleOf(*Window());
        const auto state = CPortrait::StateOf(*View());
        const auto before = std::exchange(m_states[title], state);
        QString text =
            title == std::exchange(m_title, title) ? QString() : u"["_s + title + u"] "_s;
        for (const CPortrait::CState& now : state) {
            const auto old = std::ranges::find(before, now.name, &CPortrait::CState::name);
            const bool isNew = old == before.end();
            QString changes = isNew || old->value != now.value ? u'=' + now.value : QString();
            QStringList rows;
            for (qsizetype row = 0; row < now.rows.size(); ++row) {
                if (isNew || old->rows.value(row) != now.rows[row]) {
                    rows.append(u" %1:"_s.arg(row) + now.rows[row]);
                }
            }
            changes += rows.first(std::min(rows.size(), kMostRows)).join(QString()) +
                       CPortrait::DigestOf(rows.mid(kMostRows));
            if (now.rows.size() != (isNew ? 0 : old->rows.size())) {
                changes += u" (%1)"_s.arg(now.rows.size());
            }
            text += changes.isEmpty() ? QString() : now.name + changes + u' ';
        }
        for (const CPortrait::CState& old : before) {
            if (std::ranges::find(state, old.name, &CPortrait::CState::name) == state.end()) {
                text += u"no "_s + old.name + u' ';
            }
        }
        text += Told(u"says"_s, m_messages->shown) + Told(u"for"_s, m_messages->details) +
                Told(u"offers"_s, m_messages->offered) + Told(u"asks"_s, m_messages->asked);
        if (QStringList hints{QToolTip::text()}; QToolTip::isVisible()) {
            QToolTip::showText({}, {});
            text += Told(u"hints"_s, hints);
        }
        for (const CFileChoice& choice : std::exchange(m_messages->choices, {})) {
            text += u"chooses '%1' %2%3 "_s.arg(choice.title, choice.initialName,
                                                choice.defaultExtension);
        }
        const QString status = Find<QLabel>(*m_frame, "status")->text().remove(m_folder->path());
        if (std::exchange(m_statusText, status) != status) {
            text += status.isEmpty() ? u"tells nothing "_s : u"tells '"_s + status + u"' "_s;
        }
        const CStoredRecords stored(Database().GetStore(), u"Ann"_s);
        static const QRegularExpression kAge(u"\\d+(?= ys)"_s);
        return text.replace(kAge, u"#"_s) + stored.ChangesSince(std::exchange(m_stored, stored));
    }
    /// In full the first time.
    QString Told(const QString& how, QStringList& texts) {
        QString told = texts.isEmpty() ? QString() : how + u' ';
        for (QString& text : std::exchange(texts, {})) {
            text.remove(m_folder->path());
            told += u'\'' + (m_heard.contains(text) ? CPortrait::Short(text) : text) + u"' "_s;
            m_heard.insert(text);
        }
        return told;
    }

    CSeenText m_stories{VELMORA_STORIES};
    std::unique_ptr<CDietFrame> m_frame;
    std::unique_ptr<CFileSizeLimit> m_full;
    QEventLoop m_loop;
    QStringList m_steps;
    int m_running = 0;
    QString m_told;
    QString m_title;
    QString m_statusText;
    QSet<QString> m_heard;
    QMap<QString, QList<CPortrait::CState>> m_states;
    CStoredRecords m_stored;
};

QTEST_MAIN(TestStories)
#include "TestStories.moc"
