#include "SymbolNames.h"

#include "SymbolTable.h"

#include <algorithm>
#include <numeric>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

struct Named
{
    char16_t symbol;
    const char16_t *name;
};

constexpr Named kNames[] = {
    {0x002F, u"slash"},
    {0x005C, u"backslash"},
    {0x002B, u"plus"},
    {0x0040, u"at sign"},
    {0x0023, u"number sign, hash"},
    {0x0024, u"dollar"},
    {0x0025, u"per cent"},
    {0x0026, u"ampersand, and"},
    {0x002A, u"star, asterisk"},
    {0x0028, u"bracket left, round"},
    {0x0029, u"bracket right, round"},
    {0x002D, u"minus"},
    {0x003D, u"equals"},
    {0x007C, u"vertical bar"},
    {0x003F, u"question mark"},
    {0x003C, u"less than"},
    {0x003E, u"greater than"},
    {0x0394, u"capital delta"},
    {0x0398, u"capital theta"},
    {0x039B, u"capital lambda"},
    {0x03A9, u"capital omega"},
    {0x03A0, u"capital pi"},
    {0x03B8, u"small theta"},
    {0x03BB, u"small lambda"},
    {0x03C6, u"small phi"},
    {0x03B1, u"small alpha"},
    {0x03B2, u"small beta"},
    {0x03B3, u"small gamma"},
    {0x05D0, u"aleph"},
    {0x2202, u"partial derivative, curly d"},
    {0x2207, u"nabla, triangle outline down"},
    {0x220E, u"block, end of proof"},
    {0x221E, u"infinity"},
    {0x2217, u"star operator"},
    {0x223F, u"sine wave"},
    {0x2295, u"circled plus"},
    {0x2296, u"circled minus"},
    {0x2297, u"circled times, cross"},
    {0x2298, u"circled slash"},
    {0x2299, u"circled dot"},
    {0x229A, u"circled ring"},
    {0x22A0, u"squared times, cross"},
    {0x22A1, u"squared dot"},
    {0x22A2, u"tack right"},
    {0x22A3, u"tack left"},
    {0x22A4, u"tack down"},
    {0x22A5, u"tack up"},
    {0x22B2, u"triangle outline left, flat"},
    {0x22B3, u"triangle outline right, flat"},
    {0x22C2, u"intersection, cap"},
    {0x22C3, u"union, cup"},
    {0x22C4, u"diamond operator, small"},
    {0x22C8, u"bow tie"},
    {0x2200, u"for all, inverted A"},
    {0x25C0, u"triangle filled left"},
    {0x25B6, u"triangle filled right"},
    {0x25CB, u"circle outline"},
    {0x25CF, u"circle filled"},
    {0x25D0, u"circle left half filled"},
    {0x25D1, u"circle right half filled"},
    {0x25D2, u"circle lower half filled"},
    {0x25D3, u"circle upper half filled"},
    {0x25D4, u"circle quarter filled"},
    {0x25D5, u"circle three quarters filled"},
    {0x25D6, u"half circle left"},
    {0x25D7, u"half circle right"},
    {0x25CE, u"circle double, bullseye"},
    {0x25B2, u"triangle filled up"},
    {0x25BC, u"triangle filled down"},
    {0x25E7, u"square left half filled"},
    {0x25E8, u"square right half filled"},
    {0x25E9, u"square upper left filled"},
    {0x25EA, u"square lower right filled"},
    {0x25C9, u"circle with filled centre, fisheye"},
    {0x25C8, u"diamond with filled centre"},
    {0x25C7, u"diamond outline"},
    {0x25C6, u"diamond filled"},
    {0x25A3, u"square with filled centre"},
    {0x263C, u"sun"},
    {0x263A, u"face, smiling"},
    {0x039E, u"capital xi"},
    {0x03A3, u"capital sigma"},
    {0x03A8, u"capital psi"},
    {0x03B4, u"small delta"},
    {0x21D6, u"arrow up left, double"},
    {0x21D7, u"arrow up right, double"},
    {0x21D8, u"arrow down right, double"},
    {0x21D9, u"arrow down left, double"},
    {0x21E6, u"arrow left, wide"},
    {0x21E7, u"arrow up, wide"},
    {0x21E8, u"arrow right, wide"},
    {0x21E9, u"arrow down, wide"},
    {0x2203, u"there exists, mirrored E"},
    {0x2205, u"empty set"},
    {0x222B, u"integral"},
    {0x228F, u"square image"},
    {0x2290, u"square original"},
    {0x2293, u"square cap"},
    {0x2294, u"square cup"},
    {0x22D0, u"double subset"},
    {0x22D1, u"double superset"},
    {0x22D2, u"double intersection, cap"},
    {0x22D3, u"double union, cup"},
    {0x263B, u"face, smiling, filled"},
    {0x2660, u"spade"},
    {0x2663, u"club"},
    {0x266B, u"notes, music"},
};

/// The typed code as a number; -1 if it is not one. Without "U+" or "0x" it must have four digits, since "a" or "be"
/// may begin a name.
int typedCode(QStringView text)
{
    const bool hasMark = text.startsWith(u"U+", Qt::CaseInsensitive) || text.startsWith(u"0x", Qt::CaseInsensitive);
    const QStringView digits = hasMark ? text.mid(2) : text;
    if (!hasMark && digits.size() != 4)
        return -1;
    bool ok = false;
    const int code = digits.toInt(&ok, 16);
    return ok ? code : -1;
}

bool hasWords(const QString &name, const QList<QStringView> &words)
{
    return std::all_of(words.begin(), words.end(),
                       [&name](QStringView word) { return name.contains(word, Qt::CaseInsensitive); });
}

} // namespace

QString symbolCode(ellery::Symbol symbol)
{
    return tarnwick::format(u"0x%04X", int(symbol.character()));
}

QString symbolName(ellery::Symbol symbol)
{
    const QChar character(symbol.character());
    if (character < QChar(0x80) && character.isDigit())
        return u"digit "_s + character;
    if (character < QChar(0x80) && character.isLetter())
        return u"letter "_s + character;
    const auto *found = std::find_if(std::begin(kNames), std::end(kNames),
                                     [symbol](const Named &n) { return n.symbol == symbol.character(); });
    return found == std::end(kNames) ? symbolCode(symbol) : QString::fromUtf16(found->name);
}

QList<int> findSymbols(QStringView text)
{
    text = text.trimmed();
    QList<int> places(kSymbolCount);
    std::iota(places.begin(), places.end(), 0);
    if (text.isEmpty())
        return places;
    const QList<QStringView> words = text.split(u' ', Qt::SkipEmptyParts);
    const int code = typedCode(text);
    // Rank of a match, lower is better; no rank if it does not match.
    const auto rank = [&](int place) {
        const ellery::Symbol symbol = symbolTable()[size_t(place)];
        const char16_t character = symbol.character();
        if (text.size() == 1 && text[0] == QChar(character))
            return 0;
        if (code == character || (text.size() == 1 && text[0].toUpper() == QChar(character)))
            return 1;
        const QString name = symbolName(symbol);
        if (hasWords(name, words))
            return name.startsWith(text, Qt::CaseInsensitive) ? 2 : 3;
        return 4;
    };
    places.removeIf([&](int place) { return rank(place) == 4; });
    std::stable_sort(places.begin(), places.end(), [&](int a, int b) { return rank(a) < rank(b); });
    return places;
}

} // namespace brannock
