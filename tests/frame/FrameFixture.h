// The frame over a volume with something in every view.
#pragma once

#include <QAction>
#include <QRegularExpression>

#include "app/FrameCommands.h"
#include "diary/DiaryFixture.h"
#include "frame/DietFrame.h"
#include "support/Clicks.h"
#include "support/ComposedSamples.h"

/// Commands that open a dialog; others delete, copy or switch to another view.
inline const QRegularExpression kAsking(
    u"^(?!Back ?up|Check|Clear|Delete|Duplicate|Nutrients|Quick|Restore|Move "
    u"(?:recipe|menu)|Foods|Menus|"
    u"Recipes|Exercises|Share).*\\.\\.\\.$"_s);

inline constexpr int kViews[] = {kSwitchToDiet,  kSwitchToWeight, kSwitchToExercises,
                                 kSwitchToFoods, kSwitchToMenus,  kSwitchToRecipes,
                                 kSwitchToExlib};

/// A frame in sight, with this view.
struct CShownFrame : CDietFrame {
    explicit CShownFrame(CVelmoraDoc& doc, int view = kSwitchToDiet, QSize size = {})
        : CDietFrame(doc) {
        if (size.isValid()) {
            resize(size);
        }
        Show(*this);
        QVERIFY(ShowView(view));
    }
};

class CFrameTest : public CDiaryTest {
  protected:
    void FillEveryView() {
        MakeDiary();
        AddCatalogue();
        AddEntry(u"Tea"_s, QTime(8, 0), 2, 20);
        AddDone(u"Walking"_s, kDay, QTime(9, 0), 30, 100);
        QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 80)));
        for (const auto kind : {kMenus, kRecipes}) {
            const qint32 category = AddCategory(Database(), u"Week"_s, kind);
            const qint32 id = AddComposed(Database(), kind, category, u"Stew"_s);
            QVERIFY(AddPart(Database(), kind, id, u"Soup"_s, 80));
        }
        AddToLibrary(AddCategory(Database(), u"Sport"_s, kExercises), u"Rowing"_s, u"fast"_s, 5);
    }
    static void Trigger(CDietFrame& frame, const QString& command) {
        for (auto* action : frame.ActiveView()->findChildren<QAction*>()) {
            if (action->text() == command) {
                action->trigger();
                return;
            }
        }
        qFatal("There is no such command.");
    }
};
