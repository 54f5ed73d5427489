// Menus and recipes as files: what is written, what is read, and the column between the two.
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvFields.h"
#include "catalogue/exchange/InstructionsField.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
const QString kWrongIndex = u"SetNutrientValue --> WRONG INDEX"_s;
/// A bad line is found before its values or behind them, or ends the import.
enum EBad { Early, Late, Fatal };

/// A line as the readers want it: with the column that the writers do not write.
QByteArray Line(const QByteArray& type, const QByteArray& category, const QByteArray& name,
                const QByteArray& food, const QByteArray& end = "\"cup\",1.500,") {
    return "7," + type + ",\"" + category + "\",\"" + name + "\",\"" + food + "\"," +
           QByteArray("2.000,").repeated(kNutrientCount) + "0.000," + end + "\r\n";
}

QByteArray File(const QByteArray& lines) {
    return "<Menus>\r\nNDB_No,Item type\r\n" + lines + "<End>\r\n";
}
}  // namespace

class TestComposedExchange : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void menusAreWrittenWithTheirComponents() {
        Fill(kMenus);
        QVERIFY(Export(kMenus));
        const QByteArray zeros = QByteArray("0.000,").repeated(kNutrientCount - 1);
        const QByteArray id = QByteArray::number(kFirstComposedId + 1) + ',';
        const QByteArray names = "\"Week\",\"Lunch\",";
        const QByteArray file = Load(Path(u"out.csv"_s));
        QVERIFY(file.startsWith("<Menus>\r\nNDB_No,Item type,Category,Menu name,Food name,"));
        QVERIFY(file.contains(",Serving size,Number of servings\r\n" + id + "Menu," + names +
                              ",0.000," + zeros + "\"1 serving\",1.000,\r\n" + id + "Food," +
                              names + "\"Soup\",80.000," + zeros + "\"cup\",1.000,\r\n" + id +
                              "Recipe," + names + "\"Pie\",100.000," + zeros +
                              "\"cup\",1.000,\r\n<End>\r\n"));
        QCOMPARE(m_messages->Said(), u"Exported 1 menus."_s);
    }

    void aDamagedComponentIsToldWithTheSummary() {
        Fill(kMenus);
        Damage(Database().Menus(), 1);
        QVERIFY(!Export(kMenus));
        QVERIFY(!Load(Path(u"out.csv"_s)).contains("Soup"));
        QVERIFY(Load(Path(u"out.csv"_s)).contains("Pie"));
        QCOMPARE(m_messages->Said(), u"Exported 1 menus."_s);
        QCOMPARE(m_messages->details, QStringList{u"1 damaged component is left out."_s});
    }

    void recipesHaveNoWordForARecipeInARecipe() {
        Fill(kRecipes);
        QVERIFY(Export(kRecipes));
        const QByteArray file = Load(Path(u"out.csv"_s));
        QVERIFY(file.contains(",Recipe,\"Week\",\"Lunch\",,"));
        QVERIFY(file.contains(",Undefined\"Week\",\"Lunch\",\"Pie\","));
        QVERIFY(file.contains("Number of servings,Instructions\r\n"));
        QVERIFY(file.contains("\"1 serving\",1.000,\"Mix.\\r\\nBake.\",\r\n"));
        QVERIFY(file.contains("\"cup\",1.000,\"\",\r\n"));
        QCOMPARE(m_messages->Said(), u"Exported 1 recipes."_s);
    }

    void instructionsThatNoLineHoldsAreNamed() {
        Fill(kRecipes);
        CRecipeItem lunch;
        QVERIFY(Database().Recipes().Read(0, lunch));
        const auto exportWith = [&, this](const QString& instructions) {
            lunch.SetInstructions(instructions);
            (void)Database().Recipes().Write(0, lunch);
            (void)Export(kRecipes);
            return m_messages->Said();
        };
        // Quotes in instructions are taken care of; their length is not.
        QCOMPARE(exportWith(u"\"salt\", "_s), u"Exported 1 recipes."_s);
        QCOMPARE(exportWith({}), u"Exported 1 recipes."_s);
        const auto length = Load(Path(u"out.csv"_s)).split('\n').at(2).chopped(1).size();
        const QString room(4095 - length, u'x');
        QCOMPARE(exportWith(room), u"Exported 1 recipes."_s);
        QCOMPARE(
            exportWith(room + u'x'),
            u"Exported 1 recipes.|Items whose lines are too long for an import (1): 'Lunch'"_s);
    }

    // 61 columns are written and 62 read: the serving is taken for a 55th value, the number for
    // the serving, and the last column is missed. Recipes end likewise.
    void whatIsWrittenIsNotWhatIsRead_data() {
        AddRows<ECatalogueKind, int, QString>(
            {{"menus", kMenus, 61, u"menu"_s}, {"recipes", kRecipes, 62, u"recipe"_s}});
    }
    void whatIsWrittenIsNotWhatIsRead() {
        const auto& [kind, columns, word] = DataRow<ECatalogueKind, int, QString>();
        Fill(kind);
        QVERIFY(Export(kind));
        const QByteArray exported = Load(Path(u"out.csv"_s));
        MakeVolume();
        Import(kind, EDuplicatePolicy::Overwrite, exported);
        QCOMPARE(m_messages->Said(),
                 kWrongIndex +
                     u"|Invalid number of fields (%1) in line 3. Skipped.|"
                     "Cannot find %2 for food in line 4. Skipped.|"
                     "Too many errors. Import stopped.|Imported 0 %2s."_s.arg(columns)
                         .arg(word));
        QCOMPARE(Database().Items(kind).Count(), 0);
    }

    void aFileWithTheColumnImportsWhole() {
        const QByteArray lines = Line("Menu", "Week", "Lunch", "") +
                                 Line("Food", "Week", "Lunch", "Soup") +
                                 Line("Recipe", "Week", "Lunch", "Pie") +
                                 Line("Menu", "Week", "Tea", "") + Line("Food", "Week", "Tea", "");
        Import(kMenus, EDuplicatePolicy::Overwrite, File(lines));
        QCOMPARE(m_messages->Said(),
                 QString((kWrongIndex + u'|').repeated(4)) +
                     u"Invalid food type in line 7. Skipped.|Imported 2 menus."_s);
        CMenuItem menu;
        QVERIFY(Database().Menus().Read(0, menu));
        QCOMPARE(menu.GetNutrientValue(53), 2.0);
        QCOMPARE(menu.GetServingName(), u"cup"_s);
        QCOMPARE(menu.GetServingX(), 1.5);
        QCOMPARE(PartsOf(Database(), kMenus, menu.GetItemId()), u"Soup,Pie"_s);
    }

    void existingMenusAreReplacedSkippedOrDoubled_data() {
        AddRows<EDuplicatePolicy, QString, QString>({
            {"overwrite", EDuplicatePolicy::Overwrite,
             u"Imported 2 menus. Replaced 1 existing menus."_s, u"Lunch:New Tea:New"_s},
            {"skip", EDuplicatePolicy::Skip, u"Imported 1 menus. Skipped 1 existing menus."_s,
             u"Lunch:Soup,Pie Tea:New"_s},
            {"add", EDuplicatePolicy::DoNotCheck, u"Imported 2 menus."_s,
             u"Lunch:Soup,Pie Lunch:New Tea:New"_s},
        });
    }
    void existingMenusAreReplacedSkippedOrDoubled() {
        const auto& [existing, summary, stored] = DataRow<EDuplicatePolicy, QString, QString>();
        Fill(kMenus);
        const QByteArray lines =
            Line("Menu", "Week", "Lunch", "") + Line("Food", "Week", "Lunch", "New") +
            Line("Menu", "Week", "Tea", "") + Line("Food", "Week", "Tea", "New");
        Import(kMenus, existing, File(lines));
        QCOMPARE(m_messages->TakeShown().last(), summary);
        QCOMPARE(Stored(), stored);
    }

    void aMenuTwiceInOneFileIsReplacedOrSkippedWithItsComponents() {
        const QByteArray lunch = Line("Menu", "Week", "Lunch", "");
        const QByteArray twice = lunch + Line("Food", "Week", "Lunch", "Soup") + lunch +
                                 Line("Food", "Week", "Lunch", "Bread");
        Import(kMenus, EDuplicatePolicy::Overwrite, File(twice));
        QCOMPARE(m_messages->TakeShown().last(), u"Imported 2 menus. Replaced 1 existing menus."_s);
        QCOMPARE(Stored(), u"Lunch:Bread"_s);
        MakeVolume();
        Import(kMenus, EDuplicatePolicy::Skip, File(twice));
        QCOMPARE(m_messages->TakeShown().last(), u"Imported 1 menus. Skipped 1 existing menus."_s);
        QCOMPARE(Stored(), u"Lunch:Soup"_s);
    }

    void recipesAreReadWithTheirInstructions() {
        const QByteArray lines =
            Line("Recipe", "Cakes", "Pie", "", "\"4 pieces\",1,\"Mix.\\r\\nBake.\",") +
            Line("Food", "Cakes", "Pie", "Flour", "\"cup\",2,\"\",");
        Import(kRecipes, EDuplicatePolicy::Overwrite, File(lines).replace("<Menus>", "<Recipes>"));
        QCOMPARE(m_messages->TakeShown().last(), u"Imported 1 recipes."_s);
        CRecipeItem pie;
        QVERIFY(Database().Recipes().Read(0, pie));
        QCOMPARE(pie.GetInstructions(), u"Mix.\r\nBake."_s);
        QCOMPARE(pie.GetServingName(), u"4 pieces"_s);
        QCOMPARE(pie.GetItemKind(), EItemKind::Recipe);
        QCOMPARE(PartsOf(Database(), kRecipes, pie.GetItemId()), u"Flour"_s);
    }

    void badLinesAreNamedByTheirPlace_data() {
        const auto menu = [](const QByteArray& end) {
            return Line("Menu", "Week", "Lunch", "", end);
        };
        AddRows<QByteArray, EBad, QString>({
            {"type", Line("Snack", "Week", "Lunch", ""), Early, u"Invalid item type"_s},
            {"no category", Line("Menu", "", "Lunch", ""), Fatal, u"Invalid category"_s},
            {"long", Line("Menu", QByteArray(128, 'x'), "Lunch", ""), Fatal, u"Invalid category"_s},
            {"no name", Line("Menu", "Week", "", ""), Fatal, u"Invalid menu name"_s},
            {"no menu", Line("Food", "Week", "A", "B"), Fatal, u"Cannot find menu for food"_s},
            {"no serving", menu("\"\",1.000,"), Late, u"Invalid serving size"_s},
            {"long serving", menu(QByteArray(64, 'x') + ",1,"), Late, u"Invalid serving size"_s},
            {"no number", menu("cup,,"), Late, u"Invalid number of servings"_s},
            {"long number", menu("cup,12345678901234567890,"), Late,
             u"Invalid number of servings"_s},
            {"4 fields", "7,Menu,Week,Lunch\r\n", Early, u"Invalid number of fields (4)"_s},
            {"2 fields", "7,Menu\r\n", Early, {}},
            {"blank, header", "\r\nNDB_No,Menu\r\n", Early, {}},
        });
    }
    void badLinesAreNamedByTheirPlace() {
        const auto& [lines, kind, reason] = DataRow<QByteArray, EBad, QString>();
        Import(kMenus, EDuplicatePolicy::Overwrite, File(lines));
        QCOMPARE(m_messages->Said(),
                 (kind == Late ? kWrongIndex + u'|' : QString()) +
                     (reason.isEmpty() ? QString() : reason + u" in line 3. Skipped.|"_s) +
                     (kind == Fatal ? u"Too many errors. Import stopped.|"_s : QString()) +
                     u"Imported 0 menus."_s);
        // The category is there once its own field was accepted.
        const bool isNamed = !reason.isEmpty() && reason != u"Invalid item type"_s &&
                             reason != u"Invalid category"_s;
        QCOMPARE(Database().Categories().Find(kMenus, u"Week"_s) >= 0, isNamed);
        // Messages on lines hide the progress; the end of the run does not.
        QCOMPARE(m_messages->shownOverProgress, kind == Fatal ? 1 : 0);
    }

    void theComponentsOfARefusedMenuAreDroppedWhereItIsStored_data() {
        AddRows<QByteArray, QString>({
            {"behind its values", Line("Menu", "Week", "Lunch", "", "cup,,"),
             kWrongIndex + u"|Invalid number of servings"_s},
            {"cut short", "7,Menu,Week,Lunch\r\n", u"Invalid number of fields (4)"_s},
            {"unknown type", Line("menu", "Week", "Lunch", ""), u"Invalid item type"_s},
        });
    }
    void theComponentsOfARefusedMenuAreDroppedWhereItIsStored() {
        const auto& [refused, reason] = DataRow<QByteArray, QString>();
        const QByteArray lines = refused + Line("Food", "Week", "Lunch", "New").repeated(12);
        const QString message = reason + u" in line 3. Skipped.|"_s;
        Import(kMenus, EDuplicatePolicy::DoNotCheck, File(lines));
        QCOMPARE(m_messages->Said(), message +
                                         u"Cannot find menu for food in line 4. Skipped.|"
                                         "Too many errors. Import stopped.|Imported 0 menus."_s);
        MakeVolume();
        Fill(kMenus);
        Import(kMenus, EDuplicatePolicy::DoNotCheck, File(lines));
        QCOMPARE(m_messages->Said(), message + u"Imported 0 menus."_s);
        QCOMPARE(Stored(), u"Lunch:Soup,Pie"_s);
        // A later line of that menu is accepted; a refused component takes no others with it.
        const QByteArray again = lines + Line("Menu", "Week", "Lunch", "") +
                                 Line("Food", "Week", "Lunch", "Salt", ",1,") +
                                 Line("Food", "Week", "Lunch", "Bread");
        Import(kMenus, EDuplicatePolicy::Overwrite, File(again));
        QCOMPARE(m_messages->TakeShown().last(), u"Imported 1 menus. Replaced 1 existing menus."_s);
        QCOMPARE(Stored(), u"Lunch:Bread"_s);
    }

    void aMenuIsDurableWithAllItsComponentsOrNotAtAll() {
        QByteArray lines;
        for (const char* name : {"Lunch", "Tea"}) {
            lines +=
                Line("Menu", "Week", name, "") + Line("Food", "Week", name, "A").repeated(4500);
        }
        Save(Path(u"in.csv"_s), File(lines));
        {
            // Room for more than one of the two.
            const CFileSizeLimit limit(4'000'000);
            QVERIFY(!ImportCatalogueFile(Database(), kMenus, EDuplicatePolicy::Skip,
                                         Path(u"in.csv"_s)));
        }
        QCOMPARE(m_messages->TakeShown().last(), u"Imported 1 menus."_s);
        Reopen();
        QCOMPARE(Database().Menus().Count(), 4501);
    }

    void aFullDiskEndsTheImportAsTooManyErrors() {
        const QByteArray file = File(Line("Menu", "Week", "Lunch", ""));
        Save(Path(u"in.csv"_s), file);
        const CFileSizeLimit full(1);
        QVERIFY(
            !ImportCatalogueFile(Database(), kMenus, EDuplicatePolicy::Skip, Path(u"in.csv"_s)));
        const QStringList said = m_messages->TakeShown();
        QCOMPARE(said.last(), u"Imported 0 menus."_s);
        QVERIFY(said.contains(u"Cannot add menu from line 3."_s));
        QVERIFY(said.contains(u"Too many errors. Import stopped."_s));
    }

    void instructionsSurviveTheWriterAndTheReader_data() {
        AddRows<QString, QString>({
            {"lines", u"Mix.\r\nBake.\n"_s, u"Mix.\\r\\nBake.\\n"_s},
            {"backslashes", u"see C:\\temp\\sugar \\\\ \\q\\"_s,
             u"see C:\\temp\\sugar \\\\ \\q\\"_s},
            {"looks like a break", u"\\new"_s, u"\\\u0010new"_s},
            {"quotes", u"Say \"when\" twice"_s, u"Say \"when\" twice"_s},
            {"quotes at the ends", u"\"Stir\""_s, u"\"\"Stir\"\""_s},
            {"quote and comma", u"the \"salt\", pepper"_s, u"the \"salt\"\u0010, pepper"_s},
            {"blanks at the ends", u" Stir\t"_s, u"\" Stir\t\""_s},
            {"before a break", u"a\\\nb"_s, u"a\\\\nb"_s},
        });
    }
    void instructionsSurviveTheWriterAndTheReader() {
        const auto& [text, field] = DataRow<QString, QString>();
        QCOMPARE(EscapedInstructions(text), field);
        QCOMPARE(ReadBack(field), text);
    }

    void instructionsOfAnyCharactersComeBack() {
        const QString characters = u"\\\",rn \r\n\u0010a"_s;
        const qsizetype count = characters.size();
        for (qsizetype number = 0; number < count * count * count * count; ++number) {
            QString text;
            for (qsizetype rest = number; rest > 0; rest /= count) {
                text += characters[rest % count];
            }
            QCOMPARE(ReadBack(EscapedInstructions(text)), text);
        }
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    /// Through a line, since splitting it into fields is what could harm them.
    static QString ReadBack(const QString& field) {
        const QString line = u"1,\""_s + field + u"\",2"_s;
        CCsvFields fields(line);
        (void)fields.Next();
        const QString text = UnescapedInstructions(*fields.Next());
        return *fields.Next() == u'2' ? text : u"the line fell apart"_s;
    }
    /// One menu or recipe "Lunch" with a food and a recipe.
    void Fill(ECatalogueKind kind) {
        const qint32 category = AddCategory(Database(), u"Week"_s, kind);
        const qint32 lunch = AddComposed(Database(), kind, category, u"Lunch"_s);
        CComposedItem item(kind);
        QVERIFY(Database().Items(kind).Read(0, item));
        item.SetInstructions(u"Mix.\r\nBake."_s);
        QVERIFY(Database().Items(kind).Write(0, item));
        QVERIFY(AddPart(Database(), kind, lunch, u"Soup"_s, 80));
        QVERIFY(AddPart(Database(), kind, lunch, u"Pie"_s, 100, EItemKind::Recipe));
    }
    bool Export(ECatalogueKind kind) {
        return ExportCatalogueFile(Database(), kind, {}, Path(u"out.csv"_s));
    }
    void Import(ECatalogueKind kind, EDuplicatePolicy existing, const QByteArray& file) {
        Save(Path(u"in.csv"_s), file);
        (void)ImportCatalogueFile(Database(), kind, existing, Path(u"in.csv"_s));
    }
    /// "Lunch:Soup,Pie Tea:New".
    QString Stored() {
        QStringList menus;
        CMenuItem menu;
        for (const CCategoryListEntry& entry :
             Database().Catalogue().FillCategoryList(kMenus, 1).entries) {
            if (Database().Menus().Read(entry.position, menu)) {
                menus.append(menu.GetName() + u':' + PartsOf(Database(), kMenus, menu.GetItemId()));
            }
        }
        return menus.join(u' ');
    }
};

QTEST_GUILESS_MAIN(TestComposedExchange)
#include "TestComposedExchange.moc"
