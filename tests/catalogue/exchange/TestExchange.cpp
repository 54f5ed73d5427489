// Import and export over real files and a real volume, as far as a window or a fault comes into it.
#include <sys/stat.h>

#include <QDir>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvFields.h"
#include "catalogue/exchange/InstructionsField.h"
#include "support/ComposedSamples.h"

namespace {
const QByteArray kValues = QByteArray("2.000,").repeated(kNutrientCount);

QByteArray FoodFile(int count) {
    QByteArray lines = "<Foods>\r\nNDB_No,Category\r\n";
    for (int i = 0; i < count; ++i) {
        lines += "1,Soups,Soup," + QByteArray::number(i) + ',' + kValues + "cup,240,\r\n";
    }
    return lines + "<End>\r\n";
}

/// With the column that the writers do not write.
QByteArray MenuLine(const QByteArray& type, const QByteArray& name, const QByteArray& food) {
    return "7," + type + ",Week," + name + ',' + food + ',' + kValues + "0,cup,1.5,\r\n";
}
}  // namespace

class TestExchange : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void cancelKeepsWhatIsThere() {
        m_messages->progress.cancelAfterPumps = 2;
        QCOMPARE(Import(FoodFile(5)), u"Import cancelled.|Imported 1 foods."_s);
        QCOMPARE(Database().Catalogue().CountItems(kFoods), 1);
        QCOMPARE(m_messages->progress.captions, QStringList{u"Velmora: Import"_s});
        QCOMPARE(m_messages->progress.statuses, QStringList{u"Importing foods..."_s});
        // The characters of the marker, the titles and the food: 7 + 15 + 347.
        QCOMPARE(m_messages->progress.position, 369);
    }

    void waitingForAPipeCanBeCancelled() {
        QCOMPARE(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
        m_messages->progress.cancelAfterPumps = 2;
        QVERIFY(!ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Skip, Path(u"pipe"_s)));
        QCOMPARE(m_messages->Said(), u"Import cancelled.|Imported 0 foods."_s);
    }

    void theFileDialogMayBeLeft() {
        QVERIFY(!ImportCatalogue(Database(), kFoods, EDuplicatePolicy::Skip));
        QCOMPARE(m_messages->choices.last().filterName, u"CSV file (*.csv)"_s);
        // Nothing to export is said before a file is asked for.
        m_messages->choices.clear();
        for (const EExportChoice choice : {EExportChoice::All, EExportChoice::Selected}) {
            QVERIFY(!ExportCatalogue(Database(), kFoods, {choice, -1, {}}));
            QCOMPARE(m_messages->Said(), u"There are no foods found to export."_s);
        }
        QVERIFY(m_messages->choices.isEmpty());
    }

    void messagesOnLinesHideTheProgress() {
        const auto over = [this](const QByteArray& line, ECatalogueKind kind) {
            const QByteArray marker = kind == kFoods ? "<Foods>\r\n" : "<Menus>\r\n";
            (void)Import(marker + line, kind);
            return std::exchange(m_messages->shownOverProgress, 0);
        };
        QCOMPARE(over("7,Snack,Week,Lunch,\r\n", kMenus), 0);
        QCOMPARE(over("7,Menu,,Lunch,\r\n", kMenus), 1);  // the end of the run alone
        QCOMPARE(over("1,Soups,Soup,thin\r\n", kFoods), 0);
        QCOMPARE(over("1,Soups,,thin\r\n", kFoods), 1);
    }

    void aMenuIsDurableWithAllItsComponentsOrNotAtAll() {
        QByteArray lines;
        for (const char* name : {"Lunch", "Tea"}) {
            lines += MenuLine("Menu", name, "") + MenuLine("Food", name, "A").repeated(4500);
        }
        {
            const CFileSizeLimit limit(4'000'000);  // room for the file, and for one of the two
            QVERIFY(Import("<Menus>\r\n" + lines, kMenus)
                        .endsWith(u"|Too many errors. Import stopped.|Imported 1 menus."_s));
        }
        Reopen();
        QCOMPARE(Database().Menus().Count(), 4501);
    }

    void anItemThatCannotBeReadIsReplacedInItsPlace() {
        QVERIFY(Database().Foods().Write(-1, MakeFood(0, u"Apple"_s, u"raw"_s)));
        QCOMPARE(Import(FoodFile(2)), u"Imported 2 foods."_s);
        Change("UPDATE records SET body=substr(body, 1, length(body) - 1) WHERE id=?",
               {Database().Foods().RecordAt(2)});
        QCOMPARE(Import(FoodFile(2), kFoods, EDuplicatePolicy::Overwrite),
                 u"Imported 2 foods. Replaced 2 existing foods."_s);
        CFoodItem food;
        for (const int position : {2, 1, 0}) {
            QVERIFY(Database().Foods().Read(position, food));
        }
        QCOMPARE(food.GetName(), u"Apple"_s);
    }

    void picturesComeFromTheFolderAndNowhereElse() {
        constexpr int kHeader = 14;
        constexpr int kLargest = 4 << 20;
        const auto bitmap = [](int size) { return "BM" + QByteArray(size - 2, 'x'); };
        // Category, the file of its small picture, and whether that is taken.
        const std::tuple<QByteArray, QByteArray, bool> rows[] = {
            {"Soups", bitmap(20), true},
            {"Gif", "GIF" + bitmap(20), false},
            {"sub/In", bitmap(20), false},
            {"sub/../Out", bitmap(20), false},
            {"sub\\In", bitmap(20), false},
            {"Cut", bitmap(kHeader - 1), false},
            {"Empty", bitmap(kHeader), true},
            {"Largest", bitmap(kLargest), true},
            {"Too large", bitmap(kLargest + 1), false},
        };
        QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
        QByteArray lines = "<Foods>\r\n";
        for (const auto& [category, file, isTaken] : rows) {
            Save(Path(QString::fromLatin1(category) + u"_S.bmp"_s), file);
            lines += "1," + category + ",a,b," + kValues + "cup,1,\r\n";
        }
        Save(Path(u"Soups_L.bmp"_s), "BM" + QByteArray(kHeader - 2, 'h') + "pixels");
        QCOMPARE(Import(lines), u"Imported 9 foods."_s);
        CCategory category;
        for (int i = 0; const auto& [name, file, isTaken] : rows) {
            QVERIFY(Database().Categories().Read(i++, category));
            QCOMPARE(category.GetSmallPicture(),
                     isTaken ? file.sliced(kHeader) + QByteArray(kHeader, '\0') : QByteArray());
            QCOMPARE(category.GetLargePicture().startsWith("pixels"), name == "Soups");
        }
    }

    void textsWithoutPlaceInTheFileAreReplaced() {
        for (const QString& name : {u"Caf\u00e9 \u4f60"_s, u"Tea"_s, u"Milk"_s}) {
            CFoodItem food = MakeFood(77, name, u"x"_s);
            food.SetServingName(0, QString());
            QVERIFY(Database().Foods().Write(-1, food));
        }
        CExerciseItem row;
        row.SetCategoryId(77);
        row.SetEnergyRateKcalPerMinute(9.1234);
        QVERIFY(Database().Exlib().Write(-1, row));
        QVERIFY(Export({}, kExercises).contains("\n0000,\"Undefined\",\"\",\"\",0.000,9.123,\r\n"));
        const QByteArray file = Export({});
        // Code page 437 has e acute at 0x82. A serving without a name has no weight either.
        QVERIFY(file.contains("0000,\"Undefined (UID=77, IDX=-1)\",\"Caf\x82 ?\",\"x\",0.000,"));
        QVERIFY(file.contains(",\"\",0.000,\"\",0.000,"));
        QVERIFY(!file.contains("240"));
        // What is selected comes as it is listed.
        const QByteArray selected = Export({EExportChoice::Selected, -1, {2, 0}});
        QVERIFY(selected.indexOf("Milk") < selected.indexOf("Caf") && !selected.contains("Tea"));
        QCOMPARE(m_messages->Said(),
                 u"Exported 1 exercises.|Exported 3 foods.|Exported 2 foods."_s);
    }

    void theNextItemDoesNotStandInForADamagedOne() {
        Import(FoodFile(3));
        Damage(Database().Foods(), 1);
        const QByteArray file = Export({EExportChoice::Selected, -1, {1, 0}});
        QVERIFY(file.contains("\"0\"") && !file.contains("\"2\""));
        QCOMPARE(m_messages->Said(), u"Exported 1 foods."_s);
        QCOMPARE(m_messages->details, QStringList{u"1 damaged food is left out."_s});
    }

    void namesThatCannotComeBackAreNamedWithTheSummary() {
        const qint32 category = AddCategory(Database(), u"\"Raw\", cold"_s);
        for (const QString& name :
             {u"The \"best\" soup"_s, u"5\", deep"_s, u"Say \"no\""_s, u"\"No\" again"_s}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(category, name, u"x"_s)));
        }
        Export({});
        QCOMPARE(m_messages->Said(),
                 u"Exported 4 foods.|Names that an import will change because of their quotes (4): "
                 "'\"Raw\", cold', '5\", deep', 'Say \"no\"', ..."_s);
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Warning);
        // The line of a value that needs so many digits.
        CFoodItem food = MakeFood(category, u"Sun"_s, u"hot"_s);
        for (int nutrient = 0; nutrient < 13; ++nutrient) {
            food.SetNutrientValue(nutrient, 1e307);
        }
        QVERIFY(Database().Foods().Write(-1, food));
        Export({EExportChoice::Selected, -1, {4}});
        QVERIFY(m_messages->Said().endsWith(
            u"|Items whose lines are too long for an import (1): 'Sun'"));
        QCOMPARE(m_messages->shownOverProgress, 0);
    }

    void aCancelledExportIsClosedProperly() {
        Import(FoodFile(5));
        m_messages->progress.cancelAfterPumps = m_messages->progress.pumps + 2;
        const QByteArray file = Export({});
        QCOMPARE(m_messages->Said(), u"Export cancelled.|Exported 2 foods."_s);
        QCOMPARE(file.count("\r\n"), 5);
        QVERIFY(file.endsWith("<End>\r\n"));
        m_messages->progress.cancelAfterPumps = m_messages->progress.pumps + 1;
        for (int i = 0; i < 2; ++i) {
            QVERIFY(Database().Exlib().Write(-1, CExerciseItem()));
        }
        QCOMPARE(Export({}, kExercises).count("\r\n"), 4);
        QCOMPARE(m_messages->Said(), u"Export cancelled."_s);
        QCOMPARE(m_messages->shownOverProgress, 2);
    }

    void recipesHaveNoWordForARecipeInARecipe() {
        AddLunch();
        QVERIFY(Export({}, kRecipes).contains(",Undefined\"Week\",\"Lunch\",\"Pie\","));
        QCOMPARE(m_messages->Said(), u"Exported 1 recipes."_s);
    }

    void instructionsThatNoLineHoldsAreNamed() {
        AddLunch();
        CRecipeItem lunch;
        QVERIFY(Database().Recipes().Read(0, lunch));
        const auto exportWith = [&, this](const QString& instructions) {
            lunch.SetInstructions(instructions);
            (void)Database().Recipes().Write(0, lunch);
            (void)Export({}, kRecipes);
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

    void instructionsSurviveTheWriterAndTheReader() {
        const std::pair<QString, QString> rows[] = {
            {u"\\new"_s, u"\\\u0010new"_s},  // looks like a break
            {u"the \"salt\", pepper"_s, u"the \"salt\"\u0010, pepper"_s},
            {u" Stir\t"_s, u"\" Stir\t\""_s},
            {u"a\\\nb"_s, u"a\\\\nb"_s},
        };
        for (const auto& [text, field] : rows) {
            QCOMPARE(EscapedInstructions(text), field);
        }
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
    /// What was shown.
    QString Import(const QByteArray& bytes, ECatalogueKind kind = kFoods,
                   EDuplicatePolicy policy = EDuplicatePolicy::DoNotCheck) {
        m_messages->chosenFile = Path(u"in.csv"_s);
        Save(m_messages->chosenFile, bytes);
        ImportCatalogue(Database(), kind, policy);
        return m_messages->Said();
    }
    QByteArray Export(const CExportRequest& request, ECatalogueKind kind = kFoods) {
        m_messages->chosenFile = Path(u"out.csv"_s);
        ExportCatalogue(Database(), kind, request);
        return Load(m_messages->chosenFile);
    }
    /// Through a line, since splitting it into fields is what could harm them.
    static QString ReadBack(const QString& field) {
        const QString line = u"1,\""_s + field + u"\",2"_s;
        CCsvFields fields(line);
        (void)fields.Next();
        const QString text = UnescapedInstructions(*fields.Next());
        return *fields.Next() == u'2' ? text : u"the line fell apart"_s;
    }
    /// One recipe "Lunch" that holds a recipe.
    void AddLunch() {
        const qint32 category = AddCategory(Database(), u"Week"_s, kRecipes);
        const qint32 lunch = AddComposed(Database(), kRecipes, category, u"Lunch"_s);
        QVERIFY(AddPart(Database(), kRecipes, lunch, u"Pie"_s, 100, EItemKind::Recipe));
    }
};

QTEST_GUILESS_MAIN(TestExchange)
#include "TestExchange.moc"
