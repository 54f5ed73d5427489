// A kitchen to share: a menu of recipes of foods, with the values that are hard to keep.
#pragma once

#include <numeric>

#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/ChosenFood.h"
#include "catalogue/share/ShareItems.h"
#include "catalogue/share/TakeIn.h"
#include "store/engine/RecordCodec.h"
#include "support/ComposedSamples.h"
#include "support/Files.h"

/// "Breakfast" of "Bread" and of "Egg", which has no food; "Bread" of "Dough" and "Milk"; "Dough"
/// of "Milk" and "Flour". "Soup" is no part of it.
class CShareTest : public CCatalogueTest {
  protected:
    void FillKitchen() {
        CDatabase& database = Database();
        CCategory dairy;
        dairy.SetKind(kFoods);
        dairy.SetName(QStringLiteral("Dairy"));
        dairy.SetSmallPicture(QByteArray("picture\0\xFF", 9));
        QVERIFY(database.Categories().AddOrUpdate(-1, dairy));
        const qint32 dry = AddCategory(database, QStringLiteral("Dry"));
        // Texts with a NUL, half a surrogate pair and as long as they get.
        CFoodItem milk = MakeFood(dairy.GetId(), QStringLiteral("Milk"),
                                  QString(128, QChar(0xD83D)).replace(1, 1, QChar(0)));
        milk.SetNutrientValue(0, 0.1 + 0.2);
        milk.SetNutrientValue(1, -0.0);
        milk.SetNutrientValue(2, 5e-324);
        milk.SetNutrientValue(53, 1.7976931348623157e308);
        QVERIFY(database.Foods().Write(-1, milk));
        for (const char* name : {"Flour", "Soup"}) {
            QVERIFY(database.Foods().Write(
                -1, MakeFood(dry, QString::fromLatin1(name), QStringLiteral("x"))));
        }
        const qint32 baking = AddCategory(database, QStringLiteral("Baking"), kRecipes);
        m_bread = AddComposed(database, kRecipes, baking, QStringLiteral("Bread"));
        const qint32 dough = AddComposed(database, kRecipes, baking, QStringLiteral("Dough"));
        CRecipeItem recipe;
        QVERIFY(database.Recipes().Read(1, recipe));
        recipe.SetInstructions(QStringLiteral("Knead.\r\nWait \"long\", then bake."));
        recipe.SetNutrientValue(0, 1.0 / 3);
        QVERIFY(database.Recipes().Write(1, recipe));
        AddFoodPart(dough, 0);
        AddFoodPart(dough, 1);
        QVERIFY(AddPart(database, kRecipes, m_bread, QStringLiteral("Dough"), 0.7,
                        EItemKind::Recipe, dough));
        AddFoodPart(m_bread, 0);
        const qint32 week = AddCategory(database, QStringLiteral("Week"), kMenus);
        const qint32 menu = AddComposed(database, kMenus, week, QStringLiteral("Breakfast"));
        QVERIFY(AddPart(database, kMenus, menu, QStringLiteral("Bread"), 1e-9, EItemKind::Recipe,
                        m_bread));
        QVERIFY(AddPart(database, kMenus, menu, QStringLiteral("Egg")));
    }

    /// Of the food at a position, in a recipe.
    void AddFoodPart(qint32 owner, int position) {
        CFoodItem food;
        QVERIFY(Database().Foods().Read(position, food));
        QVERIFY(AddPart(Database(), kRecipes, owner, food.GetName(), 0.1, EItemKind::Food,
                        static_cast<qint32>(Database().Foods().RecordAt(position))));
    }

    QString Shared() const { return Path(QStringLiteral("kitchen.velmora")); }
    /// Shares all items of a kind; what was said, "! ..." on failure. So do the next two.
    QString Share(ECatalogueKind kind) {
        std::vector<int> positions(Database().Catalogue().CountItems(kind));
        std::iota(positions.begin(), positions.end(), 0);
        return Share(kind, positions);
    }
    QString Share(ECatalogueKind kind, const std::vector<int>& positions) {
        return Said(ShareItems(Database(), {kind, positions}, Shared()));
    }
    QString TakeIn(EDuplicatePolicy policy = EDuplicatePolicy::Skip) {
        return Said(TakeInFile(Database(), policy, Shared()));
    }
    QString Said(bool isDone) {
        return (isDone ? QString() : QStringLiteral("! ")) + m_messages->Said();
    }

    /// Everything in the catalogue, bit by bit, but for the identifiers: a component names the
    /// category of the item it was made of instead.
    QString Everything() {
        QStringList lines;
        for (const ECatalogueKind kind : {kFoods, kMenus, kRecipes}) {
            for (int i = 0; i < Database().Catalogue().CountItems(kind); ++i) {
                AppendItem(kind, i, lines);
            }
        }
        CCategory category;
        for (int i = 0; i < Database().Categories().Count(); ++i) {
            if (Database().Categories().Read(i, category)) {
                category.SetId(0);
                lines.append(Hex(category.GetProperties(), {}));
            }
        }
        lines.sort();
        return lines.join(u'\n');
    }

    qint32 m_bread = 0;

  private:
    static QString Hex(PropertyList properties, std::initializer_list<int> identifiers) {
        QByteArray body;
        for (const int identifier : identifiers) {
            properties[identifier] = 0;
        }
        EncodeRecord(properties, body);
        return QString::fromLatin1(body.toHex());
    }
    void AppendItem(ECatalogueKind kind, int position, QStringList& lines) {
        CCatalogueItem item(kind);
        QVERIFY(Database().Items(kind).Read(position, item));
        QString line = Database().Categories().NameOf(kind, item.GetCategoryId()) + u' ';
        if (!HasComponents(kind)) {
            line += Hex(item.GetProperties(), {0});
        } else {
            CComposedItem composed(kind);
            (void)composed.SetProperties(PropertyList(item.GetProperties()));
            line += Hex(item.GetProperties(), {0, 2});
            for (const int part :
                 Database().Composed().ComponentPositions(kind, composed.GetItemId())) {
                CComposedItem component(kind);
                QVERIFY(Database().Items(kind).Read(part, component));
                const qint32 category = CategoryOfComponent(Database(), component);
                line +=
                    u' ' + Hex(component.GetProperties(), {0, 2}) + u'@' +
                    Database().Categories().NameOf(CatalogueOf(component.GetItemKind()), category);
            }
        }
        lines.append(line);
    }
};
