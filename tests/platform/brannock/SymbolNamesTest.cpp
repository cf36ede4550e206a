#include <brannock/CustomColours.h>
#include <brannock/MapPalette.h>
#include <brannock/SymbolNames.h>
#include <brannock/SymbolTable.h>
#include <gtest/gtest.h>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace brannock {

TEST(SymbolNamesTest, EverySymbolHasANameOfItsOwn)
{
    QSet<QString> names;
    for (const ellery::Symbol symbol : symbolTable()) {
        const QString name = symbolName(symbol);
        EXPECT_FALSE(name.startsWith(u"0x")) << qPrintable(name);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), kSymbolCount - 1); // one symbol stands in the table twice
    EXPECT_EQ(symbolName(ellery::Symbol(u'Q')), u"letter Q"_s);
    EXPECT_EQ(symbolName(ellery::Symbol(u'\u0416')), u"0x0416"_s);
}

TEST(SymbolNamesTest, AreFoundBySymbolCodeAndWords)
{
    const auto first = [](QStringView text) -> QString {
        const QList<int> found = findSymbols(text);
        return found.isEmpty() ? QString() : symbolTable()[size_t(found.first())].text();
    };
    EXPECT_EQ(first(u"B"), u"B"_s);
    EXPECT_EQ(first(u"b"), u"B"_s);
    EXPECT_EQ(first(u"7"), u"7"_s);
    for (const auto *code : {u"0394", u"U+0394", u"0x394", u" u+394 "})
        EXPECT_EQ(first(QString::fromUtf16(code)), u"\u0394"_s);
    EXPECT_EQ(first(u"delta"), u"\u0394"_s);
    EXPECT_EQ(first(u"small delta"), u"\u03B4"_s);
    EXPECT_EQ(first(u"LEFT arrow"), u"\u21D6"_s);
    EXPECT_EQ(first(u"spade"), u"\u2660"_s);
    EXPECT_TRUE(findSymbols(u"0416").isEmpty());
    EXPECT_TRUE(findSymbols(u"elephant").isEmpty());
    EXPECT_EQ(findSymbols(u" ").size(), kSymbolCount);
    EXPECT_EQ(findSymbols(u"\u03BB").size(), 3) << "the two small ones, then the capital";
}

TEST(MapPaletteTest, BeginsWithRedAndStartsAgainAfterItsEnd)
{
    EXPECT_EQ(paletteColour(0), tarnwick::ColourRef(0x0000FF));
    EXPECT_EQ(paletteColour(kPaletteSize), paletteColour(0));
    QSet<tarnwick::ColourRef> colours;
    for (int i = 0; i < kPaletteSize; ++i)
        colours.insert(paletteColour(i));
    EXPECT_EQ(colours.size(), kPaletteSize);
}

TEST(CustomColoursTest, ComeBackFromTheirFileWhateverTheirNumber)
{
    const QTemporaryDir folder;
    const tarnwick::PathRoots roots{folder.path(), {}};
    CustomColours custom;
    EXPECT_FALSE(custom.load(roots));
    custom.colours = {tarnwick::ColourRef(0x112233), tarnwick::ColourRef(0x445566)};
    custom.store(roots);
    CustomColours read;
    ASSERT_TRUE(read.load(roots));
    ASSERT_EQ(read.colours.size(), CustomColours::kCount);
    EXPECT_EQ(read.colours[1], tarnwick::ColourRef(0x445566));
    EXPECT_EQ(read.colours[2], tarnwick::ColourRef(0xFFFFFF));
}

} // namespace brannock
