// A tab of the diary on the screen, with what the tests reach for.
#pragma once

#include "DiaryFixture.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QToolButton>

#include "controls/ColorDialog.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"

template <typename View>
struct COpenView {
    COpenView(CVelmoraDoc& doc, const char* listName, QSize size = {800, 600})
        : view(doc, nullptr) {
        view.resize(size);
        Show(view);
        list = Find<CReportList>(view, listName);
    }
    void Trigger(const QString& command) const {
        for (auto* action : view.template findChildren<QAction*>()) {
            if (action->text() == command) {
                action->trigger();
                return;
            }
        }
        QFAIL("There is no such command.");
    }
    /// Leaves the colour that the dialog opens with.
    void TakeColor(const QString& command, const QString& prompt) const {
        OnDialog<CColorDialog>([prompt](CColorDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>()->text(), prompt);
            dialog.accept();
        });
        Trigger(command);
    }
    /// The first columns with a blank between them.
    [[nodiscard]] QString Row(int row, int columns = 3) const {
        QStringList cells;
        for (int column = 0; column < columns; ++column) {
            cells.append(list->model()->index(row, column).data().toString());
        }
        return cells.join(u' ');
    }
    [[nodiscard]] bool HasHint() const { return Find<QLabel>(view, "emptyHint")->isVisible(); }

    View view;
    CReportList* list = nullptr;
};
