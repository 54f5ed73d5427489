// Words as the search compares them, and what the index finds in which order.
#include "store/search/Plainness.h"
#include "store/search/SearchIndex.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;
constexpr auto kMenus = ECatalogueKind::Menus;

struct CFood {
    const char* category;
    const char* name;
    const char* type;
};

/// Foods as a large table has them. The records are numbered from 1 on.
constexpr CFood kSomeFoods[] = {
    {"Dairy and Egg Products", "Eggnog", "plain"},
    {"Dairy and Egg Products", "Egg", "whole, dried"},
    {"Dairy and Egg Products", "Egg", "whole, raw, fresh"},
    {"Dairy and Egg Products", "Egg", "yolk, raw, fresh"},
    {"Dairy and Egg Products", "Milk", "reduced fat, fluid, 2% milkfat"},
    {"Dairy and Egg Products", "Milk", "dry, whole"},
    {"Dairy and Egg Products", "Milk", "whole, 3.25% milkfat, with added vitamin D"},
    {"Dairy and Egg Products", "Cheese", "mozzarella, whole milk"},
    {"Dairy and Egg Products", "Crème fraîche", "plain"},
    {"Grains", "Noodles", "egg, cooked"},
    {"Grains", "Bread", "rye"},
    {"Grains", "Rye crackers", "thin bread"},
    {"Grains", "Coffeecake", "fruit"},
    {"Beverages", "Coffee-flavored syrup", "sweet"},
    {"Beverages", "Beverages", "coffee, instant, powder"},
    {"Beverages", "Beverages", "coffee, brewed, prepared with tap water"},
    {"Beverages", "Beverages", "almond milk, vanilla"},
    {"Nut Products", "Nuts", "almonds"},
    {"Fats", "Oil", "almond"},
    {"Fruits", "Apples", "dried"},
    {"Fruits", "Apples", "raw, with skin"},
    {"Fruits", "Apples", "cooked"},
    {"Fruits", "Peaches", "canned, not frozen"},
    {"Fruits", "Pine-apples", "raw"},
    {"Fats", "M&M", "nuts, whole"},
};

class CFilledIndex {
  public:
    CFilledIndex() {
        std::vector<CIndexedCategory> categories;
        for (const CFood& food : kSomeFoods) {
            const QString category = QString::fromUtf8(food.category);
            auto found = std::ranges::find(categories, category, &CIndexedCategory::name);
            if (found == categories.end()) {
                const auto id = static_cast<qint32>(categories.size() + 1);
                found = categories.insert(found, {kFoods, id, category});
            }
            Add(found->id, QString::fromUtf8(food.name), QString::fromUtf8(food.type));
        }
        index.SetCategories(categories);
    }
    void Add(qint32 category, const QString& name, const QString& type) {
        texts.append(name + u" | "_s + type);
        index.Add({texts.size(), kFoods, category, name, type});
    }
    QStringList Texts(const CSearchMatches& matches) const {
        QStringList found;
        for (const CSearchMatch& match : matches.best) {
            found.append(texts[match.record - 1]);
        }
        return found;
    }
    QStringList Find(const QString& text, int limit = 100) const {
        return Texts(index.Find({.text = text, .limit = limit}));
    }

    CSearchIndex index;
    QStringList texts;
};

QString Joined(const CFoldedWords& words) {
    QStringList parts;
    for (int i = 0; i < words.Count(); ++i) {
        parts.append(words.WordAt(i).toString() + u":"_s + QString::number(words.PartOf(i)));
    }
    return parts.join(u' ');
}
}  // namespace

class TestSearchIndex : public QObject {
    Q_OBJECT

  private slots:
    void textsAreFoldedAndSplit_data() {
        AddRows<QString, QString>({
            {"case and accents", u"Crème BRÛLÉE"_s, u"creme:0 brulee:0"_s},
            {"accents apart", u"Cre\u0300me"_s, u"creme:0"_s},
            {"ligatures", u"Ærø Łódź Straße ﬁg"_s, u"aero:0 lodz:0 strasse:0 fig:0"_s},
            {"parts", u"(raw), lean; 2% fat,, dry (n x 6.25)"_s,
             u"raw:0 lean:1 2%:2 fat:2 dry:3 n:4 x:4 6:4 25:4"_s},
            {"hyphens", u"ready-to-eat 1/8''"_s, u"ready:0 to:0 eat:0 1:0 8:0"_s},
            {"possessives", u"Campbell's Wendy’s M&M's O's'"_s,
             u"campbell:0 wendy:0 m:0 m:0 o:0"_s},
            {"other apostrophes", u"l'orange don't"_s, u"l:0 orange:0 don:0 t:0"_s},
            {"percent", u"% 100% of%"_s, u"100%:0 of:0"_s},
            {"other scripts", u"яблоко 苹果 🍎"_s, u"яблоко:0 苹果:0 🍎:0"_s},
            {"nothing", u" ,;'-% "_s, u""_s},
        });
    }
    void textsAreFoldedAndSplit() {
        const auto& [text, words] = DataRow<QString, QString>();
        QCOMPARE(Joined(CFoldedWords(text)), words);
    }

    void singularAndPluralHaveTheSameStem() {
        const QStringList words = {u"egg eggs"_s,      u"tomato tomatoes"_s,  u"potato potatoe"_s,
                                   u"berry berries"_s, u"cookie cookies"_s,   u"pie pies"_s,
                                   u"glass glasses"_s, u"peach peaches"_s,    u"radish radishes"_s,
                                   u"box boxes"_s,     u"cheese cheeses"_s,   u"quiche quiches"_s,
                                   u"loaf loaves"_s,   u"octopus octopuses"_s};
        for (const QString& pair : words) {
            QCOMPARE(StemOf(pair.section(u' ', 1)), StemOf(pair.section(u' ', 0, 0)));
        }
    }

    void wordsThatOnlyLookLikePluralsStay() {
        for (const QString& word : {u"gas"_s, u"asparagus"_s, u"hummus"_s, u"swiss"_s, u"s"_s}) {
            QCOMPARE(StemOf(word), word);
        }
        QVERIFY(StemOf(u"bites") != StemOf(u"bits"));
        QVERIFY(StemOf(u"oats") != StemOf(u"oatmeal"));
    }

    void wordsMatchButForOneLetter_data() {
        AddRows<QString, EWordMatch>({
            {"the same, plural", u"chicken chickens"_s, EWordMatch::Whole},
            {"beginning", u"chick"_s, EWordMatch::Beginning},
            {"missing, added or wrong", u"chiken chickken chickenz chocken"_s,
             EWordMatch::NearWhole},
            {"swapped, in a plural", u"chikcen chickne chikens"_s, EWordMatch::NearWhole},
            {"in a beginning of four letters", u"chcik chik"_s, EWordMatch::NearBeginning},
            {"three letters, two, swapped twice, a digit", u"cih chien hcikcen chi1ken"_s,
             EWordMatch::None},
        });
    }
    void wordsMatchButForOneLetter() {
        const auto& [queries, match] = DataRow<QString, EWordMatch>();
        const QString word = u"chicken"_s;
        const EWordMatch exact = IsNear(match) ? EWordMatch::None : match;
        for (const QString& query : queries.split(u' ')) {
            const QString stem = StemOf(query);
            QCOMPARE(MatchWord({query, stem}, {word, word}, true), match);
            QCOMPARE(MatchWord({query, stem}, {word, word}, false), exact);
        }
    }

    void theBestComeFirst_data() {
        const QStringList eggs = {u"Egg | whole, raw, fresh"_s, u"Egg | yolk, raw, fresh"_s,
                                  u"Egg | whole, dried"_s, u"Noodles | egg, cooked"_s};
        const QStringList coffees = {u"Beverages | coffee, brewed, prepared with tap water"_s,
                                     u"Beverages | coffee, instant, powder"_s,
                                     u"Coffee-flavored syrup | sweet"_s, u"Coffeecake | fruit"_s};
        const QStringList apples = {u"Apples | raw, with skin"_s, u"Apples | cooked"_s,
                                    u"Apples | dried"_s, u"Pine-apples | raw"_s};
        const QStringList breads = {u"Bread | rye"_s, u"Rye crackers | thin bread"_s};
        AddRows<QString, QStringList>({
            {"the name before its beginning and the type", u"egg"_s, eggs},
            {"a name that repeats the category", u"coffee"_s, coffees},
            {"the same while it is typed", u"coff"_s, coffees.first(1)},
            {"name and first part",
             u"milk whole"_s,
             {u"Milk | whole, 3.25% milkfat, with added vitamin D"_s, u"Milk | dry, whole"_s,
              u"Cheese | mozzarella, whole milk"_s}},
            {"a name within the query", u"rye bread"_s, breads},
            {"beginnings", u"br ry"_s, breads},
            {"a letter is a word just begun",
             u"whole m"_s,
             {u"Milk | whole, 3.25% milkfat, with added vitamin D"_s}},
            {"the number that was typed",
             u"almonds"_s,
             {u"Nuts | almonds"_s, u"Oil | almond"_s, u"Beverages | almond milk, vanilla"_s}},
            {"the shorter",
             u"almond"_s,
             {u"Oil | almond"_s, u"Nuts | almonds"_s, u"Beverages | almond milk, vanilla"_s}},
            {"plain, then neither, then made", u"apple"_s, apples},
            {"a share", u"2% milk"_s, {u"Milk | reduced fat, fluid, 2% milkfat"_s}},
            {"connecting words",
             u"the milk and of rye"_s,
             {u"Rye crackers | thin bread"_s, u"Bread | rye"_s}},
            {"the category", u"fruit peach"_s, {u"Peaches | canned, not frozen"_s}},
            {"a whole word but for a letter before beginnings", u"cofee"_s, coffees},
            {"the last word", u"rye coffee"_s, coffees},
        });
    }
    void theBestComeFirst() {
        const auto& [text, best] = DataRow<QString, QStringList>();
        const CFilledIndex filled;
        QCOMPARE(filled.Find(text, static_cast<int>(best.size())), best);
    }

    void aQueryTellsHowItsMatchesMatch_data() {
        AddRows<QString, EFound, int>({
            {"all words", u"apple raw"_s, EFound::All, 2},
            {"near words", u"aple raww"_s, EFound::Near, 2},
            {"a known word is not misspelled", u"eggs raww"_s, EFound::Near, 2},
            {"no near word for a known one", u"whole raw coffee"_s, EFound::Most, 1},
            {"most words", u"big apple"_s, EFound::Most, 4},
            {"nothing", u"xyz"_s, EFound::Nothing, 0},
        });
    }
    void aQueryTellsHowItsMatchesMatch() {
        const auto& [text, found, total] = DataRow<QString, EFound, int>();
        const CFilledIndex filled;
        const CSearchMatches matches = filled.index.Find({.text = text, .limit = 1});
        QCOMPARE(matches.found, found);
        QCOMPARE(matches.total, total);
        QCOMPARE(std::ssize(matches.best), std::min(total, 1));
    }

    void whatIsEatenMoreComesFirstAmongEquals() {
        const CFilledIndex filled;
        const auto key = [](const char* name, const char* type) {
            return UseKeyOf(kFoods, u"Dairy and Egg Products", QString::fromUtf8(name),
                            QString::fromUtf8(type));
        };
        const ItemWeights weights = {{key("Egg", "whole, dried"), 2},
                                     {key("Egg", "yolk, raw, fresh"), 3},
                                     {key("Eggnog", "plain"), 50}};
        QCOMPARE(filled.Texts(filled.index.Find({.text = u"egg", .limit = 3, .weights = &weights})),
                 (QStringList{u"Egg | yolk, raw, fresh"_s, u"Egg | whole, dried"_s,
                              u"Egg | whole, raw, fresh"_s}));
        QCOMPARE(filled.Texts(filled.index.FindWeighted({.weights = &weights})),
                 (QStringList{u"Eggnog | plain"_s, u"Egg | yolk, raw, fresh"_s,
                              u"Egg | whole, dried"_s}));
    }

    void aKeyIsThatOfWhatADiaryEntryStores() {
        const QString sixty(60, u'x');
        QCOMPARE(UseKeyOf(kFoods, u"A", sixty + u"1234567"_s, u" b "),
                 UseKeyOf(kFoods, u"A", sixty + u"1234"_s, u"b"));
        QVERIFY(UseKeyOf(kFoods, u"A", u"b", u"c") != UseKeyOf(kMenus, u"A", u"b", u"c"));
        QVERIFY(UseKeyOf(kFoods, u"A", u"b", u"c") != UseKeyOf(kFoods, u"A", u"c", u"b"));
        QVERIFY(UseKeyOf(kFoods, u"A", u"b", u"c") != UseKeyOf(kFoods, u"C", u"b", u"c"));
        // A cut never splits a pair, and may leave a space at the end.
        const QString apple = u"🍎"_s;
        QCOMPARE(UseKeyOf(kFoods, u"A", sixty + u"123"_s + apple, {}),
                 UseKeyOf(kFoods, u"A", sixty + u"123"_s, {}));
        QCOMPARE(UseKeyOf(kFoods, u"A", sixty + u"123 567"_s, {}),
                 UseKeyOf(kFoods, u"A", sixty + u"123 "_s, {}));
    }

    void kindsAndCategoriesNarrowAQuery() {
        CSearchIndex index;
        index.Add({1, kFoods, 1, u"Soup", u"thin"});
        index.Add({2, kFoods, 2, u"Soup", u"thin"});
        index.Add({3, kMenus, 1, u"Soup", u""});
        const auto records = [&index](unsigned kinds, qint32 category) {
            std::vector<ObjectId> found;
            for (const CSearchMatch& match :
                 index.Find({.text = u"soup", .kinds = kinds, .categoryId = category}).best) {
                found.push_back(match.record);
            }
            return found;
        };
        using Records = std::vector<ObjectId>;
        QCOMPARE(records(kAllKinds, kAnyCategory), (Records{3, 1, 2}));  // the shorter first
        QCOMPARE(records(KindBit(kFoods), kAnyCategory), (Records{1, 2}));
        QCOMPARE(records(KindBit(kFoods), 2), Records{2});
        QCOMPARE(records(KindBit(kMenus), 2), Records{});
    }

    void aRenamedCategoryIsFoundByItsNewNameOnly() {
        CFilledIndex filled;
        QCOMPARE(filled.Find(u"fruits"_s).size(), 6);
        filled.index.SetCategories({{kFoods, 6, u"Orchard"_s}});
        QCOMPARE(filled.Find(u"orchard"_s).size(), 5);
        QCOMPARE(filled.Find(u"fruits"_s), QStringList(u"Coffeecake | fruit"_s));
        // Of an item whose category has no name, only that is missing.
        QCOMPARE(filled.Find(u"egg"_s).size(), 5);
    }

    void removedItemsAreGoneAndTheirWordsUnknown() {
        CFilledIndex filled;
        filled.index.Remove({21, 22, 999});
        QCOMPARE(filled.index.Count(), 23);
        QCOMPARE(filled.Find(u"apple"_s),
                 (QStringList{u"Apples | dried"_s, u"Pine-apples | raw"_s}));
        // "skin" was a word of the removed ones.
        filled.Add(1, u"Skim milk"_s, {});
        QCOMPARE(filled.Find(u"skin"_s), QStringList(u"Skim milk | "_s));
    }

    void manyRemovedItemsGiveTheirMemoryBack() {
        CSearchIndex index;
        std::unordered_set<ObjectId> odd;
        for (ObjectId record = 1; record <= 4000; ++record) {
            index.Add({record, kFoods, 1, record % 2 == 0 ? u"even food" : u"odd",
                       record % 3 == 0 ? u"third" : u""});
            if (record % 2 != 0) {
                odd.insert(record);
            }
        }
        index.Trim();
        const std::size_t before = index.Size();
        index.Remove(odd);
        QVERIFY(index.Size() < before * 2 / 3);
        QCOMPARE(index.Find({.text = u"odd"}).total, 0);
        QCOMPARE(index.Find({.text = u"food even"}).total, 2000);
        QCOMPARE(index.Find({.text = u"third"}).total, 666);
    }
};

QTEST_GUILESS_MAIN(TestSearchIndex)
#include "TestSearchIndex.moc"
