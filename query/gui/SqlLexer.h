#pragma once
#include "Scintilla.h"

#include <query/SqlWords.h>

namespace query {

/// Colours the words of a SQL text by their kind, for light and dark palettes.
class SqlLexer : public QsciLexerCustom
{
    Q_OBJECT
public:
    /// Bytes. Longer texts are shown without colours: finding their words would delay typing.
    static constexpr int kMostColoured = 200'000;

    explicit SqlLexer(QsciScintilla *editor);

    void setNames(const SqlNames &names);
    /// Takes colours that are readable on this palette.
    void setPalette(const QPalette &palette);
    void setEditorFont(const QFont &font);
    /// Colour of a kind of word, for other parts that show words.
    static QColor colourOf(WordKind kind, const QPalette &palette);

    const char *language() const override { return "SQL"; }
    QString description(int style) const override;
    void styleText(int start, int end) override;

private:
    SqlWords m_words;
};

} // namespace query
