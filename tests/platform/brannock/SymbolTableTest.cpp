#include <brannock/SymbolTable.h>
#include <gtest/gtest.h>
#include <QSet>

TEST(SymbolTableTest, RowsOfSixteenWithOneSymbolTwice)
{
    const auto &symbols = brannock::symbolTable();
    EXPECT_EQ(symbols.size() % brannock::kSymbolColumns, 0u);
    QList<char16_t> twice;
    QSet<char16_t> seen;
    for (const char16_t symbol : symbols) {
        if (seen.contains(symbol))
            twice.append(symbol);
        seen.insert(symbol);
    }
    EXPECT_EQ(twice, QList<char16_t>{u'\u03BB'});
    // Letters and digits come first, and where each row of the chooser begins.
    EXPECT_EQ(brannock::symbolIndex(u'0'), 0);
    EXPECT_EQ(brannock::symbolIndex(u'Z'), 35);
    EXPECT_EQ(brannock::symbolIndex(u'\u03B3') + 1, brannock::symbolIndex(u'\u05D0'));
    EXPECT_EQ(symbols[64], u'\u05D0');
    EXPECT_EQ(symbols[128], u'\u21E9');
    EXPECT_EQ(brannock::symbolIndex(u'a'), -1);
}
