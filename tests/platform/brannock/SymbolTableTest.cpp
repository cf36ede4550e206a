#include <brannock/SymbolTable.h>
#include <gtest/gtest.h>
#include <QSet>

using ellery::Symbol;

TEST(SymbolTableTest, RowsOfSixteenWithOneSymbolTwice)
{
    const auto &symbols = brannock::symbolTable();
    EXPECT_EQ(symbols.size() % brannock::kSymbolColumns, 0u);
    QList<Symbol> twice;
    QSet<Symbol> seen;
    for (const Symbol symbol : symbols) {
        if (seen.contains(symbol))
            twice.append(symbol);
        seen.insert(symbol);
    }
    EXPECT_EQ(twice, QList<Symbol>{Symbol(u'\u03BB')});
    // Letters and digits come first, and where each row of the chooser begins.
    EXPECT_EQ(brannock::symbolIndex(Symbol(u'0')), 0);
    EXPECT_EQ(brannock::symbolIndex(Symbol(u'Z')), 35);
    EXPECT_EQ(brannock::symbolIndex(Symbol(u'\u03B3')) + 1, brannock::symbolIndex(Symbol(u'\u05D0')));
    EXPECT_EQ(symbols[64], Symbol(u'\u05D0'));
    EXPECT_EQ(symbols[128], Symbol(u'\u21E9'));
    EXPECT_EQ(brannock::symbolIndex(Symbol(u'a')), -1);
}
