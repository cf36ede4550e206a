#pragma once
#include <QSyntaxHighlighter>
#include <tarnwick/JMacro.h>

namespace app {

/// Underlines bracketed words that are not keywords, because they are printed unchanged.
class KeywordMarks : public QSyntaxHighlighter
{
    Q_OBJECT
public:
    KeywordMarks(const tarnwick::JMacro &macros, QTextDocument *document)
        : QSyntaxHighlighter(document)
        , m_macros(macros)
    {
    }

protected:
    void highlightBlock(const QString &text) override;

private:
    tarnwick::JMacro m_macros;
};

} // namespace app
