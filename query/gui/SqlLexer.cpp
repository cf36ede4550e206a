#include "SqlLexer.h"

#include <QPalette>

namespace query {

using namespace Qt::StringLiterals;

namespace {

struct Look
{
    WordKind kind;
    const char16_t *name;
    QRgb light;
    QRgb dark;
};

// Each has a contrast of at least 4.5 to the background.
constexpr Look kLooks[] = {
    {WordKind::Other, u"Other", 0, 0},
    {WordKind::Keyword, u"Keyword", 0xff0033b3, 0xff7aa6ff},
    {WordKind::Function, u"Function", 0xff6f42c1, 0xffc9a6ff},
    {WordKind::Field, u"Field", 0xff00627a, 0xff6fd3e3},
    {WordKind::Table, u"Table", 0xff7a3e00, 0xffe8b06a},
    {WordKind::Parameter, u"Parameter", 0xffa3006b, 0xffff8fc8},
    {WordKind::Macro, u"Macro", 0xff5f6b00, 0xffd4d96a},
    {WordKind::Text, u"Text", 0xff1a7324, 0xff86d38c},
    {WordKind::Number, u"Number", 0xff1750eb, 0xff9fc0ff},
    {WordKind::Date, u"Date", 0xff8c4a00, 0xffffb986},
    {WordKind::Fault, u"Fault", 0xffb3261e, 0xffff8a80},
};

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

/// Bytes of a part of the text in the editor's encoding.
int bytesOf(QStringView text)
{
    return int(text.toUtf8().size());
}

} // namespace

SqlLexer::SqlLexer(QsciScintilla *editor)
    : QsciLexerCustom(editor)
{
}

void SqlLexer::setNames(const SqlNames &names)
{
    m_words = SqlWords(names);
}

QColor SqlLexer::colourOf(WordKind kind, const QPalette &palette)
{
    for (const Look &look : kLooks) {
        if (look.kind == kind && kind != WordKind::Other)
            return QColor::fromRgb(isDark(palette) ? look.dark : look.light);
    }
    return palette.color(QPalette::Text);
}

void SqlLexer::setPalette(const QPalette &palette)
{
    setDefaultPaper(palette.color(QPalette::Base));
    setDefaultColor(palette.color(QPalette::Text));
    setPaper(palette.color(QPalette::Base));
    for (const Look &look : kLooks)
        setColor(colourOf(look.kind, palette), int(look.kind));
}

void SqlLexer::setEditorFont(const QFont &font)
{
    setDefaultFont(font);
    for (const Look &look : kLooks) {
        QFont own = font;
        own.setBold(look.kind == WordKind::Keyword);
        own.setUnderline(look.kind == WordKind::Fault);
        setFont(own, int(look.kind));
    }
}

QString SqlLexer::description(int style) const
{
    for (const Look &look : kLooks) {
        if (int(look.kind) == style)
            return QString::fromUtf16(look.name);
    }
    return {};
}

void SqlLexer::styleText(int, int end)
{
    // The meaning of a word can depend on text far before it, and statements are short: always the whole text.
    startStyling(0);
    if (editor()->length() > kMostColoured) {
        setStyling(end, int(WordKind::Other));
        return;
    }
    const QString text = editor()->text();
    int done = 0;
    for (const StyledWord &word : m_words.words(text)) {
        const QStringView view(text);
        setStyling(bytesOf(view.mid(done, word.part.start - done)), int(WordKind::Other));
        setStyling(bytesOf(view.mid(word.part.start, word.part.length)), int(word.kind));
        done = word.part.start + word.part.length;
    }
    setStyling(bytesOf(QStringView(text).mid(done)), int(WordKind::Other));
}

} // namespace query
