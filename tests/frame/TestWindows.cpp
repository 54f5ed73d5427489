// What each view shows and offers, and each dialog that its commands open.
#include "diary/DiaryFixture.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>

#include "controls/Dialog.h"
#include "controls/ReportList.h"
#include "frame/DietFrame.h"
#include "support/Clicks.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"
#include "support/Portrait.h"

namespace {
/// What stands below the content of a dialog.
const QString kOkAndCancel = u"(6,0,6,6 ~0 ( ~0 ok=[OK]!? w+24 cancel=[Cancel]? w+24)))"_s;
}  // namespace

class TestWindows : public CDiaryTest {
    Q_OBJECT

  private slots:
    void aViewShowsItsDataAndCommands_data() {
        AddRows<int, QString, QString>(
            {
                {"diet", kSwitchToDiet,
                 u"(/2 (0,2,0,0 day=d MMM yyyy+ says 'Day shown' Previous day=[Previous day] said tip 'Previous day (Alt+Left)' Today=[Today] said tip 'Today (Alt+Home)' Next day=[Next day] said tip 'Next day (Alt+Right)' ~0*1) meals=/BBreakfast/MMorning/L^Lunch/AAfternoon/DDinner/EEvening/AllAll meals says 'Meal' (/0 entries={Name|Serving|Energy (kcal)@82|Protein (g)@82; Tea|1.00x1 serving|20.00@82|0.00@82} many said menu^ h3*1) totals={-Nutrient|Graph|Data1|Data2|Data3; Energy (kcal):||20/||; Protein (g):||0/||} unscrolled says 'Totals of the day' menu h2*1) Tab: day Previous day Today Next day meals entries totals"_s,
                 u"&File: Open profile...; Report...; &Exit;  &Edit: Add entry...<Ins; Ctrl+N>; Edit entry...<Return> here; Delete entry...<Del> here; Move entry...<Ctrl+M>; Duplicate entry...<Ctrl+D>;  &Tools: Preferences...; User...; Targets...; Foods...; Purge...; About Velmora...;  &Help: Velmora help<F1>;  totals: Nutrients...; Background color...;  entries: Add entry...; Edit entry...; Delete entry...; Move entry...; Duplicate entry...;  buttons: Add food/menu/recipe to meal icon; Delete food/menu/recipe from meal icon; ; - Diet monitor tab^; Weight monitor tab; Exercises monitor tab; Foods tab; Menus tab; Recipes tab; Exlib tab; "_s},
                {"weight", kSwitchToWeight,
                 u"(/2 (0,2,0,0 day=d MMM yyyy+ says 'Day shown' Previous day=[Previous day] said tip 'Previous day (Alt+Left)' Today=[Today] said tip 'Today (Alt+Home)' Next day=[Next day] said tip 'Next day (Alt+Right)' ~0*1) (/0 weights={Date|Weight(kg)@82|Weight change(kg)@82|Chest (cm)@82|Waist (cm)@82|Hips (cm)@82|Bicep (cm)@82|Forearm (cm)@82|Thigh (cm)@82|Calf (cm)@82|Body fat(%)@82; 31 May 2026|80.00@82|10.00@82|0.00@82|0.00@82|0.00@82|0.00@82|0.00@82|0.00@82|0.00@82|0.00@82} many said menu^ h3*1) graph= says 'Weight graph' menu*1) Tab: day Previous day Today Next day weights graph 1 month 3 months 1 year All weights"_s,
                 u"&File: Open profile...; Report...; &Exit;  &Edit: Add weight...<Ins; Ctrl+N>; Edit weight...<Return> here; Delete weight...<Del> here;  &Tools: Preferences...; User...; Targets...; BMI...; Purge...; About Velmora...;  &Help: Velmora help<F1>;  graph: Targets...; Show goal line on/off; Text color...; Weight line color...; Goal line color...; Background color...;  weights: Add weight...; Edit weight...; Delete weight...;  buttons: Add weight measurement icon; Delete weight measurement icon; ; - Diet monitor tab; Weight monitor tab^; Exercises monitor tab; Foods tab; Menus tab; Recipes tab; Exlib tab; "_s},
                {"exercises", kSwitchToExercises,
                 u"(/2 (0,2,0,0 day=d MMM yyyy+ says 'Day shown' Previous day=[Previous day] said tip 'Previous day (Alt+Left)' Today=[Today] said tip 'Today (Alt+Home)' Next day=[Next day] said tip 'Next day (Alt+Right)' ~0*1) (/0 exercises={Exercise|Ex. time@82|Energy burned(kcal)@82; Walking,slow|00:30@82|100@82} many said menu^ h3*1) (0,2,0,0/2 headline'Total energy burned: 100/20/500%' wraps@84 graph= says 'Exercises graph'*1)*1) Tab: day Previous day Today Next day exercises graph"_s,
                 u"&File: Open profile...; Report...; &Exit;  &Edit: Add exercise...<Ins; Ctrl+N>; Edit exercise...<Return> here; Delete exercise...<Del> here;  &Tools: Preferences...; User...; Targets...; Exercises...; Purge...; About Velmora...;  &Help: Velmora help<F1>;  graphPane: Targets...; Text color...; Line color...; Bar color...; Background color...;  exercises: Add exercise...; Edit exercise...; Delete exercise...;  buttons: Add exercise icon; Delete exercise icon; ; - Diet monitor tab; Weight monitor tab; Exercises monitor tab^; Foods tab; Menus tab; Recipes tab; Exlib tab; "_s},
                {"foods", kSwitchToFoods,
                 u"( (+ categories={-1; Fruit*; Soups; Drinks} said menu^ (/0 items={Name|Type; Apple|dried; Apple|raw} many says 'foods' menu*1))) Tab: categories items"_s,
                 u"&File: Import foods... within; Export foods... within; -; Close foods<Ctrl+F4> within;  &Edit: New category<Ctrl+Shift+N> within; Rename category<F2> here; Delete category...<Del> here; -; Rename food name here; New food...<Ctrl+N> within; Edit food...<Return> here; Delete food...<Del> here; Move food...<Ctrl+M> within; Duplicate food...<Ctrl+D> within; -; Find food...<Ctrl+F> within; Find next food<F3> within;  &Tools: Preferences...; Menus...; Recipes...; Exercises...;  &Help: Velmora help<F1>;  items: New food...; Edit food...; Delete food...; Move food...; Duplicate food...; -; Find food...; Find next food;  categories: New category; Rename category; Delete category...; -; Rename food name; New food...; -; Import foods...; Export foods...;  buttons: Create new foods category icon; Create new food icon; Find food icon; Find next food icon; - Diet monitor tab; Weight monitor tab; Exercises monitor tab; Foods tab^; Menus tab; Recipes tab; Exlib tab; "_s},
                {"menus", kSwitchToMenus,
                 u"( (+ categories={-1; Week*} said menu^ (/0 items={Name; Stew} many says 'menus' menu*1))) Tab: categories items"_s,
                 u"&File: Import menus... within; Export menus... within; -; Close menus<Ctrl+F4> within;  &Edit: New category<Ctrl+Shift+N> within; Rename category<F2> here; Delete category...<Del> here; -; New menu...<Ctrl+N> within; Edit menu...<Return> here; Delete menu...<Del> here; Move menu...<Ctrl+M> within; Duplicate menu...<Ctrl+D> within; -; Find menu...<Ctrl+F> within; Find next menu<F3> within;  &Tools: Foods...; Recipes...; Exercises...;  &Help: Velmora help<F1>;  items: New menu...; Edit menu...; Delete menu...; Move menu...; Duplicate menu...; -; Find menu...; Find next menu;  categories: New category; Rename category; Delete category...; -; New menu...; -; Import menus...; Export menus...;  buttons: Create new menus category icon; Create new menu icon; Find menu icon; Find next menu icon; - Diet monitor tab; Weight monitor tab; Exercises monitor tab; Foods tab; Menus tab^; Recipes tab; Exlib tab; "_s},
                {"exlib", kSwitchToExlib,
                 u"( (+ categories={-1; Sport*} said menu^ (/0 items={Name|Type|Energy@82; Rowing|fast|5.00 kcal/min@82} many says 'exercises' menu*1))) Tab: categories items"_s,
                 u"&File: Import exercises... within; Export exercises... within; -; Close exercises<Ctrl+F4> within;  &Edit: New category<Ctrl+Shift+N> within; Rename category<F2> here; Delete category...<Del> here; -; Rename exercises here; New exercise...<Ctrl+N> within; Edit exercise...<Return> here; Delete exercise...<Del> here; -;  &Tools: Preferences...; Foods...; Menus...; Recipes...;  &Help: Velmora help<F1>;  items: New exercise...; Edit exercise...; Delete exercise...; -;  categories: New category; Rename category; Delete category; -; Rename exercises; New exercise...; -; Import exercises...; Export exercises...;  buttons: Create new exercises category icon; Create new exercise icon; ; - Diet monitor tab; Weight monitor tab; Exercises monitor tab; Foods tab; Menus tab; Recipes tab; Exlib tab^; "_s},
            });
    }
    void aViewShowsItsDataAndCommands() {
        const auto& [command, shown, commands] = DataRow<int, QString, QString>();
        CDietFrame frame(*m_doc);
        frame.resize(900, 700);
        Show(frame);
        QVERIFY(frame.ShowView(command));
        QCOMPARE(CPortrait::Of(*frame.ActiveView()).split(u' '), shown.split(u' '));
        QCOMPARE(Commands(frame).split(u';'), commands.split(u';'));
    }

    void aCommandOpensItsDialog_data() {
        AddRows<int, QString, QString>(
            {
                {"add entry", kSwitchToDiet, u"Add entry..."_s,
                 u"Add Food 460x560 ( (6,6,6,6 kinds=/Food^/Menu/Recipe wide says 'Kind' ( 'Category:'>category category={} of 8 said^ 'Name:'>name name=\"\"64{} of 8 said 'Type:'>type type=\"\"64{} of 8 said 'Serving:'>serving (/4 serving=\"1 serving\"64{1 serving} of 4 said*1 'X' amount=\"1.00\" said) 'Time:'>time (/4 time=HH:mm:ss said ~0*1 Find food=[&Find...] said w+10 Find next food=[Find &next] said w+10)) values={Nutrient (unit)|Value@82; Energy (kcal)|0.00@82; Protein (g)|0.00@82} says 'Nutrients' h8*1)*1 OK Cancel Tab: kinds category name type serving amount time Find food Find next food values ok cancel"_s},
                {"edit entry", kSwitchToDiet, u"Edit entry..."_s,
                 u"Add Food 460x560 ( (6,6,6,6 kinds=/Food^ wide says 'Kind' ( 'Category:'>category category={} of 8 said^ 'Name:'>name name=\"Tea\"64 from 0{} of 8 said 'Type:'>type type=\"\"64{} of 8 said 'Serving:'>serving (/4 serving=\"1 serving\"64{1 serving} of 4 said*1 'X' amount=\"1.00\" said) 'Time:'>time (/4 time=HH:mm:ss said ~0*1 Find food=[&Find...] said w+10 Find next food=[Find &next] said w+10)) values={Nutrient (unit)|Value@82; Energy (kcal)|20.00@82; Protein (g)|0.00@82} says 'Nutrients' h8*1)*1 OK Cancel Tab: kinds category name type serving amount time Find food Find next food values ok cancel"_s},
                {"move entry", kSwitchToDiet, u"Move entry..."_s,
                 u"Diet move ( (6,6,6,6 'Select date, time, meal to move entry:' wraps ( 'Date:'>date date=d MMM yyyy+^ 'Time:'>time time=HH:mm:ss said 'Meal:'>meal meal=Lunch{Breakfast,Morning,..6..,Evening} said) ~0*1)*1 OK Cancel Tab: ok cancel date time meal"_s},
                {"colour", kSwitchToDiet, u"Background color..."_s,
                 u"Select color ( (6,6,6,6 'Select background color:' wraps ( 'Red:'>red red=^ redValue'255'@82 'Green:'>green green= greenValue'255'@82 'Blue:'>blue blue= blueValue'255'@82) sample'' said h40px ~0)*1 OK Cancel Tab: ok cancel red green blue"_s},
                {"purge", kSwitchToDiet, u"Purge..."_s,
                 u"Purge ( (6,6,6,6 'Select begin and end dates to purge:' wraps ( 'Begin date:'>begin begin=d MMM yyyy+^ 'End date:'>end end=d MMM yyyy+) 'Select entry types to purge:' wraps diet=[Diet] exercises=[Exercises] weights=[Weights] ~0*1)*1 OK Cancel Tab: ok cancel begin end diet exercises weights"_s},
                {"about", kSwitchToDiet, u"About Velmora..."_s,
                 u"About Velmora 360x240 ( (6,6,6,6 title'Velmora #' wraps purpose'A personal diet diary: meals, weights and exercise, day by day, against your own targets.' wraps libraries'Built with:\nQt #, GNU Lesser General Public License version 3\nSQLite #, public domain' wraps ~0)*1 (6,0,6,6 ~0 ( ~0 ok=[OK]!? w+24))) Tab: ok"_s},
                {"edit weight", kSwitchToWeight, u"Edit weight..."_s,
                 u"Weight edit ( (6,6,6,6 ( 'Date:'>date date=d MMM yyyy+ 'Time:'>time time=HH:mm:ss said) 'Weight information:' ( 'Weight:'>weight ( weightMajor=\"80\" selected says 'Weight, kg'^ 'kg' ~0) 'Chest:'>chest ( chestMajor=\"0\" says 'Chest, cm' 'cm' ~0) 'Waist:'>waist ( waistMajor=\"0\" says 'Waist, cm' 'cm' ~0) 'Hips:'>hips ( hipsMajor=\"0\" says 'Hips, cm' 'cm' ~0) 'Bicep:'>bicep ( bicepMajor=\"0\" says 'Bicep, cm' 'cm' ~0) 'Forearm:'>forearm ( forearmMajor=\"0\" says 'Forearm, cm' 'cm' ~0) 'Thigh:'>thigh ( thighMajor=\"0\" says 'Thigh, cm' 'cm' ~0) 'Calf:'>calf ( calfMajor=\"0\" says 'Calf, cm' 'cm' ~0) 'B.Fat:'>bodyFat ( bodyFatMajor=\"0\" says 'Body fat, %' '%' ~0)) ~0*1)*1 (6,0,6,6 calculateBodyFat=[&B.Fat] says 'Calculate body fat (waist only method)' w+24 ~0 ( ~0 ok=[&OK]!? tip 'OK' w+24 cancel=[&Cancel]? tip 'Cancel' w+24))) Tab: ok cancel date time weightMajor chestMajor waistMajor hipsMajor bicepMajor forearmMajor thighMajor calfMajor bodyFatMajor calculateBodyFat"_s},
                {"BMI", kSwitchToWeight, u"BMI..."_s,
                 u"BMI 320x420 ( (6,6,6,6 bmi'Your BMI is  27.68' 'Body Mass Index'>bmiTable bmiTable={-Weight@82|BMI@82|Health risk; Weight@82|BMI@82|Health risk; ..32..; 89@82| 30.80@82|High} unscrolled says 'Body Mass Index' menu^*1)*1 (6,0,6,6 ~0 ( ~0 ok=[OK]!? w+24))) Tab: ok bmiTable"_s},
                {"edit exercise", kSwitchToExercises, u"Edit exercise..."_s,
                 u"Edit exercise 380x340 ( (6,6,6,6 'Edit exercise:' ( 'Category:'>category category=Sport{Sport} of 8 said^ 'Name:'>name name=\"Walking\"64 from 0{} of 8 said 'Type:'>type type=\"slow\"64 from 0{} of 8 said 'Ex. time:'>hours (/4 hours=\"0\"5{0,1,..24..,23} of 3 said 'hrs' minutes=\"30\"5{00,05,..12..,55} of 3 said 'mins' ~0*1) 'Time:'>time (/4 time=HH:mm:ss said ~0*1 Find exercise=[&Find...] said w+10 Find next exercise=[Find &next] said w+10) 'Total energy burned:'>energy (/4 energy=\"100\" says 'Total energy burned'*1 'kcal')) ~0*1)*1 OK Cancel Tab: category name type hours minutes time Find exercise Find next exercise energy ok cancel"_s},
                {"new food", kSwitchToFoods, u"New food..."_s,
                 u"New food 480x640 ( (6,6,6,6 ( '&Category:'>category category=Fruit{Fruit,Soups,Drinks} 'Food &name:'>name name=\"\"127^ 'Food &type:'>type type=\"\"127) oneServing=[&One serving]x weighedServings=[&Weighed (per 100 gm)] servings={Serving name|Weight (gm)@82; 1 serving|@82} said*1 'Nutrients'>nutrients nutrients={Nutrient (unit)|Value@82; Energy (kcal)|@82; ..55..; User defined 20|@82} said*2)*1 OK Cancel Tab: ok cancel category name type oneServing weighedServings servings nutrients"_s},
                {"edit food", kSwitchToFoods, u"Edit food..."_s,
                 u"Edit food 480x640 ( (6,6,6,6 ( '&Category:'>category category=Fruit{Fruit,Soups,Drinks} 'Food &name:'>name name=\"Apple\"127 selected^ 'Food &type:'>type type=\"dried\"127 from 0) oneServing=[&One serving] weighedServings=[&Weighed (per 100 gm)]x servings={Serving name|Weight (gm)@82; 1 ring|6.00@82; ..11..; |@82} said*1 'Nutrients'>nutrients nutrients={Nutrient (unit)|Value@82; Energy (kcal)|240.00@82; ..55..; User defined 20|@82} said*2)*1 OK Cancel Tab: ok cancel category name type oneServing weighedServings servings nutrients"_s},
                {"move food", kSwitchToFoods, u"Move food..."_s,
                 u"Select category to move foods: 320x360 ( (6,6,6,6 'Select category to move foods:'>targets wraps targets={Category; Soups*; Drinks} says 'Categories' menu^*1)*1 OK Cancel Tab: ok cancel targets"_s},
                {"find food", kSwitchToFoods, u"Find food..."_s,
                 u"Find 300x180 ( (6,6,6,6 'Please enter food name and/or type:' wraps ( '&Name:'>name name=\"\"^ '&Type:'>type type=\"\") ~0)*1 OK Cancel Tab: ok cancel name type"_s},
                {"foods preferences", kSwitchToFoods, u"Preferences..."_s,
                 u"Foods preferences 360x460 ( (0,6,0,0 /Nutrients/ (3,6,0,0 'Select nutrients to use and edit names:'>nutrients wraps nutrients={Nutrient (unit); Energy (kcal)x; ..55..; User defined 20} says 'Select nutrients to use and edit names:' w1) /Display/ (3,6,0,0 'Confirmations:' confirmServingChange=[Show when change serving method]x w1 ~12 'Display:' namesInTree=[Show food names in category tree]x w1 ~0))*1 OK Cancel Tab: ok cancel tabs nutrients"_s},
                {"import", kSwitchToFoods, u"Import foods..."_s,
                 u"Import options 260x180 ( (6,6,6,6 'Import options:' option0=[Overwrite existing foods]x^ option1=[Skip existing foods] option2=[Do not check] ~0)*1 OK Cancel Tab: ok cancel option0"_s},
                {"export", kSwitchToMenus, u"Export menus..."_s,
                 u"Export options 260x180 ( (6,6,6,6 'Export options:' option0=[Export all menus]x^ option1=[Export current category] option2=[Export selected menus] ~0)*1 OK Cancel Tab: ok cancel option0"_s},
                {"edit menu", kSwitchToMenus, u"Edit menu..."_s,
                 u"Menu 480x600 ( (6,6,6,6 ( '&Name:'>name name=\"Stew\"64 selected^ '&Category:'>category category=Week{Week}) /Nutrients/ (4,4,4,4 'Nutrients per serving:'>nutrients nutrients={Nutrient (unit)|Value@82; Energy (kcal)|0.00@82; Protein (g)|0.00@82} said h8*1) /Foods/ (4,4,4,4 'Foods:'>components components={Name|Serving; Soup|1.00xcup} many says 'Foods' menu h8*1 ( addFood=[&Add...] tip 'Ins' w+8 editFood=[&Edit...] tip 'F2' w+8 deleteFood=[&Delete...] tip 'Del' w+8 ~0))*1 recalculate=[&Recalculate menu nutrients from foods] says 'Recalculate menu nutrients from foods')*1 OK Cancel Tab: ok cancel name category pages nutrients recalculate"_s},
                {"edit recipe", kSwitchToRecipes, u"Edit recipe..."_s,
                 u"Recipe 480x600 ( (6,6,6,6 ( '&Name:'>name name=\"Stew\"64 selected^ '&Category:'>category category=Week{Week} '&Servings:'>servings servings=\"1 serving\"63 from 0) /Nutrients/ (4,4,4,4 'Nutrients per serving:'>nutrients nutrients={Nutrient (unit)|Value@82; Energy (kcal)|0.00@82; Protein (g)|0.00@82} said h8*1) /Foods/ (4,4,4,4 'Foods:'>components components={Name|Serving; Soup|1.00xcup} many says 'Foods' menu h8*1 ( addFood=[&Add...] tip 'Ins' w+8 editFood=[&Edit...] tip 'F2' w+8 deleteFood=[&Delete...] tip 'Del' w+8 ~0)) /Instructions/ (4,4,4,4 'Instructions:'>instructions instructions= h8*1 saveAsText=[Save recipe as &text...]@1)*1 recalculate=[&Recalculate recipe nutrients from foods] says 'Recalculate recipe nutrients from foods')*1 OK Cancel Tab: ok cancel name category servings pages nutrients recalculate"_s},
                {"edit exlib", kSwitchToExlib, u"Edit exercise..."_s,
                 u"Edit exlib 360x300 ( (6,6,6,6 'Edit exercise:' ( 'Name:'>name name=\"Rowing\"127 selected{} of 8 said^ 'Type:'>type type=\"fast\"127 from 0{} of 8 said 'Category:'>category category=Sport{Sport} of 8 said 'Energy:'>energy ( energy=\"5.00\" said*1 unit'kcal/min' met=[MET])) ~0*1)*1 OK Cancel Tab: name type category energy met ok cancel"_s},
                {"exlib preferences", kSwitchToExlib, u"Preferences..."_s,
                 u"Exercises preferences 300x160 ( (6,6,6,6 'Display:' namesInTree=[Show exercise names in category tree]x^ w1 ~0)*1 OK Cancel Tab: ok cancel namesInTree"_s},
                {"import exlib", kSwitchToExlib, u"Import exercises..."_s,
                 u"Import options 260x180 ( (6,6,6,6 'Import options:' option0=[Overwrite existing exercises]x^ option1=[Skip existing exercises] option2=[Don't check] ~0)*1 OK Cancel Tab: ok cancel option0"_s},
            });
    }
    void aCommandOpensItsDialog() {
        const auto& [view, command, expected] = DataRow<int, QString, QString>();
        CDietFrame frame(*m_doc);
        Show(frame);
        QVERIFY(frame.ShowView(view));
        for (auto* list : frame.ActiveView()->findChildren<CReportList*>()) {
            list->SelectRow(0);
        }
        QString shown;
        OnDialog<CDialog>([&](CDialog& dialog) {
            shown = CPortrait::Of(dialog);
            dialog.resize(240, 320);
            QCoreApplication::processEvents();
            QCOMPARE(Find<QScrollArea>(dialog, "content")->horizontalScrollBar()->maximum(), 0);
        });
        for (auto* action : frame.ActiveView()->findChildren<QAction*>()) {
            if (action->text() == command) {
                action->trigger();
                break;
            }
        }
        // Of the libraries and of this program.
        static const QRegularExpression versions(u"\\d+(\\.\\d+){2}|v\\d+\\.\\d+"_s);
        shown.replace(versions, u"#"_s).replace(kOkAndCancel, u"OK Cancel"_s);
        QCOMPARE(shown.split(u' '), expected.split(u' '));
    }

    void init() {
        MakeDiary();
        AddCatalogue();
        AddCategory(Database(), u"Drinks"_s);
        AddEntry(u"Tea"_s, QTime(8, 0), 2, 20);
        AddDone(u"Walking"_s, kDay, QTime(9, 0), 30, 100);
        QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 80)));
        for (const auto kind : {kMenus, kRecipes}) {
            const qint32 id =
                AddComposed(Database(), kind, AddCategory(Database(), u"Week"_s, kind), u"Stew"_s);
            QVERIFY(AddPart(Database(), kind, id, u"Soup"_s, 80));
        }
        CExerciseItem exercise;
        exercise.SetCategoryId(AddCategory(Database(), u"Sport"_s, kExercises));
        exercise.SetName(u"Rowing"_s);
        exercise.SetType(u"fast"_s);
        exercise.SetEnergyRateKcalPerMinute(5);
        QVERIFY(Database().Exlib().Write(-1, exercise));
    }

  private:
    /// The menus of the command bar, those that pop up, and the tool buttons. A shortcut may work
    /// "here", in its list alone, or "within" the view.
    static QString Commands(CDietFrame& frame) {
        QStringList texts;
        for (const QAction* menu : frame.menuBar()->actions()) {
            texts.append(menu->text() + u": "_s + CommandsOf(menu->menu()->actions()));
        }
        for (auto* widget : frame.ActiveView()->findChildren<QWidget*>()) {
            if (widget->contextMenuPolicy() == Qt::CustomContextMenu) {
                QTimer::singleShot(0, widget, [&texts, widget] {
                    auto* menu = QApplication::activePopupWidget();
                    texts.append(widget->objectName() + u": "_s +
                                 CommandsOf(menu->actions(), false));
                    menu->close();
                });
                emit widget->customContextMenuRequested({});
            }
        }
        QString buttons;
        for (const QAction* action : Find<QToolBar>(frame, "commands")->actions()) {
            buttons += action->isSeparator()
                           ? u"- "_s
                           : action->toolTip() +
                                 (action->icon().isNull() ? QString() : u" icon"_s) +
                                 (action->isChecked() ? u"^; "_s : u"; "_s);
        }
        return texts.join(u' ') + u" buttons: "_s + buttons;
    }
    static QString CommandsOf(const QList<QAction*>& actions, bool withKeys = true) {
        QString texts;
        for (const QAction* action : actions) {
            const QString keys = QKeySequence::listToString(action->shortcuts());
            const auto reach = action->shortcutContext();
            texts += action->isSeparator() ? u"-"_s : action->text();
            texts += withKeys && !keys.isEmpty() ? u'<' + keys + u'>' : QString();
            texts += !withKeys || reach == Qt::WindowShortcut ? QString()
                     : reach == Qt::WidgetShortcut            ? u" here"_s
                                                              : u" within"_s;
            texts += action->isCheckable() ? u" on/off; "_s : u"; "_s;
        }
        return texts;
    }
};

QTEST_MAIN(TestWindows)
#include "TestWindows.moc"
